#include "platform/gtk/web/ThemeColorWatch.h"

#include "platform/gtk/web/HostWorld.h"

namespace quendo::gtk {
namespace {

constexpr const char* kHandler = "quendoThemeColor";

// Only the head is observed: the body changes with every key. A style resolves the colour.
constexpr const char* kScript = R"((() => {
  const { quendoThemeColor } = window.webkit.messageHandlers;
  const dark = matchMedia('(prefers-color-scheme: dark)');
  let told = null;
  const tell = () => {
    const metas = [...(document.head?.querySelectorAll('meta[name="theme-color" i]') ?? [])];
    const meta = metas.find(one => !one.media || matchMedia(one.media).matches);
    const { style } = document.createElement('i');
    style.color = meta?.content ?? '';
    if (style.color === told) return;
    told = style.color;
    quendoThemeColor.postMessage(told);
  };
  const observeHead = () => {
    const { head } = document;
    if (!head) return false;
    const attributeFilter = ['name', 'content', 'media'];
    new MutationObserver(tell).observe(head, { childList: true, subtree: true, attributes: true, attributeFilter });
    tell();
    return true;
  };
  if (!observeHead()) {
    const waiting = new MutationObserver(() => observeHead() && waiting.disconnect());
    waiting.observe(document, { childList: true, subtree: true });
  }
  dark.addEventListener('change', tell);
})();)";

}  // namespace

ThemeColorWatch::ThemeColorWatch(WebKitUserContentManager* manager) : manager_(addReference(manager)) {
  g_signal_connect(manager, "script-message-received::quendoThemeColor", G_CALLBACK(onMessage), this);
  webkit_user_content_manager_register_script_message_handler(manager, kHandler, kHostWorld);
}

ThemeColorWatch::~ThemeColorWatch() {
  g_signal_handlers_disconnect_by_data(manager_.get(), this);
  webkit_user_content_manager_unregister_script_message_handler(manager_.get(), kHandler, kHostWorld);
}

const char* ThemeColorWatch::script() {
  return kScript;
}

void ThemeColorWatch::onMessage(WebKitUserContentManager* /*manager*/, JSCValue* posted, gpointer watch) {
  const auto* self = static_cast<ThemeColorWatch*>(watch);
  const GCharPtr text(jsc_value_to_string(posted));
  if (self->handler_) self->handler_(colorFromCss(text.get()));
}

std::optional<Color> colorFromCss(const char* text) {
  GdkRGBA color;
  if (!text || !gdk_rgba_parse(&color, text)) return std::nullopt;
  return Color{color.red, color.green, color.blue, color.alpha};
}

}  // namespace quendo::gtk
