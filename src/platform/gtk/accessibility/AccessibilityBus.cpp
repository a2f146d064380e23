#include "platform/gtk/accessibility/AccessibilityBus.h"

#include <gtk/gtk.h>

#include <memory>
#include <mutex>
#include <utility>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {
namespace {

constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
/// What the cache of a program says of one object: itself, its application, its parent, its index, the number
/// of its children, interfaces, name, role, description, states.
constexpr const char* kCacheItem = "((so)(so)(so)iiassusau)";
constexpr gsize kCachedChildCount = 4;

struct Bus {
  GObjectPtr<GDBusConnection> connection;  ///< Main thread only, like the handler.
  std::function<void(GDBusConnection*)> handler;
  std::mutex mutex;
  std::optional<Graft> graft;
};

/// Never destroyed: a filter may run while the program exits.
Bus& bus() {
  static Bus& instance = *new Bus;
  return instance;
}

bool is(const char* text, const char* expected) {
  return g_strcmp0(text, expected) == 0;
}

/// The answer to a call to the graft's parent, null for one that GTK is to answer.
GVariant* answerFor(GDBusMessage* call, const Graft& graft) {
  const char* interface = g_dbus_message_get_interface(call);
  const char* member = g_dbus_message_get_member(call);
  GVariant* body = g_dbus_message_get_body(call);
  if (is(interface, kAccessible) && is(member, "GetChildren")) {
    GVariant* child = graft.child.variant();
    return g_variant_new("(@a(so))", g_variant_new_array(G_VARIANT_TYPE("(so)"), &child, 1));
  }
  if (is(interface, kAccessible) && is(member, "GetChildAtIndex") && body &&
      g_variant_is_of_type(body, G_VARIANT_TYPE("(i)"))) {
    gint32 index = 0;
    g_variant_get(body, "(i)", &index);
    return index == 0 ? g_variant_new("(@(so))", graft.child.variant()) : nullptr;
  }
  if (is(interface, "org.freedesktop.DBus.Properties") && is(member, "Get") && body &&
      g_variant_is_of_type(body, G_VARIANT_TYPE("(ss)"))) {
    const char* of = nullptr;
    const char* property = nullptr;
    g_variant_get(body, "(&s&s)", &of, &property);
    if (is(of, kAccessible) && is(property, "ChildCount"))
      return g_variant_new("(v)", g_variant_new_int32(1));
  }
  return nullptr;
}

/// Takes the call from GTK, if it is answered here.
GDBusMessage* incoming(GDBusConnection* connection, GDBusMessage* message) {
  if (g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) return message;
  const std::optional<Graft> shown = AccessibilityBus::shown();
  if (!shown || g_dbus_message_get_path(message) != shown->parent) return message;
  GVariant* answer = answerFor(message, *shown);
  if (!answer) return message;
  const auto reply = adoptReference(g_dbus_message_new_method_reply(message));
  g_dbus_message_set_body(reply.get(), answer);
  g_dbus_connection_send_message(connection, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
  g_object_unref(message);
  return nullptr;
}

bool describes(GVariant* item, const std::string& path) {
  const char* described = nullptr;
  g_variant_get_child(item, 0, "(&s&o)", nullptr, &described);
  return described == path;
}

GVariant* withOneChild(GVariant* item) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE(kCacheItem));
  for (gsize i = 0; i < g_variant_n_children(item); ++i) {
    GVariant* member = g_variant_get_child_value(item, i);
    g_variant_builder_add_value(&builder, i == kCachedChildCount ? g_variant_new_int32(1) : member);
    g_variant_unref(member);
  }
  return g_variant_builder_end(&builder);
}

/// `items` with the graft's parent having one child; null if it is not among them.
GVariant* amended(GVariant* items, const std::string& parent) {
  bool found = false;
  GVariantBuilder builder;
  g_variant_builder_init(&builder, g_variant_get_type(items));
  for (gsize i = 0; i < g_variant_n_children(items); ++i) {
    GVariant* item = g_variant_get_child_value(items, i);
    const bool isParent = describes(item, parent);
    found = found || isParent;
    g_variant_builder_add_value(&builder, isParent ? withOneChild(item) : item);
    g_variant_unref(item);
  }
  GVariant* all = g_variant_ref_sink(g_variant_builder_end(&builder));
  if (found) return all;
  g_variant_unref(all);
  return nullptr;
}

void adopt(GDBusConnection* connection) {
  g_idle_add_full(
      G_PRIORITY_DEFAULT,
      [](gpointer data) -> gboolean {
        bus().connection = addReference(G_DBUS_CONNECTION(data));
        if (bus().handler) bus().handler(bus().connection.get());
        return G_SOURCE_REMOVE;
      },
      g_object_ref(connection), g_object_unref);
}

/// Amends what GTK's cache says of the graft's parent: in the list of all objects, and when it is new.
GDBusMessage* outgoing(GDBusConnection* connection, GDBusMessage* message) {
  // Only GTK's connection announces an application.
  if (is(g_dbus_message_get_interface(message), "org.a11y.atspi.Socket") &&
      is(g_dbus_message_get_member(message), "Embed")) {
    adopt(connection);
    return message;
  }
  GVariant* body = g_dbus_message_get_body(message);
  if (!body) return message;
  const bool all = g_variant_is_of_type(body, G_VARIANT_TYPE("(a((so)(so)(so)iiassusau))"));
  if (!all && !g_variant_is_of_type(body, G_VARIANT_TYPE("(((so)(so)(so)iiassusau))"))) return message;
  const std::optional<Graft> shown = AccessibilityBus::shown();
  if (!shown) return message;
  GVariant* items = all ? g_variant_get_child_value(body, 0) : g_variant_ref(body);
  GVariant* changed = amended(items, shown->parent);
  g_variant_unref(items);
  if (!changed) return message;
  GDBusMessage* copy = g_dbus_message_copy(message, nullptr);
  if (copy) {
    g_dbus_message_set_body(copy, all ? g_variant_new_tuple(&changed, 1) : changed);
    g_object_unref(message);
  }
  g_variant_unref(changed);
  return copy ? copy : message;
}

/// Runs on a thread of GIO's.
GDBusMessage* filter(GDBusConnection* connection, GDBusMessage* message, gboolean isIncoming, gpointer) {
  return isIncoming ? incoming(connection, message) : outgoing(connection, message);
}

decltype(GInitableIface::init) initConnection = nullptr;

gboolean initAndFilter(GInitable* initable, GCancellable* cancellable, GError** error) {
  if (!initConnection(initable, cancellable, error)) return FALSE;
  g_dbus_connection_add_filter(G_DBUS_CONNECTION(initable), filter, nullptr, nullptr);
  return TRUE;
}

void emitChildrenChanged(const char* detail, const Graft& graft) {
  g_dbus_connection_emit_signal(
      bus().connection.get(), nullptr, graft.parent.c_str(), "org.a11y.atspi.Event.Object", "ChildrenChanged",
      g_variant_new("(siiva{sv})", detail, 0, 0, graft.child.variant(), nullptr), nullptr);
}

}  // namespace

void AccessibilityBus::watch() {
  const bool toolkitCanEmbed = gtk_check_version(4, 14, 0) == nullptr;
  if (toolkitCanEmbed || initConnection) return;
  // Never released: the class keeps its interfaces' functions.
  gpointer connections = g_type_class_ref(G_TYPE_DBUS_CONNECTION);
  auto* initable = static_cast<GInitableIface*>(g_type_interface_peek(connections, G_TYPE_INITABLE));
  initConnection = std::exchange(initable->init, initAndFilter);
}

void AccessibilityBus::setHandler(std::function<void(GDBusConnection*)> handler) {
  bus().handler = std::move(handler);
  if (bus().handler && bus().connection) bus().handler(bus().connection.get());
}

void AccessibilityBus::show(const std::optional<Graft>& graft) {
  std::optional<Graft> before = graft;
  {
    const std::scoped_lock lock(bus().mutex);
    std::swap(bus().graft, before);
  }
  if (before == graft || !bus().connection) return;
  if (before) emitChildrenChanged("remove", *before);
  if (graft) emitChildrenChanged("add", *graft);
}

std::optional<Graft> AccessibilityBus::shown() {
  const std::scoped_lock lock(bus().mutex);
  return bus().graft;
}

}  // namespace quendo::gtk
