#pragma once

#include "app/HostPorts.h"
#include "fake/FakeFacilities.h"

namespace quendo::fake {

/// The facilities themselves as a platform.
struct FakePlatform : FakeFacilities {
  HostPorts ports() {
    return HostPorts{
        application, toolkit,    bundle,    locale, defaults,     files, documents,   storeQueue,
        mainQueue,   pasteboard, workspace, uuids,  contentTypes, clock, httpSession, persistenceTestMode};
  }
};

}  // namespace quendo::fake
