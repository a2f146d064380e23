#include "platform/gtk/sharing/PortalRequest.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/gtk/application/GLibUuidSource.h"

namespace quendo::gtk {
namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";

/// Last element of the request's object path: only letters, digits and "_".
std::string freshToken() {
  std::string token = "quendo_" + GLibUuidSource().randomUuid();
  for (char& character : token) {
    if (character == '-') character = '_';
  }
  return token;
}

/// Subscribes before the call, because a portal may respond before the call returns; and to responses at
/// every path, because old portals choose the path themselves. The call's return value tells which response
/// is ours.
class PortalRequest : public std::enable_shared_from_this<PortalRequest> {
 public:
  PortalRequest(GObjectPtr<GDBusConnection> bus, std::function<void(PortalAnswer)> completion)
      : bus_(std::move(bus)), completion_(std::move(completion)) {}

  void begin(PortalCall call) {
    subscription_ = g_dbus_connection_signal_subscribe(
        bus_.get(), kPortal, "org.freedesktop.portal.Request", "Response", nullptr, nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE, onResponse, keep(), [](gpointer kept) { delete static_cast<Kept*>(kept); });
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&options, "{sv}", "handle_token", g_variant_new_string(freshToken().c_str()));
    for (const auto& [name, value] : call.options) g_variant_builder_add(&options, "{sv}", name, value);
    g_dbus_connection_call_with_unix_fd_list(bus_.get(), kPortal, kPortalPath, call.interface, call.method,
                                             g_variant_new("(sa{sv})", "", &options), G_VARIANT_TYPE("(o)"),
                                             G_DBUS_CALL_FLAGS_NONE, -1, call.descriptors.get(), nullptr,
                                             onReturned, keep());
  }

 private:
  /// Keeps the request alive while a callback is pending.
  using Kept = std::shared_ptr<PortalRequest>;
  Kept* keep() { return new Kept(shared_from_this()); }

  static void onReturned(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Kept> self(static_cast<Kept*>(data));
    GVariant* returned =
        g_dbus_connection_call_with_unix_fd_list_finish(G_DBUS_CONNECTION(source), nullptr, result, nullptr);
    if (!returned) {
      (*self)->finish(PortalAnswer::noPortal);
      return;
    }
    const char* path = nullptr;
    g_variant_get(returned, "(&o)", &path);
    (*self)->path_ = path;
    g_variant_unref(returned);
    (*self)->finishIfAnswered();
  }

  static void onResponse(GDBusConnection*, const char*, const char* path, const char*, const char*,
                         GVariant* parameters, gpointer data) {
    const Kept self = *static_cast<Kept*>(data);
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ua{sv})"))) return;
    guint32 response = 0;
    g_variant_get_child(parameters, 0, "u", &response);
    self->answers_.emplace(path, response == 0 ? PortalAnswer::done : PortalAnswer::refused);
    self->finishIfAnswered();
  }

  void finishIfAnswered() {
    if (!path_) return;
    const auto answer = answers_.find(*path_);
    if (answer != answers_.end()) finish(answer->second);
  }

  void finish(PortalAnswer answer) {
    if (subscription_ == 0) return;
    g_dbus_connection_signal_unsubscribe(bus_.get(), std::exchange(subscription_, 0));
    std::exchange(completion_, nullptr)(answer);
  }

  GObjectPtr<GDBusConnection> bus_;
  std::function<void(PortalAnswer)> completion_;
  guint subscription_ = 0;
  std::optional<std::string> path_;
  std::map<std::string, PortalAnswer> answers_;
};

}  // namespace

void callPortal(PortalCall call, std::function<void(PortalAnswer)> completion) {
  GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!bus) {
    for (const auto& option : call.options) g_variant_unref(g_variant_ref_sink(option.second));
    completion(PortalAnswer::noPortal);
    return;
  }
  std::make_shared<PortalRequest>(std::move(bus), std::move(completion))->begin(std::move(call));
}

}  // namespace quendo::gtk
