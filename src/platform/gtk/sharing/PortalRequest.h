#pragma once

#include <gio/gio.h>
#include <gio/gunixfdlist.h>

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// A desktop portal method that takes a window handle and options, and returns a request.
struct PortalCall {
  const char* interface = nullptr;
  const char* method = nullptr;
  std::vector<std::pair<const char*, GVariant*>> options;  ///< Floating references, consumed by the call.
  GObjectPtr<GUnixFDList> descriptors;                     ///< May be null.
};

enum class PortalAnswer : std::uint8_t {
  done,
  refused,   ///< Refused by the user, or failed.
  noPortal,  ///< No session bus, no portal on it, or the portal lacks the method.
};

/// Calls the portal; `completion` is called once with its reply, or never if it does not reply. Main thread.
void callPortal(PortalCall call, std::function<void(PortalAnswer)> completion);

}  // namespace quendo::gtk
