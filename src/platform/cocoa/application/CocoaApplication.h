#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Application.h"
#import "platform/cocoa/application/CocoaMenu.h"

@class QuendoApplicationDelegate;

namespace quendo::cocoa {

/// NSApplication and its delegate. Main thread; one per process.
class CocoaApplication final : public Application {
 public:
  explicit CocoaApplication(NSApplication* application);
  ~CocoaApplication() override;
  CocoaApplication(const CocoaApplication&) = delete;
  CocoaApplication& operator=(const CocoaApplication&) = delete;

  /// Runs the event loop. The process ends in it.
  void run();
  /// Called when the application is about to end; nothing on main's stack is destroyed after that.
  void setWillTerminate(std::function<void()> willTerminate) { willTerminate_ = std::move(willTerminate); }
  /// Asks to quit, as `terminate` does, for another reason.
  void terminateFor(TerminationReason reason);
  /// Performs the item of the menu that has the pressed key, if there is one and the web view does not edit
  /// by it.
  bool performMenuKey(NSEvent* event);

  void setActivationPolicyRegular() override;
  void setDelegate(ApplicationDelegate* delegate) override;
  void activateIgnoringOtherApps(bool ignoringOtherApps) override;
  void setWindowsMenu(std::shared_ptr<const Menu> menu) override;
  void setMainMenu(std::shared_ptr<const Menu> menu) override;
  void updateMainMenu() override;
  void terminate() override;
  void replyToApplicationShouldTerminate(bool shouldTerminate) override;
  void beep() override;

  // What the application's delegate reports.
  ApplicationDelegate* delegate() const { return delegate_; }
  NSApplicationTerminateReply shouldTerminate();
  void willTerminate();
  /// False when none of the files was taken.
  bool openFiles(const std::vector<std::string>& urls);

 private:
  NSApplication* application_;
  QuendoApplicationDelegate* applicationDelegate_;
  QuendoMenuTarget* menuTarget_;
  ApplicationDelegate* delegate_ = nullptr;
  std::shared_ptr<const Menu> windowsMenu_;
  NSMenu* keys_ = nil;
  std::function<void()> willTerminate_;
  TerminationReason reason_ = TerminationReason::user;  ///< Of a quit that the program itself has begun.
  bool replyIsDue_ = false;
};

}  // namespace quendo::cocoa
