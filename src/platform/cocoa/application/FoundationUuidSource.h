#pragma once

#include "platform/UuidSource.h"

namespace quendo::cocoa {

/// NSUUID.
class FoundationUuidSource final : public UuidSource {
 public:
  std::string randomUuid() override;
};

}  // namespace quendo::cocoa
