#pragma once

namespace quendo {

class WebView;
class Window;

/// What the host shows itself on. Each is null before it is built and after it is gone; `AppController` owns
/// both, everything else reads them when it needs them. Main thread.
struct Surface {
  WebView* webView = nullptr;
  Window* window = nullptr;
};

}  // namespace quendo
