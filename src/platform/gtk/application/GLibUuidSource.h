#pragma once

#include "platform/UuidSource.h"

namespace quendo::gtk {

class GLibUuidSource final : public UuidSource {
 public:
  std::string randomUuid() override;
};

}  // namespace quendo::gtk
