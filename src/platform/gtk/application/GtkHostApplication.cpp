#include "platform/gtk/application/GtkHostApplication.h"

#include <gdkmm/display.h>
#include <gio/gunixinputstream.h>
#include <glibmm/fileutils.h>
#include <gtkmm/aboutdialog.h>
#include <gtkmm/window.h>

#include <cstdint>
#include <span>
#include <utility>

#include "app/CommandLine.h"
#include "app/ExitStatus.h"
#include "import/QuendoTextFileReader.h"
#include "platform/SiteConfiguration.h"
#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/application/GioWorkspace.h"
#include "platform/gtk/application/StandardInput.h"

namespace quendo::gtk {
namespace {

constexpr std::int64_t kMostStandardInput = QuendoTextFileReader::maximumFileBytes;

/// What a start, of this process or another one, has put on the bus with `argumentsOf`. The text of standard
/// input is missing if it cannot be read.
StartRequest requestOf(Gio::ApplicationCommandLine& line) {
  int count = 0;
  gchar** arguments = g_application_command_line_get_arguments(line.gobj(), &count);
  StartRequest request =
      parseCommandLine(std::span(arguments, static_cast<std::size_t>(count)).subspan(1), "/").request;
  g_strfreev(arguments);
  if (!request.wantsStandardInput()) return request;
  const auto stream = line.get_stdin();
  if (stream && G_IS_UNIX_INPUT_STREAM(stream->gobj())) {
    const int descriptor = g_unix_input_stream_get_fd(G_UNIX_INPUT_STREAM(stream->gobj()));
    request.standardInput = keptStandardInput(descriptor, kMostStandardInput);
  }
  return request;
}

}  // namespace

GtkHostApplication::GtkHostApplication(const std::string& identifier, QuitSignals& quitSignals)
    : application_(Gtk::Application::create(
          identifier, Gio::Application::Flags::HANDLES_COMMAND_LINE | Gio::Application::Flags::HANDLES_OPEN)),
      menuBar_(Gio::Menu::create()),
      quitSignals_(quitSignals) {
  application_->property_register_session() = true;
  g_signal_connect_swapped(application_->gobj(), "query-end",
                           G_CALLBACK(+[](GtkHostApplication* self) { self->onSessionQueryEnd(); }), this);
  application_->signal_startup().connect(sigc::mem_fun(*this, &GtkHostApplication::onStartup));
  application_->signal_command_line().connect(
      [this](const Glib::RefPtr<Gio::ApplicationCommandLine>& line) { return onCommandLine(line); }, false);
  // What the desktop asks for over the bus instead of starting a process. The bus starts one where none runs.
  application_->signal_activate().connect([this] { onRequestOfDesktop({}); }, false);
  application_->signal_open().connect(
      [this](const std::vector<Glib::RefPtr<Gio::File>>& files, const Glib::ustring& /*hint*/) {
        StartRequest request;
        for (const auto& file : files) request.urls.push_back(file->get_uri());
        onRequestOfDesktop(request);
      },
      false);
  application_->add_action("new-note", [this] { onRequestOfDesktop({.newNote = true}); });
}

bool GtkHostApplication::runs(const std::string& identifier) {
  const GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!bus) return false;
  GVariant* answer = g_dbus_connection_call_sync(
      bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
      g_variant_new("(s)", identifier.c_str()), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
  if (!answer) return false;
  gboolean owned = FALSE;
  g_variant_get(answer, "(b)", &owned);
  g_variant_unref(answer);
  return owned != FALSE;
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

int GtkHostApplication::run(const StartRequest& request) {
  // A second start has nothing to save, and nothing would read its signals while it waits for the first.
  g_application_register(G_APPLICATION(application_->gobj()), nullptr, nullptr);
  if (application_->is_remote()) quitSignals_.release();
  std::vector<std::string> arguments = {"quendo"};
  for (std::string& argument : argumentsOf(request)) arguments.push_back(std::move(argument));
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  const int status = application_->run(static_cast<int>(arguments.size()), pointers.data());
  releaseUnanswered();
  return exitStatus_.value_or(status);
}

// The name on the bus is free by now, so that these processes can take it.
void GtkHostApplication::releaseUnanswered() {
  if (unanswered_.empty()) return;
  const GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  unanswered_.clear();
  if (bus) g_dbus_connection_flush_sync(bus.get(), nullptr, nullptr);
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
int GtkHostApplication::onCommandLine(const Glib::RefPtr<Gio::ApplicationCommandLine>& line) {
  if (!started_) return kExitCannotStart;
  const StartKind kind = std::exchange(launched_, true) ? StartKind::again : StartKind::launch;
  const StartRequest request = requestOf(*line.get());
  // The other process gets its status once nobody holds the line.
  const auto start = unanswered_.insert(unanswered_.end(), {kind, line});
  auto status = std::make_shared<int>(exitStatusWithoutAnswer(kind, request));
  setExitStatus(*start, *status);
  delegate_->applicationWasStarted(kind, request, [this, start, status](int answer) {
    *status = answer;
    setExitStatus(*start, answer);
    unanswered_.erase(start);
  });
  return *status;
}

void GtkHostApplication::onRequestOfDesktop(const StartRequest& request) {
  if (started_) delegate_->applicationWasStarted(StartKind::again, request, [](int /*status*/) {});
}

void GtkHostApplication::setExitStatus(const Start& start, int status) {
  start.line->set_exit_status(status);
  if (start.kind == StartKind::launch) exitStatus_ = status;
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
  panel->set_copyright("© 2025 Quendo");
  panel->set_website(std::string(kPublicSiteUrl));
  panel->set_website_label(std::string(kSiteDomain));
  panel->set_title("Quendo");
  try {
    panel->set_license(Glib::file_get_contents(licenseFile_));
    panel->set_wrap_license(true);
  } catch (const Glib::FileError&) {
    // A program without its other files still says which version it is.
  }
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
