#pragma once

#include <giomm/applicationcommandline.h>
#include <giomm/menu.h>
#include <giomm/simpleaction.h>
#include <gtkmm/application.h>

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Application.h"
#include "platform/gtk/application/DesktopAppearance.h"
#include "platform/gtk/application/GtkMenuModel.h"
#include "platform/gtk/application/QuitSignals.h"

namespace quendo::gtk {

/// Performs what the menu asks of the platform: the window and the focused view. Main thread.
class Responder {
 public:
  virtual ~Responder() = default;
  virtual bool canPerform(PlatformAction action) const = 0;
  virtual void perform(PlatformAction action) = 0;
  /// Gives the keyboard back to the content, which a menu has had.
  virtual void focusContent() = 0;
};

/// The application: one instance per user session. A second start hands itself over to the first and
/// ends. Main thread.
class GtkHostApplication final : public Application {
 public:
  /// `identifier` names the one instance on the session bus. `quitSignals` must outlive the application.
  GtkHostApplication(const std::string& identifier, QuitSignals& quitSignals);
  ~GtkHostApplication() override;
  GtkHostApplication(const GtkHostApplication&) = delete;
  GtkHostApplication& operator=(const GtkHostApplication&) = delete;

  /// Whether a program with this name is on the session bus. The answer may be outdated when it arrives.
  static bool runs(const std::string& identifier);

  /// Asked once, in the first instance only, before anything is built. False ends the program with
  /// `kExitCannotStart`.
  void setStartCondition(std::function<bool()> condition) { startCondition_ = std::move(condition); }
  /// The file that the About panel shows the licences from, in UTF-8.
  void setLicenseFile(std::string path) { licenseFile_ = std::move(path); }
  /// Hands the request over to the application that runs already, or runs the event loop until this one ends;
  /// returns the exit status. The text of standard input is that of the process, which must have kept it.
  int run(const StartRequest& request);

  void setActivationPolicyRegular() override {}
  void setDelegate(ApplicationDelegate* delegate) override { delegate_ = delegate; }
  void activateIgnoringOtherApps(bool ignoringOtherApps) override;
  /// There is one window, and GTK lists none.
  void setWindowsMenu(std::shared_ptr<const Menu> /*menu*/) override {}
  void setMainMenu(std::shared_ptr<const Menu> menu) override;
  void updateMainMenu() override;
  void terminate() override;
  void replyToApplicationShouldTerminate(bool shouldTerminate) override;
  void beep() override;

  /// Files were dropped on the window.
  void openDroppedFiles(const std::vector<std::string>& urls) { delegate_->applicationOpenFiles(urls); }
  /// The one window's responder, or null.
  void setResponder(Responder* responder) { responder_ = responder; }
  Glib::RefPtr<Gtk::Application> application() const { return application_; }
  /// The items of the menu bar as it is now.
  const std::vector<MenuEntry>& menuEntries() const { return entries_; }
  /// Model of the menu bar; it lives as long as the application and is refilled on every change.
  Glib::RefPtr<Gio::Menu> menuBar() const { return menuBar_; }

 private:
  /// A process that waits for its exit status, this one or another.
  struct Start {
    StartKind kind;
    Glib::RefPtr<Gio::ApplicationCommandLine> line;
  };

  void onStartup();
  void askToTerminate(TerminationReason reason);
  void onSessionQueryEnd();
  void releaseSession();
  int onCommandLine(const Glib::RefPtr<Gio::ApplicationCommandLine>& line);
  void onRequestOfDesktop(const StartRequest& request);
  void setExitStatus(const Start& start, int status);
  void releaseUnanswered();
  void installAction(const MenuEntry& entry);
  bool isEnabled(const MenuItem& item) const;
  void perform(const MenuItem& item);
  void performPlatformAction(PlatformAction action);
  void showAboutPanel();

  Glib::RefPtr<Gtk::Application> application_;
  Glib::RefPtr<Gio::Menu> menuBar_;
  std::vector<MenuEntry> entries_;
  std::map<std::string, Glib::RefPtr<Gio::SimpleAction>> actions_;
  std::function<bool()> startCondition_;
  std::string licenseFile_;
  ApplicationDelegate* delegate_ = nullptr;
  Responder* responder_ = nullptr;
  QuitSignals& quitSignals_;
  std::unique_ptr<DesktopAppearance> appearance_;
  unsigned sessionInhibitor_ = 0;  ///< Holds up the session's end while a quit is negotiated, or 0.
  bool started_ = false;           ///< The launch has begun.
  bool launched_ = false;          ///< The command line of the launch itself has been seen.
  std::list<Start> unanswered_;
  std::optional<int> exitStatus_;  ///< Of the launch, once it is known.
};

}  // namespace quendo::gtk
