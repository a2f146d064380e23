#include "platform/gtk/application/GtkHostApplication.h"

#include <gdkmm/display.h>
#include <gtkmm/aboutdialog.h>
#include <gtkmm/window.h>

#include <utility>

#include "app/ExitStatus.h"
#include "files/Url.h"
#include "platform/SiteConfiguration.h"
#include "platform/gtk/application/GioWorkspace.h"

namespace quendo::gtk {
namespace {

/// The URLs of the files that a start was given. Names may be any bytes, and are relative to the working
/// directory of the start that gave them.
std::vector<std::string> fileUrlsOf(Gio::ApplicationCommandLine& line) {
  int count = 0;
  gchar** arguments = g_application_command_line_get_arguments(line.gobj(), &count);
  const char* directory = g_application_command_line_get_cwd(line.gobj());
  std::vector<std::string> urls;
  for (int i = 1; i < count; ++i) urls.push_back(urlOfArgument(arguments[i], directory ? directory : "/"));
  g_strfreev(arguments);
  return urls;
}

}  // namespace

GtkHostApplication::GtkHostApplication(const std::string& identifier, QuitSignals& quitSignals)
    : application_(Gtk::Application::create(identifier, Gio::Application::Flags::HANDLES_COMMAND_LINE)),
      menuBar_(Gio::Menu::create()),
      quitSignals_(quitSignals) {
  application_->property_register_session() = true;
  g_signal_connect_swapped(application_->gobj(), "query-end",
                           G_CALLBACK(+[](GtkHostApplication* self) { self->onSessionQueryEnd(); }), this);
  application_->signal_startup().connect(sigc::mem_fun(*this, &GtkHostApplication::onStartup));
  application_->signal_command_line().connect(
      [this](const Glib::RefPtr<Gio::ApplicationCommandLine>& line) { return onCommandLine(*line.get()); },
      false);
}

GtkHostApplication::~GtkHostApplication() {
  g_signal_handlers_disconnect_by_data(application_->gobj(), this);
}

// The session waits while the quit is negotiated: the inhibitor is taken before this handler returns. A quit
// that was cancelled keeps it, because what was typed is not on the disk then, and a session that is no
// longer held goes on to end the program.
void GtkHostApplication::onSessionQueryEnd() {
  if (sessionInhibitor_ == 0) {
    GtkWindow* window = gtk_application_get_active_window(application_->gobj());
    sessionInhibitor_ =
        gtk_application_inhibit(application_->gobj(), window, GTK_APPLICATION_INHIBIT_LOGOUT, "Quendo");
  }
  askToTerminate(TerminationReason::session);
}

void GtkHostApplication::releaseSession() {
  if (sessionInhibitor_ != 0)
    gtk_application_uninhibit(application_->gobj(), std::exchange(sessionInhibitor_, 0));
}

int GtkHostApplication::run(int argc, char** argv) {
  // A second start has nothing to save, and nothing would read its signals while it waits for the first.
  g_application_register(G_APPLICATION(application_->gobj()), nullptr, nullptr);
  if (application_->is_remote()) quitSignals_.release();
  const int status = application_->run(argc, argv);
  return exitStatus_ != 0 ? exitStatus_ : status;
}

void GtkHostApplication::onStartup() {
  // Without a session bus GTK has no name for what it shows on an accessibility bus that it finds by way of
  // the display, and crashes when a window goes.
  if (!g_application_get_dbus_connection(G_APPLICATION(application_->gobj())))
    g_setenv("GTK_A11Y", "none", TRUE);
  if (startCondition_ && !startCondition_()) {
    exitStatus_ = kExitCannotStart;
    return;
  }
  quitSignals_.receive([this] { askToTerminate(TerminationReason::signal); });
  application_->hold();
  appearance_ = std::make_unique<DesktopAppearance>();
  started_ = true;
  delegate_->applicationDidFinishLaunching();
}

// The first call belongs to the launch itself; each later one is a second start.
int GtkHostApplication::onCommandLine(Gio::ApplicationCommandLine& line) {
  if (!started_) return kExitCannotStart;
  const StartKind kind = std::exchange(launched_, true) ? StartKind::again : StartKind::launch;
  return delegate_->applicationWasStarted(kind, fileUrlsOf(line));
}

// Presenting the window is all that activation means here; the desktop decides about focus stealing.
void GtkHostApplication::activateIgnoringOtherApps(bool /*ignoringOtherApps*/) {}

void GtkHostApplication::setMainMenu(std::shared_ptr<const Menu> menu) {
  entries_ = gtk::menuEntries(*menu);
  for (const MenuEntry& entry : entries_) installAction(entry);
  fillMenuBar(*menuBar_.get(), *menu);
  updateMainMenu();
}

// The language items share one action, whose state is the ticked item's code.
void GtkHostApplication::installAction(const MenuEntry& entry) {
  const bool isChoice = !entry.item.representedObject.empty();
  auto& action = actions_[entry.actionName];
  if (!action) {
    if (isChoice) {
      action = Gio::SimpleAction::create_radio_string(entry.actionName, entry.item.representedObject);
      action->signal_activate().connect([this, name = entry.actionName](const Glib::VariantBase& target) {
        const auto code = Glib::VariantBase::cast_dynamic<Glib::Variant<Glib::ustring>>(target).get();
        for (const MenuEntry& candidate : std::vector<MenuEntry>(entries_)) {
          if (candidate.actionName == name && candidate.item.representedObject == code.raw()) {
            perform(candidate.item);
          }
        }
      });
    } else {
      action = Gio::SimpleAction::create(entry.actionName);
      action->signal_activate().connect(
          [this, item = entry.item](const Glib::VariantBase&) { perform(item); });
      application_->set_accels_for_action(
          "app." + entry.actionName,
          std::vector<Glib::ustring>(entry.accelerators.begin(), entry.accelerators.end()));
    }
    application_->add_action(action);
  }
  if (isChoice && entry.item.on) {
    action->set_state(Glib::Variant<Glib::ustring>::create(entry.item.representedObject));
  }
}

void GtkHostApplication::updateMainMenu() {
  for (const MenuEntry& entry : entries_) actions_[entry.actionName]->set_enabled(isEnabled(entry.item));
}

bool GtkHostApplication::isEnabled(const MenuItem& item) const {
  if (item.target() == MenuTarget::host) return delegate_->validateMenuItem(item);
  if (item.platformAction == PlatformAction::terminate ||
      item.platformAction == PlatformAction::orderFrontStandardAboutPanel) {
    return true;
  }
  return responder_ && responder_->canPerform(item.platformAction);
}

// Validated once more, since what an item stands for may have become impossible after it was shown.
void GtkHostApplication::perform(const MenuItem& item) {
  if (!isEnabled(item)) return;
  if (responder_) responder_->focusContent();
  if (item.target() == MenuTarget::host) {
    delegate_->performMenuItem(item);
  } else {
    performPlatformAction(item.platformAction);
  }
}

void GtkHostApplication::performPlatformAction(PlatformAction action) {
  switch (action) {
    case PlatformAction::orderFrontStandardAboutPanel:
      showAboutPanel();
      break;
    case PlatformAction::terminate:
      terminate();
      break;
    default:
      responder_->perform(action);
      break;
  }
}

void GtkHostApplication::showAboutPanel() {
  auto* panel = new Gtk::AboutDialog();
  panel->set_program_name("Quendo");
  panel->set_logo_icon_name("com.quendo.Quendo");
  panel->set_version(std::string(kProductVersion) + " (" + std::string(kProductBuild) + ")");
  panel->set_website(std::string(kPublicSiteUrl));
  panel->set_website_label(std::string(kSiteDomain));
  panel->set_title("Quendo");
  if (Gtk::Window* window = application_->get_active_window()) panel->set_transient_for(*window);
  panel->set_modal(true);
  // The toolkit's own way would start the browser with the signals that are blocked here.
  panel->signal_activate_link().connect(
      [](const std::string& url) {
        openUrlOutside(url);
        return true;
      },
      false);
  panel->signal_close_request().connect(
      [panel] {
        delete panel;
        return true;
      },
      false);
  panel->present();
}

void GtkHostApplication::terminate() {
  askToTerminate(TerminationReason::user);
}

void GtkHostApplication::askToTerminate(TerminationReason reason) {
  if (delegate_->applicationShouldTerminate(reason) == TerminationReply::now) application_->quit();
}

void GtkHostApplication::replyToApplicationShouldTerminate(bool shouldTerminate) {
  if (!shouldTerminate) return;
  releaseSession();
  application_->quit();
}

void GtkHostApplication::beep() {
  if (const auto display = Gdk::Display::get_default()) display->beep();
}

}  // namespace quendo::gtk
