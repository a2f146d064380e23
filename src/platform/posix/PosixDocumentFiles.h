#pragma once

#include "platform/DocumentFiles.h"

namespace quendo {

/// The user's files through direct system calls; there is no sandbox to request access from. Stateless.
class PosixDocumentFiles final : public DocumentFiles {
 public:
  bool startAccessingSecurityScopedResource(const std::string& url) override;
  void stopAccessingSecurityScopedResource(const std::string& url) override;
  std::optional<DocumentResourceValues> resourceValues(const std::string& path) const override;
  std::optional<std::string> contents(const std::string& path, std::int64_t limit) const override;
};

}  // namespace quendo
