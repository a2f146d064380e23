#pragma once

namespace quendo {

class WebView;
class Window;

/// What the host shows itself on. Each is null before it is built and after it is gone, and the window from
/// a fatal error on, after which nothing is shown on it. `AppController` owns both, everything else reads
/// them when it needs them. Main thread.
struct Surface {
  WebView* webView = nullptr;
  Window* window = nullptr;
};

}  // namespace quendo
