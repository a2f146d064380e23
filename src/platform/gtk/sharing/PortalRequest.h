#pragma once

#include <gio/gio.h>
#include <gio/gunixfdlist.h>

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// A method of the desktop portal that takes a window's handle and options, and returns a request.
struct PortalCall {
  const char* interface = nullptr;
  const char* method = nullptr;
  std::vector<std::pair<const char*, GVariant*>> options;  ///< Floating references, which the call takes.
  GObjectPtr<GUnixFDList> descriptors;                     ///< May be null.
};

enum class PortalAnswer : std::uint8_t {
  done,
  refused,   ///< By the user, or because it failed.
  noPortal,  ///< There is no session bus, no portal on it, or the portal does not know the method.
};

/// Calls the portal; `completion` is called once with what it answers, or never when it does not. Main
/// thread.
void askThePortal(PortalCall call, std::function<void(PortalAnswer)> completion);

}  // namespace quendo::gtk
