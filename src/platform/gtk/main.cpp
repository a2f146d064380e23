#include <gdkmm/display.h>
#include <glib.h>
#include <gtk/gtk.h>
#include <gtkmm/icontheme.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "app/AppController.h"
#include "app/ExitStatus.h"
#include "app/StartNeeds.h"
#include "i18n/Localization.h"
#include "platform/SiteConfiguration.h"
#include "platform/gtk/application/GLibMainQueue.h"
#include "platform/gtk/application/GLibUuidSource.h"
#include "platform/gtk/application/GdkPasteboard.h"
#include "platform/gtk/application/GioContentTypes.h"
#include "platform/gtk/application/GioWorkspace.h"
#include "platform/gtk/application/GtkHostApplication.h"
#include "platform/gtk/application/GtkToolkit.h"
#include "platform/gtk/application/KeyFileDefaults.h"
#include "platform/gtk/application/QuitSignals.h"
#include "platform/gtk/application/SoupHttpSession.h"
#include "platform/gtk/rendering/Fonts.h"
#include "platform/gtk/rendering/Rendering.h"
#include "platform/gtk/web/SandboxProbe.h"
#include "platform/posix/EnvironmentLocale.h"
#include "platform/posix/ExecutableBundle.h"
#include "platform/posix/PosixDocumentFiles.h"
#include "platform/posix/PosixFileManager.h"
#include "platform/posix/SystemClock.h"
#include "platform/posix/ThreadSerialQueue.h"
#include "platform/posix/WritableTemporaryDirectory.h"
#include "store/StateStore.h"

namespace {

constexpr std::string_view kUsage =
    "Usage: quendo [OPTION] [FILE...]\n"
    "\n"
    "Opens each FILE, a path or a file: URL, in a tab. Where Quendo runs already, its window takes them; "
    "the\n"
    "exit status is then 0 when at least one was taken, and 2 when none was.\n"
    "\n"
    "  --rendering=PATH       let the graphics card or the processor draw: auto, card, processor\n"
    "  --without-web-sandbox  go on where the system does not let the page be sandboxed\n"
    "  --version              print the version and exit\n"
    "  --help                 print this help and exit\n";

constexpr std::string_view kNoSandbox =
    "Quendo cannot sandbox its page on this system (user namespaces are not permitted); "
    "start it with --without-web-sandbox to go on without.\n";

void print(std::FILE* stream, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stream);
}

struct Options {
  bool withoutWebSandbox = false;
  std::optional<quendo::gtk::RenderingPath> rendering;
  std::vector<char*> rest;
};

/// Takes the program's own options out of the command line. Ends the program for those that ask to.
Options takeOptions(int argc, char** argv) {
  constexpr std::string_view kRendering = "--rendering=";
  Options options;
  for (int i = 0; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--without-web-sandbox") {
      options.withoutWebSandbox = true;
    } else if (argument.starts_with(kRendering)) {
      const std::string_view path = argument.substr(kRendering.size());
      options.rendering = quendo::gtk::renderingPathNamed(path);
      if (options.rendering || path == "auto") continue;
      print(stderr, "quendo: --rendering is auto, card or processor\n");
      std::exit(quendo::kExitCannotStart);
    } else if (argument == "--version") {
      print(stdout, "quendo " + std::string(quendo::kProductVersion) + "\n");
      std::exit(EXIT_SUCCESS);
    } else if (argument == "--help") {
      print(stdout, kUsage);
      std::exit(EXIT_SUCCESS);
    } else {
      options.rest.push_back(argv[i]);
    }
  }
  return options;
}

/// Makes the icons beside the program known, wherever the installed tree was moved to.
void addIcons(const quendo::Bundle& bundle) {
  const auto resources = bundle.resourcePath();
  const auto display = Gdk::Display::get_default();
  if (resources && display)
    Gtk::IconTheme::get_for_display(display)->add_search_path(*resources + "/../icons");
}

}  // namespace

int main(int argc, char** argv) {
  using namespace quendo;
  using namespace quendo::gtk;
  // Before anything can start a thread or a process.
  QuitSignals quitSignals;
  Options options = takeOptions(argc, argv);
  const bool persistenceTestMode =
      persistenceTestModeFromEnvironmentValue(std::getenv("QUENDO_PERSISTENCE_TEST"));
  ensureTemporaryDirectory();
  SandboxProbe sandboxProbe;
  KeyFileDefaults defaults(userDefaultsPath());
  Rendering rendering(options.rendering, defaults);
  g_set_prgname("com.quendo.Quendo");
  g_set_application_name("Quendo");
  const EnvironmentLocale locale;
  const Localization localization(defaults, locale);
  const auto refuse = [&](StartNeed missing) {
    print(stderr, textOfMissing(missing, localization) + "\n");
    return false;
  };
  // The toolkit would end the program in its own words.
  if (!gtk_init_check()) {
    refuse(StartNeed::display);
    return kExitCannotStart;
  }

  // A test run must never reach the user's own instance, nor be reached by it.
  GtkHostApplication application(
      persistenceTestMode ? "com.quendo.Quendo.PersistenceTest" : "com.quendo.Quendo", quitSignals);
  GtkToolkit toolkit(application, rendering);
  const ExecutableBundle bundle;
  PosixFileManager fileManager;
  PosixDocumentFiles documentFiles;
  ThreadSerialQueue storeQueue;
  GLibMainQueue mainQueue;
  GdkPasteboard pasteboard;
  GioWorkspace workspace;
  GLibUuidSource uuids;
  const GioContentTypes contentTypes;
  const SystemClock clock;
  SoupHttpSession httpSession{std::string(kCertificateAuthorityFile)};

  application.setActivationPolicyRegular();
  auto controller = std::make_unique<AppController>(HostPorts{
      application, toolkit, bundle, locale, defaults, fileManager, documentFiles, storeQueue, mainQueue,
      pasteboard, workspace, uuids, contentTypes, clock, httpSession, persistenceTestMode});
  application.setDelegate(controller.get());
  application.setStartCondition([&] {
    if (!hasFonts()) return refuse(StartNeed::fonts);
    if (!fileManager.applicationSupportDirectory()) return refuse(StartNeed::dataDirectory);
    rendering.begin();
    addIcons(bundle);
    if (sandboxProbe.sandboxWorks()) return true;
    if (!options.withoutWebSandbox) {
      print(stderr, kNoSandbox);
      return false;
    }
    g_setenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS", "1", TRUE);
    return true;
  });
  return application.run(static_cast<int>(options.rest.size()), options.rest.data());
}
