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

/// Files the desktop asked the host to open: read at once, queued, and delivered to the page in one call that
/// opens them as tabs. A file that was read is never dropped: it stays queued while the page is not ready, is
/// reloading or could not accept it. Main thread.
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

  /// Reads each file once and queues those that could be read. True if at least one was queued.
  bool enqueueOpenedFiles(const std::vector<std::string>& urls);
  /// Delivers the queue if the page can accept it now.
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
