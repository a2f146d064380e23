#pragma once

#import <AppKit/AppKit.h>

#include "platform/Window.h"

@class QuendoWindowDelegate;

namespace quendo::cocoa {

/// A plain NSView.
class CocoaView final : public View {
 public:
  explicit CocoaView(const Rect& frame);
  void addPinnedSubview(WebView& webView) override;
  NSView* view() const { return view_; }

 private:
  NSView* view_;
};

/// NSWindow; its sheets are queued by AppKit.
class CocoaWindow final : public Window {
 public:
  CocoaWindow(const Rect& contentRect, std::uint32_t styleMask);
  ~CocoaWindow() override;
  CocoaWindow(const CocoaWindow&) = delete;
  CocoaWindow& operator=(const CocoaWindow&) = delete;

  void setTitle(const std::string& title) override;
  void setAppearance(Appearance appearance) override;
  void setDelegate(WindowDelegate* delegate) override;
  void setMinimumSize(int width, int height) override;
  void center() override;
  std::optional<Rect> contentViewBounds() const override;
  void setContentView(View& view) override;
  void makeKeyAndOrderFront() override;

  bool hasAttachedSheet() const override;
  std::shared_ptr<PresentedAlert> beginSheet(const Alert& alert,
                                             std::function<void(AlertResult)> completion) override;
  void beginSheet(const OpenPanel& panel,
                  std::function<void(std::optional<std::vector<std::string>>)> completion) override;
  std::shared_ptr<SavePanel> beginSheet(SavePanelConfiguration configuration,
                                        SavePanelCompletion completion) override;

 private:
  NSWindow* window_;
  QuendoWindowDelegate* windowDelegate_;
};

}  // namespace quendo::cocoa
