#include "platform/gtk/accessibility/AccessibilityBus.h"

#include <gtk/gtk.h>

#include <cstdint>
#include <map>
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

/// What the parent of the graft may be asked about its children.
enum class Question : std::uint8_t { other, children, childAtIndex, childCount };

struct Bus {
  GObjectPtr<GDBusConnection> connection;  ///< Main thread only, like the handler.
  std::function<void(GDBusConnection*)> handler;
  std::mutex mutex;
  std::optional<Graft> graft;
  /// What GTK has been asked and not yet answered, by who asked and the number of the call.
  std::map<std::pair<std::string, guint32>, Question> asked;
};

/// Never destroyed: a filter may run while the program exits.
Bus& bus() {
  static Bus& instance = *new Bus;
  return instance;
}

bool is(const char* text, const char* expected) {
  return g_strcmp0(text, expected) == 0;
}

Question questionOf(GDBusMessage* call) {
  const char* interface = g_dbus_message_get_interface(call);
  const char* member = g_dbus_message_get_member(call);
  GVariant* body = g_dbus_message_get_body(call);
  if (is(interface, kAccessible) && is(member, "GetChildren")) return Question::children;
  if (is(interface, kAccessible) && is(member, "GetChildAtIndex") && body &&
      g_variant_is_of_type(body, G_VARIANT_TYPE("(i)"))) {
    return Question::childAtIndex;
  }
  if (is(interface, "org.freedesktop.DBus.Properties") && is(member, "Get") && body &&
      g_variant_is_of_type(body, G_VARIANT_TYPE("(ss)"))) {
    const char* of = nullptr;
    const char* property = nullptr;
    g_variant_get(body, "(&s&s)", &of, &property);
    if (is(of, kAccessible) && is(property, "ChildCount")) return Question::childCount;
  }
  return Question::other;
}

void answer(GDBusConnection* connection, GDBusMessage* call, GVariant* body) {
  const auto reply = adoptReference(g_dbus_message_new_method_reply(call));
  g_dbus_message_set_body(reply.get(), body);
  g_dbus_connection_send_message(connection, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
}

/// The graft is the first child, and GTK's own, such as an open menu, follow.
GDBusMessage* takeIndex(GDBusConnection* connection, GDBusMessage* call, const Graft& graft) {
  gint32 index = 0;
  g_variant_get(g_dbus_message_get_body(call), "(i)", &index);
  if (index < 0) return call;
  GDBusMessage* shifted = nullptr;
  if (index == 0) {
    answer(connection, call, g_variant_new("(@(so))", graft.child.variant()));
  } else {
    shifted = g_dbus_message_copy(call, nullptr);
    if (!shifted) return call;
    g_dbus_message_set_body(shifted, g_variant_new("(i)", index - 1));
  }
  g_object_unref(call);
  return shifted;
}

/// Notes what the parent of the graft is asked, and answers where GTK need not.
GDBusMessage* incoming(GDBusConnection* connection, GDBusMessage* message) {
  if (g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) return message;
  const std::optional<Graft> shown = AccessibilityBus::shown();
  if (!shown || g_dbus_message_get_path(message) != shown->parent) return message;
  const Question question = questionOf(message);
  if (question == Question::childAtIndex) return takeIndex(connection, message, *shown);
  const char* sender = g_dbus_message_get_sender(message);
  if (question != Question::other && sender) {
    const std::scoped_lock lock(bus().mutex);
    bus().asked[{sender, g_dbus_message_get_serial(message)}] = question;
  }
  return message;
}

/// What a reply of GTK's answers.
Question answeredBy(GDBusMessage* reply) {
  const char* destination = g_dbus_message_get_destination(reply);
  if (!destination) return Question::other;
  const std::scoped_lock lock(bus().mutex);
  const auto asked = bus().asked.extract({destination, g_dbus_message_get_reply_serial(reply)});
  return asked ? asked.mapped() : Question::other;
}

GVariant* withGraft(GVariant* children, const Graft& graft) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("a(so)"));
  g_variant_builder_add_value(&builder, graft.child.variant());
  for (gsize i = 0; i < g_variant_n_children(children); ++i) {
    GVariant* child = g_variant_get_child_value(children, i);
    g_variant_builder_add_value(&builder, child);
    g_variant_unref(child);
  }
  return g_variant_builder_end(&builder);
}

bool describes(GVariant* item, const std::string& path) {
  const char* described = nullptr;
  g_variant_get_child(item, 0, "(&s&o)", nullptr, &described);
  return described == path;
}

GVariant* oneMore(GVariant* count) {
  return g_variant_new_int32(g_variant_get_int32(count) + 1);
}

GVariant* withOneChildMore(GVariant* item) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE(kCacheItem));
  for (gsize i = 0; i < g_variant_n_children(item); ++i) {
    GVariant* member = g_variant_get_child_value(item, i);
    g_variant_builder_add_value(&builder, i == kCachedChildCount ? oneMore(member) : member);
    g_variant_unref(member);
  }
  return g_variant_builder_end(&builder);
}

/// `items` with the graft's parent having one child more; null if it is not among them.
GVariant* amended(GVariant* items, const std::string& parent) {
  bool found = false;
  GVariantBuilder builder;
  g_variant_builder_init(&builder, g_variant_get_type(items));
  for (gsize i = 0; i < g_variant_n_children(items); ++i) {
    GVariant* item = g_variant_get_child_value(items, i);
    const bool isParent = describes(item, parent);
    found = found || isParent;
    g_variant_builder_add_value(&builder, isParent ? withOneChildMore(item) : item);
    g_variant_unref(item);
  }
  GVariant* all = g_variant_builder_end(&builder);
  if (found) return all;
  g_variant_unref(g_variant_ref_sink(all));
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

/// A floating body for a message of GTK's, null to leave it as it is.
GVariant* amendedBody(GVariant* body, Question question, const Graft& graft) {
  if (question == Question::children && g_variant_is_of_type(body, G_VARIANT_TYPE("(a(so))"))) {
    GVariant* children = g_variant_get_child_value(body, 0);
    GVariant* all = g_variant_new("(@a(so))", withGraft(children, graft));
    g_variant_unref(children);
    return all;
  }
  if (question == Question::childCount && g_variant_is_of_type(body, G_VARIANT_TYPE("(v)"))) {
    GVariant* count = nullptr;
    g_variant_get(body, "(v)", &count);
    GVariant* more =
        g_variant_is_of_type(count, G_VARIANT_TYPE_INT32) ? g_variant_new("(v)", oneMore(count)) : nullptr;
    g_variant_unref(count);
    return more;
  }
  // The cache: all objects, or one that is new.
  const bool all = g_variant_is_of_type(body, G_VARIANT_TYPE("(a((so)(so)(so)iiassusau))"));
  if (!all && !g_variant_is_of_type(body, G_VARIANT_TYPE("(((so)(so)(so)iiassusau))"))) return nullptr;
  GVariant* items = all ? g_variant_get_child_value(body, 0) : g_variant_ref(body);
  GVariant* changed = amended(items, graft.parent);
  g_variant_unref(items);
  return changed && all ? g_variant_new_tuple(&changed, 1) : changed;
}

/// Amends what GTK says of the graft's parent.
GDBusMessage* outgoing(GDBusConnection* connection, GDBusMessage* message) {
  // Only GTK's connection announces an application.
  if (is(g_dbus_message_get_interface(message), "org.a11y.atspi.Socket") &&
      is(g_dbus_message_get_member(message), "Embed")) {
    adopt(connection);
    return message;
  }
  const Question question = answeredBy(message);
  GVariant* body = g_dbus_message_get_body(message);
  const std::optional<Graft> shown = AccessibilityBus::shown();
  if (!body || !shown) return message;
  GVariant* changed = amendedBody(body, question, *shown);
  if (!changed) return message;
  g_variant_ref_sink(changed);
  GDBusMessage* copy = g_dbus_message_copy(message, nullptr);
  if (copy) {
    g_dbus_message_set_body(copy, changed);
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
