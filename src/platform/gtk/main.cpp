#include <gdkmm/display.h>
#include <glib.h>
#include <gtk/gtk.h>
#include <gtkmm/icontheme.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "app/AppController.h"
#include "app/CommandLine.h"
#include "app/ExitStatus.h"
#include "app/StartNeeds.h"
#include "i18n/Localization.h"
#include "i18n/Translations.h"
#include "import/QuendoTextFileReader.h"
#include "platform/SiteConfiguration.h"
#include "platform/gtk/accessibility/AccessibilityBus.h"
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
#include "platform/gtk/application/StandardInput.h"
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

void print(std::FILE* stream, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stream);
}

/// What a command line asks for that starts nothing: a text on standard output. Returns the exit status.
int show(std::string_view text) {
  print(stdout, text);
  return std::fflush(stdout) == 0 ? quendo::kExitSuccess : quendo::kExitCannotStart;
}

/// Messages on standard error, in the language of the terminal.
class Complaints {
 public:
  explicit Complaints(quendo::NativeLanguage language) : language_(language) {}

  void say(std::string_view text) const {
    print(stderr, std::string(quendo::translated(text, language_)) + "\n");
  }
  void standardInputIsUnreadable(int error) const {
    std::setlocale(LC_ALL, "");
    constexpr std::string_view kPlaceholder = "{reason}";
    std::string text(quendo::translated("quendo: a entrada padrão não pôde ser lida: {reason}", language_));
    text.replace(text.find(kPlaceholder), kPlaceholder.size(), g_strerror(error));
    print(stderr, text + "\n");
  }

 private:
  const quendo::NativeLanguage language_;
};

/// Replaces this process with a new start of the program. Standard input that was kept can be read again.
int startAnew(char** arguments) {
  ::execv("/proc/self/exe", arguments);
  std::perror("quendo");
  return quendo::kExitCannotStart;
}

std::string workingDirectory() {
  gchar* directory = g_get_current_dir();
  std::string path(directory);
  g_free(directory);
  return path;
}

/// IBus takes every key and gives back those that are not for it, in its own time. The web view then mixes up
/// their order, so IBus has to answer each key at once.
void keepOrderOfInputMethodKeys() {
  g_setenv("IBUS_ENABLE_SYNC_MODE", "1", FALSE);
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
  const EnvironmentLocale locale;
  const NativeLanguage language = terminalLanguage(locale);
  const Complaints complaints(language);
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  const CommandLine line =
      parseCommandLine(arguments.last(arguments.empty() ? 0 : arguments.size() - 1), workingDirectory());
  switch (line.action) {
    case CommandLine::Action::showHelp:
      return show(helpText(language));
    case CommandLine::Action::showVersion:
      return show("quendo " + std::string(kProductVersion) + "\n");
    case CommandLine::Action::refuse:
      print(stderr, refusalText(line, language));
      return kExitCannotStart;
    case CommandLine::Action::start:
      break;
  }
  // While signals still end the process: it may be a terminal that is read.
  if (line.request.wantsStandardInput()) {
    if (const int error = keepStandardInput(QuendoTextFileReader::maximumFileBytes); error != 0) {
      complaints.standardInputIsUnreadable(error);
      return kExitCannotStart;
    }
  }
  // Before anything can start a thread or a process.
  QuitSignals quitSignals;
  const bool persistenceTestMode =
      persistenceTestModeFromEnvironmentValue(std::getenv("QUENDO_PERSISTENCE_TEST"));
  ensureTemporaryDirectory();
  SandboxProbe sandboxProbe;
  KeyFileDefaults defaults(userDefaultsPath());
  Rendering rendering(renderingPathNamed(line.rendering), defaults);
  g_set_prgname("com.quendo.Quendo");
  g_set_application_name("Quendo");
  AccessibilityBus::watch();
  keepOrderOfInputMethodKeys();
  // A test run must never reach the user's own instance, nor be reached by it.
  const std::string identifier =
      persistenceTestMode ? "com.quendo.Quendo.PersistenceTest" : "com.quendo.Quendo";
  const auto refuse = [&](StartNeed missing) {
    complaints.say(keyOfMissing(missing));
    return false;
  };
  // The toolkit would end the program in its own words. A second start shows nothing, so it needs no display.
  if (!GtkHostApplication::runs(identifier) && !gtk_init_check()) {
    refuse(StartNeed::display);
    return kExitCannotStart;
  }

  GtkHostApplication application(identifier, quitSignals);
  GtkToolkit toolkit(application, rendering);
  const ExecutableBundle bundle;
  application.setLicenseFile(bundle.resourcePath().value_or("") + "/licenses.txt");
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
    if (!line.withoutWebSandbox) {
      complaints.say(
          "quendo: o sistema não permite isolar a página em uma sandbox (não há namespaces de usuário); "
          "inicie com --without-web-sandbox para continuar sem ela.");
      return false;
    }
    g_setenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS", "1", TRUE);
    return true;
  });
  const int status = application.run(line.request);
  if (status == kExitStartAnew) return startAnew(argv);
  if (status != kExitSuccess && line.request.wantsStandardInput()) {
    complaints.say("quendo: o texto da entrada padrão não foi aberto");
  } else if (status == kExitNothingTaken) {
    complaints.say("quendo: nenhum dos arquivos foi aberto");
  }
  return status;
}
