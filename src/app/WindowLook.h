#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bridge/Surface.h"
#include "platform/WebView.h"
#include "platform/Window.h"

namespace quendo {

/// What the window is called while the page has no title.
inline constexpr std::string_view kWindowTitle = "Quendo";

/// A page's title as the window shows it: in one line, without control characters, at most 200 characters.
std::string windowTitleFor(std::string_view pageTitle);

/// Dark if white text stands out from the colour more than black text does. Without a colour, or with one
/// that is rather transparent, it is the desktop's.
Appearance appearanceFor(const std::optional<Color>& themeColor);

/// Gives the window its page's title, and everything native the page's light or dark. Main thread.
class WindowLook final : public PageObserver {
 public:
  explicit WindowLook(const Surface& surface) : surface_(surface) {}

  void pageTitleDidChange(const std::string& title) override;
  void pageThemeColorDidChange(const std::optional<Color>& color) override;

 private:
  const Surface& surface_;
};

}  // namespace quendo
