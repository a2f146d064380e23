#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <optional>
#include <utility>

#include "platform/WebView.h"
#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// Hears the `theme-color` of main frame documents. The web view has a property for it, but one that draws
/// with the processor never sets it. Main thread.
class ThemeColorWatch {
 public:
  using Handler = std::function<void(const std::optional<Color>&)>;

  explicit ThemeColorWatch(WebKitUserContentManager* manager);
  ~ThemeColorWatch();
  ThemeColorWatch(const ThemeColorWatch&) = delete;
  ThemeColorWatch& operator=(const ThemeColorWatch&) = delete;

  /// What every document runs in the host's world, at its start.
  static const char* script();

  /// Called once for each document, and whenever its colour has changed.
  void setHandler(Handler handler) { handler_ = std::move(handler); }

 private:
  static void onMessage(WebKitUserContentManager* manager, JSCValue* posted, gpointer watch);

  GObjectPtr<WebKitUserContentManager> manager_;
  Handler handler_;
};

/// Nothing for what is no colour. `text` is a computed CSS colour.
std::optional<Color> colorFromCss(const char* text);

}  // namespace quendo::gtk
