#pragma once

namespace quendo {

class WebView;
class Window;

/// The window and web view. Each is null before it is created and after it is destroyed; the window is also
/// null after a fatal error, when nothing more is shown on it. `AppController` owns both, and everything else
/// reads them on demand. Main thread.
struct Surface {
  WebView* webView = nullptr;
  Window* window = nullptr;
};

}  // namespace quendo
