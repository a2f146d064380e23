#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/DocumentFiles.h"

namespace quendo::fake {

/// In-memory user files. Metadata may differ from contents, as with a growing file.
struct FakeDocumentFiles final : DocumentFiles {
  struct File {
    /// `nullopt`: the metadata cannot be read.
    std::optional<DocumentResourceValues> values;
    /// `nullopt`: the file cannot be read.
    std::optional<std::string> bytes;
  };

  void setFile(const std::string& path, std::string bytes) {
    const auto size = static_cast<std::int64_t>(bytes.size());
    files[path] = File{DocumentResourceValues{true, size}, std::move(bytes)};
  }

  bool startAccessingSecurityScopedResource(const std::string& url) override {
    log.push_back("start " + url);
    if (grantsAccess) openAccesses.push_back(url);
    return grantsAccess;
  }
  void stopAccessingSecurityScopedResource(const std::string& url) override {
    log.push_back("stop " + url);
    const auto access = std::find(openAccesses.begin(), openAccesses.end(), url);
    if (access != openAccesses.end()) openAccesses.erase(access);
  }
  std::optional<DocumentResourceValues> resourceValues(const std::string& path) const override {
    log.push_back("resourceValues " + path);
    const auto file = files.find(path);
    return file == files.end() ? std::nullopt : file->second.values;
  }
  std::optional<std::string> contents(const std::string& path, std::int64_t limit) const override {
    log.push_back("contents " + path);
    const auto file = files.find(path);
    if (file == files.end() || !file->second.bytes) return std::nullopt;
    return file->second.bytes->substr(0, static_cast<std::size_t>(limit) + 1);
  }

  std::map<std::string, File> files;
  bool grantsAccess = false;
  std::vector<std::string> openAccesses;
  mutable std::vector<std::string> log;  ///< Every call, in order.
};

}  // namespace quendo::fake
