#include "files/WriteTextFile.h"

#include <optional>

#include "files/DurableWrite.h"
#include "files/Path.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

// Other programs write files to the same directories.
constexpr std::string_view kOurTemporarySuffix = ".quendo.tmp";

}  // namespace

bool writeTextFile(FileManager& fileManager, const std::string& path, std::string_view text) {
  if (!isValidUtf8(text)) return false;
  const std::optional<std::string> target = fileManager.resolvedPath(path);
  if (!target) return false;
  // First, because leftovers of a crash may be what fills the disk.
  sweepTemporaries(fileManager, std::string(deletingLastPathComponent(*target)), kOurTemporarySuffix);
  DurableWrite write{.permissions = NewFilePermissions::usual,
                     .temporarySuffix = kOurTemporarySuffix,
                     .mayUseReplacementDirectory = true};
  if (fileManager.fileExists(*target)) {
    if (!fileManager.attributesOfItem(*target)) return false;
    write.permissions = NewFilePermissions::ofReplacedFile;
  }
  // Some export targets cannot flush a directory; the file is in place all the same.
  return writeDurably(fileManager, *target, text, write) != WriteResult::notWritten;
}

}  // namespace quendo
