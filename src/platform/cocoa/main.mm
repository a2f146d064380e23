#include <cstdlib>
#include <memory>

#include "app/AppController.h"
#import "platform/cocoa/application/CocoaApplication.h"
#import "platform/cocoa/application/CocoaToolkit.h"
#import "platform/cocoa/application/DispatchMainQueue.h"
#import "platform/cocoa/application/DispatchSerialQueue.h"
#import "platform/cocoa/application/FoundationDefaults.h"
#import "platform/cocoa/application/FoundationFileManager.h"
#import "platform/cocoa/application/FoundationLocale.h"
#import "platform/cocoa/application/FoundationUuidSource.h"
#import "platform/cocoa/application/GeneralPasteboard.h"
#import "platform/cocoa/application/MainBundle.h"
#import "platform/cocoa/application/QuitSignals.h"
#import "platform/cocoa/application/SecurityScopedFiles.h"
#import "platform/cocoa/application/SharedWorkspace.h"
#import "platform/cocoa/application/UniformContentTypes.h"
#import "platform/cocoa/application/UrlSession.h"
#include "platform/posix/PosixDocumentFiles.h"
#include "platform/posix/SystemClock.h"
#include "store/StateStore.h"

int main() {
  using namespace quendo;
  using namespace quendo::cocoa;
  @autoreleasepool {
    CocoaApplication application(NSApplication.sharedApplication);
    CocoaToolkit toolkit(application);
    const MainBundle bundle(NSBundle.mainBundle);
    const FoundationLocale locale;
    FoundationDefaults defaults(NSUserDefaults.standardUserDefaults);
    FoundationFileManager fileManager;
    const PosixDocumentFiles plainFiles;
    SecurityScopedFiles documentFiles(plainFiles);
    DispatchSerialQueue storeQueue("com.quendo.penwick.state");
    DispatchMainQueue mainQueue;
    GeneralPasteboard pasteboard(NSPasteboard.generalPasteboard);
    SharedWorkspace workspace(NSWorkspace.sharedWorkspace);
    FoundationUuidSource uuids;
    const UniformContentTypes contentTypes;
    const SystemClock clock;
    UrlSession httpSession;

    application.setActivationPolicyRegular();
    auto controller = std::make_unique<AppController>(
        HostPorts{application, toolkit, bundle, locale, defaults, fileManager, documentFiles, storeQueue,
                  mainQueue, pasteboard, workspace, uuids, contentTypes, clock, httpSession,
                  persistenceTestModeFromEnvironmentValue(std::getenv("QUENDO_PERSISTENCE_TEST"))});
    application.setDelegate(controller.get());
    // The process ends inside the event loop, where nothing of this is destroyed.
    application.setWillTerminate([&] { controller.reset(); });
    const QuitSignals quitSignals([&] { application.terminateFor(TerminationReason::signal); });
    application.run();
  }
}
