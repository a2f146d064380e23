#pragma once

#import "FoundationDoubles.h"
#import "Stage.h"

#include <memory>

#include "app/HostPorts.h"
#include "fake/FakeFacilities.h"
#import "platform/cocoa/application/CocoaApplication.h"
#import "platform/cocoa/application/CocoaToolkit.h"
#import "platform/cocoa/application/DispatchMainQueue.h"
#import "platform/cocoa/application/DispatchSerialQueue.h"
#import "platform/cocoa/application/FoundationDefaults.h"
#import "platform/cocoa/application/GeneralPasteboard.h"
#import "platform/cocoa/application/MainBundle.h"
#import "platform/cocoa/application/QuitSignals.h"
#import "platform/cocoa/application/SecurityScopedFiles.h"
#import "platform/cocoa/application/SharedWorkspace.h"
#import "platform/cocoa/application/UniformContentTypes.h"
#import "platform/cocoa/application/UrlSession.h"

namespace quendo::fake {

/// The macOS back-end between the core and the same facilities that the tests of the core use. Files, the
/// locale, the clock and identifiers have no back-end in between.
struct FakePlatform : FakeFacilities {
  HostPorts ports() {
    if (!backEnd) backEnd = std::make_unique<BackEnd>(*this);
    return HostPorts{backEnd->application,  backEnd->toolkit,
                     backEnd->bundle,       locale,
                     backEnd->defaults,     files,
                     backEnd->documents,    backEnd->storeQueue,
                     backEnd->mainQueue,    backEnd->pasteboard,
                     backEnd->workspace,    uuids,
                     backEnd->contentTypes, clock,
                     backEnd->httpSession,  persistenceTestMode};
  }

  struct BackEnd {
    explicit BackEnd(FakeFacilities& facilities) : documents(facilities.documents) {}

    cocoa::CocoaApplication application{NSApplication.sharedApplication};
    cocoa::CocoaToolkit toolkit{application};
    cocoa::MainBundle bundle{[[FakedBundle alloc] init]};
    cocoa::FoundationDefaults defaults{[[FakedDefaults alloc] init]};
    cocoa::SecurityScopedFiles documents;
    cocoa::DispatchSerialQueue storeQueue{"com.quendo.penwick.state"};
    cocoa::DispatchMainQueue mainQueue;
    cocoa::GeneralPasteboard pasteboard{NSPasteboard.generalPasteboard};
    cocoa::SharedWorkspace workspace{NSWorkspace.sharedWorkspace};
    cocoa::UniformContentTypes contentTypes;
    cocoa::UrlSession httpSession;
    cocoa::QuitSignals quitSignals{[this] { application.terminateFor(TerminationReason::signal); }};
  };

  doubles::InUse inUse{*this};
  std::unique_ptr<BackEnd> backEnd;
};

}  // namespace quendo::fake
