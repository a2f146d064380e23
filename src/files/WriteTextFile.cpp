#include "files/WriteTextFile.h"

#include <optional>

#include "files/DurableWrite.h"
#include "text/Utf8.h"

namespace quendo {

bool writeTextFile(FileManager& fileManager, const std::string& path, std::string_view text) {
  if (!isValidUtf8(text)) return false;
  const std::optional<std::string> target = fileManager.resolvedPath(path);
  if (!target) return false;
  DurableWrite write{.permissions = NewFilePermissions::usual};
  if (fileManager.fileExists(*target)) {
    if (!fileManager.attributesOfItem(*target)) return false;
    write.permissions = NewFilePermissions::ofReplacedFile;
  }
  // Where files are exported to, some file systems cannot flush a directory; the file is in its place then.
  return writeDurably(fileManager, *target, text, write) != WriteResult::notWritten;
}

}  // namespace quendo
