#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Rect.h"
#include "platform/SavePanel.h"
#include "platform/WebView.h"

namespace quendo {

inline constexpr std::uint32_t kWindowTitled = 1;
inline constexpr std::uint32_t kWindowClosable = 2;
inline constexpr std::uint32_t kWindowMiniaturizable = 4;
inline constexpr std::uint32_t kWindowResizable = 8;

class WindowDelegate {
 public:
  virtual ~WindowDelegate() = default;
  /// The user asked to close the window.
  virtual bool windowShouldClose() = 0;
};

/// A plain view that fills its window and is resized with it. Main thread.
class View {
 public:
  virtual ~View() = default;
  /// Shows `webView` in this view, its four edges pinned to the view's own. It has the keyboard when the
  /// window is shown.
  virtual void addPinnedSubview(WebView& webView) = 0;
};

enum class AlertStyle : std::uint8_t { warning, informational, critical };

/// An alert. A button is answered by its index, from 0; -1 stands for any other ending.
struct Alert {
  AlertStyle style = AlertStyle::warning;
  std::string messageText;
  std::string informativeText;
  /// The first is the default. None means the platform's single default button.
  std::vector<std::string> buttons;
  struct TextField {
    std::string text;
    int width = 0;
    int height = 0;
  };
  std::optional<TextField> accessory;
};

struct AlertResult {
  int button = -1;
  std::string text;  ///< What the accessory text field held.
};

/// An alert on the screen, or one that waits for its turn there. Letting go of it does not take it away.
/// Main thread.
class PresentedAlert {
 public:
  virtual ~PresentedAlert() = default;
  /// Takes the alert away; its completion gets -1, before or soon after this returns. Does nothing once the
  /// alert has ended.
  virtual void dismiss() = 0;
};

/// A panel in which the user chooses files that exist.
struct OpenPanel {
  std::string title;
  std::string prompt;          ///< Label of the confirming button.
  std::string startingFolder;  ///< A path, for platforms whose panels do not remember the last one.
  bool allowsMultipleSelection = false;
  bool canChooseDirectories = false;
};

enum class Appearance : std::uint8_t { asDesktop, light, dark };

/// The window. Sheets are modal to it and shown one at a time: a second waits for the first. Main thread.
class Window {
 public:
  virtual ~Window() = default;
  virtual void setTitle(const std::string& title) = 0;
  /// Draws what is native of the program light or dark. The page goes on seeing what the desktop prefers.
  virtual void setAppearance(Appearance appearance) = 0;
  virtual void setDelegate(WindowDelegate* delegate) = 0;
  virtual void setMinimumSize(int width, int height) = 0;
  virtual void center() = 0;
  virtual std::optional<Rect> contentViewBounds() const = 0;
  virtual void setContentView(View& view) = 0;
  /// Shows the window, in front, with the keyboard focus.
  virtual void makeKeyAndOrderFront() = 0;

  /// Whether a sheet is shown, or waits for its turn.
  virtual bool hasAttachedSheet() const = 0;
  virtual std::shared_ptr<PresentedAlert> beginSheet(const Alert& alert,
                                                     std::function<void(AlertResult)> completion) = 0;
  /// Completes with file paths, or with nothing when the user cancelled.
  virtual void beginSheet(const OpenPanel& panel,
                          std::function<void(std::optional<std::vector<std::string>>)> completion) = 0;
  virtual std::shared_ptr<SavePanel> beginSheet(SavePanelConfiguration configuration,
                                                SavePanelCompletion completion) = 0;
};

}  // namespace quendo
