#include "platform/gtk/accessibility/PageAccessibility.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/gtk/accessibility/AccessibilityBus.h"

namespace quendo::gtk {
namespace {

constexpr const char* kDBus = "org.freedesktop.DBus";
constexpr const char* kDBusPath = "/org/freedesktop/DBus";
/// Where each web process has the roots of its pages.
constexpr const char* kPages = "/org/a11y/webkit/accessible";
constexpr int kPatienceMilliseconds = 5000;
constexpr std::size_t kMostObjects = 500;

struct VariantUnref {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using VariantPtr = std::unique_ptr<GVariant, VariantUnref>;

struct NodeInfoUnref {
  void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
};
using NodeInfoPtr = std::unique_ptr<GDBusNodeInfo, NodeInfoUnref>;

/// Null if it failed or the answer is of another type.
VariantPtr call(GDBusConnection* bus, const AccessibleReference& object, const char* interface,
                const char* method, GVariant* arguments, const char* answer) {
  return VariantPtr(g_dbus_connection_call_sync(
      bus, object.bus.c_str(), object.path.c_str(), interface, method, arguments, G_VARIANT_TYPE(answer),
      G_DBUS_CALL_FLAGS_NO_AUTO_START, kPatienceMilliseconds, nullptr, nullptr));
}

/// What the sandboxed processes of this program's pages are called on the bus.
std::string webProcessPrefix() {
  const char* identifier = g_application_get_application_id(g_application_get_default());
  return std::string(identifier) + ".Sandboxed.WebProcess-";
}

std::vector<std::string> webProcesses(GDBusConnection* bus, const std::string& prefix) {
  std::vector<std::string> found;
  const VariantPtr names = call(bus, {kDBus, kDBusPath}, kDBus, "ListNames", nullptr, "(as)");
  if (!names) return found;
  GVariantIter* iterator = nullptr;
  g_variant_get(names.get(), "(as)", &iterator);
  const char* name = nullptr;
  while (g_variant_iter_next(iterator, "&s", &name)) {
    if (std::string_view(name).starts_with(prefix)) found.emplace_back(name);
  }
  g_variant_iter_free(iterator);
  return found;
}

/// The root of the page in this process.
std::optional<AccessibleReference> pageIn(GDBusConnection* bus, const std::string& process) {
  const VariantPtr owner =
      call(bus, {kDBus, kDBusPath}, kDBus, "GetNameOwner", g_variant_new("(s)", process.c_str()), "(s)");
  if (!owner) return std::nullopt;
  const char* name = nullptr;
  g_variant_get(owner.get(), "(&s)", &name);
  const VariantPtr xml =
      call(bus, {name, kPages}, "org.freedesktop.DBus.Introspectable", "Introspect", nullptr, "(s)");
  if (!xml) return std::nullopt;
  const char* text = nullptr;
  g_variant_get(xml.get(), "(&s)", &text);
  const NodeInfoPtr pages(g_dbus_node_info_new_for_xml(text, nullptr));
  if (!pages || !pages->nodes || !pages->nodes[0]) return std::nullopt;
  return AccessibleReference{name, std::string(kPages) + "/" + pages->nodes[0]->path};
}

/// GTK's object of the web view, which is named after its class.
std::optional<std::string> viewOf(GDBusConnection* bus) {
  constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
  const std::string own = g_dbus_connection_get_unique_name(bus);
  std::deque<std::string> paths{"/org/a11y/atspi/accessible/root"};
  for (std::size_t asked = 0; !paths.empty() && asked < kMostObjects; ++asked) {
    const AccessibleReference object{own, std::move(paths.front())};
    paths.pop_front();
    const VariantPtr name = call(bus, object, "org.freedesktop.DBus.Properties", "Get",
                                 g_variant_new("(ss)", kAccessible, "Name"), "(v)");
    if (name) {
      GVariant* value = nullptr;
      g_variant_get(name.get(), "(v)", &value);
      const VariantPtr owned(value);
      if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) &&
          g_str_equal(g_variant_get_string(value, nullptr), "WebKitWebView")) {
        return object.path;
      }
    }
    const VariantPtr children = call(bus, object, kAccessible, "GetChildren", nullptr, "(a(so))");
    if (!children) continue;
    GVariantIter* iterator = nullptr;
    g_variant_get(children.get(), "(a(so))", &iterator);
    const char* path = nullptr;
    while (g_variant_iter_next(iterator, "(&s&o)", nullptr, &path)) paths.emplace_back(path);
    g_variant_iter_free(iterator);
  }
  return std::nullopt;
}

/// What a search begins with, and what it finds.
struct Search {
  std::string prefix;  ///< Of the names of this program's web processes.
  std::optional<Graft> graft;
};

/// The page of the process that it was in before, or else of any: the web inspector has a process, too.
std::optional<AccessibleReference> findPage(GDBusConnection* bus, const Search& search) {
  std::optional<AccessibleReference> page;
  for (const std::string& process : webProcesses(bus, search.prefix)) {
    auto found = pageIn(bus, process);
    if (found && search.graft && *found == search.graft->child) return found;
    if (!page) page = found;
  }
  return page;
}

}  // namespace

PageAccessibility::PageAccessibility(WebKitWebView* view) : view_(view) {
  g_signal_connect_swapped(view, "map", G_CALLBACK(+[](PageAccessibility* self) { self->attach(); }), this);
  g_signal_connect(view, "load-changed",
                   G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent event, PageAccessibility* self) {
                     if (event == WEBKIT_LOAD_FINISHED) self->attach();
                   }),
                   this);
  AccessibilityBus::setHandler([this](GDBusConnection* bus) { busIsThere(bus); });
}

PageAccessibility::~PageAccessibility() {
  g_signal_handlers_disconnect_by_data(view_, this);
  if (subscription_) g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
  AccessibilityBus::setHandler({});
  AccessibilityBus::show(std::nullopt);
}

void PageAccessibility::busIsThere(GDBusConnection* bus) {
  bus_ = addReference(bus);
  subscription_ =
      g_dbus_connection_signal_subscribe(bus, kDBus, kDBus, "NameOwnerChanged", kDBusPath, nullptr,
                                         G_DBUS_SIGNAL_FLAGS_NONE, onNameOwnerChanged, this, nullptr);
  attach();
}

void PageAccessibility::onNameOwnerChanged(GDBusConnection*, const char*, const char*, const char*,
                                           const char*, GVariant* change, gpointer self) {
  const char* name = nullptr;
  g_variant_get(change, "(&s&s&s)", &name, nullptr, nullptr);
  if (std::string_view(name).starts_with(webProcessPrefix())) static_cast<PageAccessibility*>(self)->attach();
}

void PageAccessibility::attach() {
  if (!bus_) return;
  searchAgain_ = searching_;
  if (std::exchange(searching_, true)) return;
  auto done = lifetime_.guard([this](GTask* task) { searchIsOver(task); });
  using Done = decltype(done);
  GTask* task = g_task_new(
      bus_.get(), nullptr,
      [](GObject*, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Done> then(static_cast<Done*>(data));
        (*then)(G_TASK(result));
      },
      new Done(std::move(done)));
  g_task_set_task_data(task, new Search{webProcessPrefix(), AccessibilityBus::shown()},
                       [](gpointer data) { delete static_cast<Search*>(data); });
  g_task_run_in_thread(task, search);
  g_object_unref(task);
}

// Not on the main thread, which answers for GTK.
void PageAccessibility::search(GTask* task, gpointer source, gpointer data, GCancellable*) {
  auto* bus = G_DBUS_CONNECTION(source);
  auto* search = static_cast<Search*>(data);
  const auto page = findPage(bus, *search);
  const auto view = page ? viewOf(bus) : std::nullopt;
  search->graft = view ? std::optional(Graft{*view, *page}) : std::nullopt;
  g_task_return_boolean(task, TRUE);
}

void PageAccessibility::searchIsOver(GTask* task) {
  searching_ = false;
  const std::optional<Graft>& graft = static_cast<Search*>(g_task_get_task_data(task))->graft;
  if (graft) {
    g_dbus_connection_call(bus_.get(), graft->child.bus.c_str(), graft->child.path.c_str(),
                           "org.a11y.atspi.Socket", "Embedded", g_variant_new("(s)", graft->parent.c_str()),
                           nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
  }
  AccessibilityBus::show(graft);
  if (searchAgain_) attach();
}

}  // namespace quendo::gtk
