#include "platform/gtk/application/DesktopAppearance.h"

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <string_view>

namespace quendo::gtk {
namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kSettings = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
constexpr const char* kColorScheme = "color-scheme";
constexpr const char* kContrast = "contrast";

/// Of both settings; what else there is counts as no preference.
constexpr guint32 kDarkOrHigh = 1;

using Variant = std::unique_ptr<GVariant, decltype([](GVariant* value) { g_variant_unref(value); })>;

/// Some portals wrap what they return once more than they should.
Variant unwrapped(GVariant* value) {
  Variant inner(g_variant_ref(value));
  while (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_VARIANT))
    inner.reset(g_variant_get_variant(inner.get()));
  return inner;
}

// What is reset comes from the user's settings file, or from the X server's settings.
void follow(std::string_view key, GVariant* value) {
  GtkSettings* settings = gtk_settings_get_default();
  const Variant inner = unwrapped(value);
  const bool chosen = g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_UINT32) &&
                      g_variant_get_uint32(inner.get()) == kDarkOrHigh;
  if (key == kColorScheme) {
    if (chosen) {
      g_object_set(settings, "gtk-application-prefer-dark-theme", TRUE, nullptr);
    } else {
      gtk_settings_reset_property(settings, "gtk-application-prefer-dark-theme");
    }
  } else if (key == kContrast) {
    if (chosen) {
      g_object_set(settings, "gtk-theme-name", "HighContrast", nullptr);
    } else {
      gtk_settings_reset_property(settings, "gtk-theme-name");
    }
  }
}

void onChanged(GDBusConnection* /*bus*/, const gchar* /*sender*/, const gchar* /*path*/,
               const gchar* /*interface*/, const gchar* /*signal*/, GVariant* parameters, gpointer /*data*/) {
  if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)"))) return;
  const char* key = nullptr;
  GVariant* value = nullptr;
  g_variant_get(parameters, "(&s&sv)", nullptr, &key, &value);
  const Variant owned(value);
  follow(key, value);
}

void onRead(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::string> key(static_cast<std::string*>(data));
  const Variant answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
  if (!answer) return;
  const Variant value(g_variant_get_child_value(answer.get(), 0));
  follow(*key, value.get());
}

}  // namespace

DesktopAppearance::DesktopAppearance()
    : bus_(adoptReference(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))),
      end_(adoptReference(g_cancellable_new())) {
  if (!bus_) return;
  subscription_ =
      g_dbus_connection_signal_subscribe(bus_.get(), kPortal, kSettings, "SettingChanged", kPath, kNamespace,
                                         G_DBUS_SIGNAL_FLAGS_NONE, onChanged, nullptr, nullptr);
  read(kColorScheme);
  read(kContrast);
}

DesktopAppearance::~DesktopAppearance() {
  g_cancellable_cancel(end_.get());
  if (subscription_ != 0) g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
}

void DesktopAppearance::read(const char* key) {
  g_dbus_connection_call(bus_.get(), kPortal, kPath, kSettings, "Read",
                         g_variant_new("(ss)", kNamespace, key), G_VARIANT_TYPE("(v)"),
                         G_DBUS_CALL_FLAGS_NONE, -1, end_.get(), onRead,
                         std::make_unique<std::string>(key).release());
}

}  // namespace quendo::gtk
