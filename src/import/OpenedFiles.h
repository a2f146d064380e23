#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "bridge/HostState.h"
#include "bridge/PageCalls.h"
#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "import/QuendoTextFileReader.h"
#include "platform/Application.h"
#include "platform/DocumentFiles.h"
#include "platform/Lifetime.h"
#include "platform/Window.h"

namespace quendo {

/// Files that the desktop handed over: read at once, kept until the page can take them, and handed to it
/// in one call that opens them as tabs. A file that was read is never dropped: it waits for a page that
/// is not ready, is being reloaded, or could not take it. Main thread.
class OpenedFiles {
 public:
  OpenedFiles(const HostState& state, const Localization& localization, const Surface& surface,
              DocumentFiles& files, PageCalls& pageCalls, Application& application)
      : state_(state),
        localization_(localization),
        surface_(surface),
        files_(files),
        pageCalls_(pageCalls),
        application_(application) {}

  /// Reads each file once and queues what could be read. True when at least one file was queued.
  bool enqueueOpenedFiles(const std::vector<std::string>& urls);
  /// Hands the queue to the page if the page can take it now.
  void deliverPendingFileImports();

 private:
  using Files = std::vector<QuendoImportedTextFile>;

  std::size_t readIntoQueue(const std::vector<std::string>& urls);
  void deliveryDidFinish(Files files, bool success);
  void presentPendingFileOpenFailures();

  const HostState& state_;
  const Localization& localization_;
  const Surface& surface_;
  DocumentFiles& files_;
  PageCalls& pageCalls_;
  Application& application_;

  Files pendingImportedFiles_;
  std::vector<std::string> pendingFileOpenFailures_;
  bool nativeImportDeliveryInFlight_ = false;
  Lifetime lifetime_;
};

}  // namespace quendo
