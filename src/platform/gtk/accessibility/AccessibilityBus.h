#pragma once

#include <gio/gio.h>

#include <functional>
#include <optional>
#include <string>

namespace quendo::gtk {

/// An accessible object on the accessibility bus.
struct AccessibleReference {
  std::string bus;  ///< The unique name of its connection.
  std::string path;

  bool operator==(const AccessibleReference&) const = default;
  GVariant* variant() const { return g_variant_new("(so)", bus.c_str(), path.c_str()); }
};

/// An object of another process as the first child of one of GTK's.
struct Graft {
  std::string parent;  ///< Path of GTK's object.
  AccessibleReference child;

  bool operator==(const Graft&) const = default;
};

/// GTK's own connection to the accessibility bus.
///
/// GTK before 4.14 cannot show an object of another process below one of its widgets, such as the page below
/// the web view, and offers no way to its connection. So this notes the connection when it is made, and
/// adds the child of a graft to what GTK says of the parent.
class AccessibilityBus {
 public:
  /// Notes the connection that GTK makes from now on. To be called before there is a display; does nothing
  /// with a GTK that needs no help.
  static void watch();

  /// `handler` is called once GTK's connection is there, at once if it is there already. It is kept until
  /// another one replaces it. Main thread.
  static void setHandler(std::function<void(GDBusConnection*)> handler);

  /// Shows this graft, or none, and tells assistive technology. Main thread.
  static void show(const std::optional<Graft>& graft);
  static std::optional<Graft> shown();
};

}  // namespace quendo::gtk
