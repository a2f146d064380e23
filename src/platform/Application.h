#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Menu.h"

namespace quendo {

/// Answer to the question whether the application may end.
enum class TerminationReply : std::uint8_t {
  now,    ///< End at once.
  later,  ///< Wait for `replyToApplicationShouldTerminate`.
};

/// Who asked the application to end.
enum class TerminationReason : std::uint8_t {
  user,     ///< A menu, a key or a button; somebody is there to read an alert.
  signal,   ///< A signal to the process: a terminal, a service manager.
  session,  ///< The end of the desktop session.
};

/// How a process of the program was started.
enum class StartKind : std::uint8_t {
  launch,  ///< It became the running program.
  again,   ///< The program was running already, and takes over what the process was started for.
};

/// Stands for standard input among the files of a start. No URL is spelled like that.
inline constexpr std::string_view kStandardInput = "-";

/// What a process of the program was started for.
struct StartRequest {
  std::vector<std::string> urls = {};             ///< Files to open, and `kStandardInput`, in their order.
  bool newNote = false;                           ///< A new note is to be opened, after the files.
  std::optional<std::string> standardInput = {};  ///< What was read from it, to its end.

  bool wantsStandardInput() const { return std::ranges::find(urls, kStandardInput) != urls.end(); }
};

/// What the application object asks its delegate. Main thread.
class ApplicationDelegate : public MenuDelegate {
 public:
  virtual void applicationDidFinishLaunching() = 0;
  /// The application was started again, or its icon was activated, while it runs.
  virtual bool applicationShouldHandleReopen(bool hasVisibleWindows) = 0;
  /// The desktop hands over files, as URLs. False when none of them was taken.
  virtual bool applicationOpenFiles(const std::vector<std::string>& urls) = 0;
  /// A process was started for this, which may be nothing; a launch first finishes launching. `answer` gets
  /// the exit status, once, now or later: of the process itself when it was started again, of the program
  /// when it launched. A program that ends before it has answered answers with `exitStatusWithoutAnswer`.
  virtual void applicationWasStarted(StartKind kind, const StartRequest& request,
                                     std::function<void(int)> answer) = 0;
  virtual TerminationReply applicationShouldTerminate(TerminationReason reason) = 0;
  virtual bool applicationShouldTerminateAfterLastWindowClosed() const = 0;
};

/// The application object. Main thread.
class Application {
 public:
  virtual ~Application() = default;

  /// A normal application, with windows and an entry among the running programs.
  virtual void setActivationPolicyRegular() = 0;
  /// The delegate must outlive the application's run.
  virtual void setDelegate(ApplicationDelegate* delegate) = 0;
  virtual void activateIgnoringOtherApps(bool ignoringOtherApps) = 0;

  virtual void setWindowsMenu(std::shared_ptr<const Menu> menu) = 0;
  virtual void setMainMenu(std::shared_ptr<const Menu> menu) = 0;
  /// Validates the items of the main menu anew.
  virtual void updateMainMenu() = 0;

  /// Asks to quit for the user: the delegate decides through `applicationShouldTerminate`.
  virtual void terminate() = 0;
  /// The one answer to each `TerminationReply::later`: true ends the application.
  virtual void replyToApplicationShouldTerminate(bool shouldTerminate) = 0;
  virtual void beep() = 0;
};

}  // namespace quendo
