#include "files/DurableWrite.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <memory>
#include <utility>

namespace quendo {
namespace {

/// Ample time for a new file to be locked by its writer.
constexpr std::chrono::minutes kUnchangedFor{10};

struct SplitPath {
  explicit SplitPath(const std::string& path)
      : parent(path.substr(0, path.rfind('/') + 1)), name(path.substr(parent.size())) {}

  std::string directory() const { return parent.size() > 1 ? parent.substr(0, parent.size() - 1) : parent; }

  std::string parent;  ///< With its trailing slash.
  std::string name;
};

/// Common prefix of all temporary file names for `name`. Hidden, and truncated to leave room for the rest
/// within the 255 bytes that file systems allow.
std::string temporaryPrefix(std::string name) {
  constexpr std::size_t longest = 200;
  if (name.size() > longest) {
    std::size_t cut = longest;
    while (cut > 0 && (static_cast<unsigned char>(name[cut]) & 0xC0U) == 0x80) --cut;
    name.resize(cut);
  }
  return "." + name + ".";
}

/// Whether `name` is `prefix`, a number and `suffix`.
bool isTemporaryName(std::string_view name, std::string_view prefix, std::string_view suffix) {
  if (!name.starts_with(prefix) || !name.ends_with(suffix)) return false;
  if (name.size() <= prefix.size() + suffix.size()) return false;
  const auto number = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
  return std::all_of(number.begin(), number.end(), [](char digit) { return digit >= '0' && digit <= '9'; });
}

/// Whether `name` is a temporary name for any file.
bool isTemporaryName(std::string_view name, std::string_view suffix) {
  if (!name.starts_with('.') || !name.ends_with(suffix)) return false;
  const std::size_t dot = name.substr(0, name.size() - suffix.size()).rfind('.');
  return dot != std::string_view::npos && dot > 1 && isTemporaryName(name, name.substr(0, dot + 1), suffix);
}

struct Temporary {
  std::string path;
  std::unique_ptr<WritableFile> file;
  std::optional<std::string> directory = std::nullopt;  ///< One of its own, to be removed with it.
};

std::optional<Temporary> createTemporaryBeside(FileManager& fileManager, const std::string& path,
                                               const DurableWrite& write) {
  // Until the old file's permissions have been applied, nobody else may read the new bytes.
  const FileAccess access =
      write.permissions == NewFilePermissions::usual ? FileAccess::usual : FileAccess::ownerOnly;
  while (auto free = freeTemporaryPath(fileManager, path, write.temporarySuffix)) {
    if (auto file = fileManager.createFile(*free, access))
      return Temporary{*std::move(free), std::move(file)};
    // Another writer may have just taken the name; any other failure is final.
    if (!fileManager.isNameTaken(*free)) break;
  }
  return std::nullopt;
}

std::optional<Temporary> createTemporary(FileManager& fileManager, const std::string& path,
                                         const DurableWrite& write) {
  auto temporary = createTemporaryBeside(fileManager, path, write);
  if (temporary || !write.mayUseReplacementDirectory) return temporary;
  auto directory = fileManager.createReplacementDirectory(path);
  if (!directory) return std::nullopt;
  temporary = createTemporaryBeside(fileManager, *directory + "/" + SplitPath(path).name, write);
  if (!temporary) {
    fileManager.removeDirectory(*directory);
    return std::nullopt;
  }
  temporary->directory = std::move(directory);
  return temporary;
}

bool fill(WritableFile& file, std::string_view bytes, const std::function<bool()>& afterWriting) {
  return file.write(bytes) && (!afterWriting || afterWriting()) && file.synchronize() && file.close();
}

}  // namespace

std::optional<std::string> freeTemporaryPath(const FileManager& fileManager, const std::string& path,
                                             std::string_view suffix) {
  constexpr int attempts = 1000;
  const SplitPath target(path);
  const std::string prefix = target.parent + temporaryPrefix(target.name);
  for (int number = 1; number <= attempts; ++number) {
    std::string candidate = prefix + std::to_string(number) + std::string(suffix);
    if (!fileManager.isNameTaken(candidate)) return candidate;
  }
  return std::nullopt;
}

WriteResult writeDurably(FileManager& fileManager, const std::string& path, std::string_view bytes,
                         const DurableWrite& write) {
  const auto temporary = createTemporary(fileManager, path, write);
  if (!temporary) return WriteResult::notWritten;
  bool filled = fill(*temporary->file, bytes, write.afterWriting);
  if (filled && write.permissions == NewFilePermissions::ofReplacedFile)
    filled = fileManager.copyPermissions(path, temporary->path);
  if (filled && write.beforeReplacing) write.beforeReplacing();
  const bool replaced = filled && fileManager.renameItem(temporary->path, path);
  if (!replaced) fileManager.removeItem(temporary->path);
  if (temporary->directory) fileManager.removeDirectory(*temporary->directory);
  if (!replaced) return WriteResult::notWritten;
  return fileManager.synchronizeDirectory(SplitPath(path).directory()) ? WriteResult::durable
                                                                       : WriteResult::inPlace;
}

std::vector<std::string> abandonedTemporaries(const FileManager& fileManager, const std::string& path) {
  const SplitPath target(path);
  const std::string prefix = temporaryPrefix(target.name);
  std::vector<std::string> paths;
  for (const std::string& name : fileManager.directoryEntries(target.directory())) {
    if (isTemporaryName(name, prefix, kTemporarySuffix)) paths.push_back(target.parent + name);
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

void sweepTemporaries(FileManager& fileManager, const std::string& directory, std::string_view suffix) {
  const std::string parent = directory.ends_with('/') ? directory : directory + "/";
  for (const std::string& name : fileManager.directoryEntries(directory)) {
    if (isTemporaryName(name, suffix)) fileManager.removeAbandonedFile(parent + name, kUnchangedFor);
  }
}

}  // namespace quendo
