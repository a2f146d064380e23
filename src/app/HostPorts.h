#pragma once

#include "platform/Application.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/ContentTypes.h"
#include "platform/DocumentFiles.h"
#include "platform/FileManager.h"
#include "platform/HttpSession.h"
#include "platform/Locale.h"
#include "platform/MainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/SerialQueue.h"
#include "platform/Toolkit.h"
#include "platform/UserDefaults.h"
#include "platform/UuidSource.h"
#include "platform/Workspace.h"

namespace quendo {

/// The platform ports the host uses. All must outlive it.
struct HostPorts {
  Application& application;
  Toolkit& toolkit;
  const Bundle& bundle;
  const Locale& locale;
  UserDefaults& defaults;
  FileManager& fileManager;
  DocumentFiles& documentFiles;
  SerialQueue& storeQueue;
  MainQueue& mainQueue;
  Pasteboard& pasteboard;
  Workspace& workspace;
  UuidSource& uuids;
  const ContentTypes& contentTypes;
  const Clock& clock;
  HttpSession& httpSession;
  bool persistenceTestMode = false;
};

}  // namespace quendo
