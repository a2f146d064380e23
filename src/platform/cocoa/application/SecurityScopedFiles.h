#pragma once

#include "platform/DocumentFiles.h"

namespace quendo::cocoa {

/// Files that the user chose, with the access that the sandbox gives for them.
class SecurityScopedFiles final : public DocumentFiles {
 public:
  /// `files` reads them, and must outlive this.
  explicit SecurityScopedFiles(const DocumentFiles& files) : files_(files) {}
  bool startAccessingSecurityScopedResource(const std::string& url) override;
  void stopAccessingSecurityScopedResource(const std::string& url) override;
  std::optional<DocumentResourceValues> resourceValues(const std::string& path) const override {
    return files_.resourceValues(path);
  }
  std::optional<std::string> contents(const std::string& path, std::int64_t limit) const override {
    return files_.contents(path, limit);
  }

 private:
  const DocumentFiles& files_;
};

}  // namespace quendo::cocoa
