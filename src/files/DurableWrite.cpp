#include "files/DurableWrite.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace quendo {
namespace {

constexpr std::string_view temporarySuffix = ".tmp";

struct SplitPath {
  explicit SplitPath(const std::string& path)
      : parent(path.substr(0, path.rfind('/') + 1)), name(path.substr(parent.size())) {}

  std::string directory() const { return parent.size() > 1 ? parent.substr(0, parent.size() - 1) : parent; }

  std::string parent;  ///< With the slash that ends it.
  std::string name;
};

/// What the names of all temporary files for `name` begin with. Hidden, and cut where a long name would
/// leave no room for the rest within the 255 bytes that file systems allow.
std::string temporaryPrefix(std::string name) {
  constexpr std::size_t longest = 200;
  if (name.size() > longest) {
    std::size_t cut = longest;
    while (cut > 0 && (static_cast<unsigned char>(name[cut]) & 0xC0U) == 0x80) --cut;
    name.resize(cut);
  }
  return "." + name + ".";
}

bool isTemporaryName(std::string_view name, std::string_view prefix) {
  if (!name.starts_with(prefix) || !name.ends_with(temporarySuffix)) return false;
  if (name.size() <= prefix.size() + temporarySuffix.size()) return false;
  const auto number = name.substr(prefix.size(), name.size() - prefix.size() - temporarySuffix.size());
  return std::all_of(number.begin(), number.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
}

bool fill(WritableFile& file, std::string_view bytes) {
  return file.write(bytes) && file.synchronize() && file.close();
}

}  // namespace

std::optional<std::string> freeTemporaryPath(const FileManager& fileManager, const std::string& path) {
  constexpr int attempts = 1000;
  const SplitPath target(path);
  const std::string prefix = target.parent + temporaryPrefix(target.name);
  for (int number = 1; number <= attempts; ++number) {
    std::string candidate = prefix + std::to_string(number) + std::string(temporarySuffix);
    if (!fileManager.fileExists(candidate)) return candidate;
  }
  return std::nullopt;
}

WriteResult writeDurably(FileManager& fileManager, const std::string& path, std::string_view bytes,
                         const DurableWrite& write) {
  const auto temporary = freeTemporaryPath(fileManager, path);
  if (!temporary) return WriteResult::notWritten;
  // Until the old file's permissions are known to be on it, nobody else may read what is written.
  auto file = fileManager.createFile(
      *temporary, write.permissions == NewFilePermissions::usual ? FileAccess::usual : FileAccess::ownerOnly);
  if (!file) return WriteResult::notWritten;
  bool filled = fill(*file, bytes);
  file.reset();
  if (filled && write.permissions == NewFilePermissions::ofReplacedFile)
    filled = fileManager.copyPermissions(path, *temporary);
  if (filled && write.beforeReplacing) write.beforeReplacing();
  if (!filled || !fileManager.renameItem(*temporary, path)) {
    fileManager.removeItem(*temporary);
    return WriteResult::notWritten;
  }
  return fileManager.synchronizeDirectory(SplitPath(path).directory()) ? WriteResult::durable
                                                                       : WriteResult::inPlace;
}

std::vector<std::string> abandonedTemporaries(const FileManager& fileManager, const std::string& path) {
  const SplitPath target(path);
  const std::string prefix = temporaryPrefix(target.name);
  std::vector<std::string> paths;
  for (const std::string& name : fileManager.directoryEntries(target.directory())) {
    if (isTemporaryName(name, prefix)) paths.push_back(target.parent + name);
  }
  return paths;
}

bool removeAbandonedTemporaries(FileManager& fileManager, const std::string& path) {
  bool removed = true;
  for (const std::string& temporary : abandonedTemporaries(fileManager, path)) {
    if (!fileManager.removeItem(temporary)) removed = false;
  }
  return removed;
}

}  // namespace quendo
