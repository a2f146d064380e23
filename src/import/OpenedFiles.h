#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
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

/// What became of what a start gave, which is known once the page has it.
struct TakenOfStart {
  bool any = false;
  bool standardInputRefused = false;  ///< Its text is in no note.
};

/// Files the desktop asked the host to open: read at once, queued, and delivered to the page in one call that
/// opens them as tabs. A file that was read is never dropped: it stays queued while the page is not ready, is
/// reloading or could not accept it. So does the text of standard input, which is a file that nothing else
/// keeps: a quit waits for it. The new notes that a start asks for follow the files. Main thread.
class OpenedFiles {
 public:
  /// `createNote` performs the menu's command, for a page that is ready.
  OpenedFiles(const HostState& state, const Localization& localization, const Surface& surface,
              DocumentFiles& files, PageCalls& pageCalls, Application& application,
              std::function<void()> createNote)
      : state_(state),
        localization_(localization),
        surface_(surface),
        files_(files),
        pageCalls_(pageCalls),
        application_(application),
        createNote_(std::move(createNote)) {}

  /// Reads each file once and queues those that could be read. True if at least one was queued.
  bool enqueueOpenedFiles(const std::vector<std::string>& urls);
  /// The same for all that a start asks for. `answer` is called at once for mere files, which can be given
  /// again; for everything else, and while a quit is pending, once the page has it.
  void enqueueStart(const StartRequest& request, std::function<void(const TakenOfStart&)> answer);
  /// Delivers the queue if the page can accept it now.
  void deliverPendingFileImports();
  /// Delivers what nothing else keeps, so that the page's final state has it. `then` is called once the page
  /// has answered; at once if there is no such text, or no page for it.
  void deliverBeforeQuit(std::function<void()> then);

 private:
  /// A start that may have to be answered yet.
  struct Start {
    std::function<void(const TakenOfStart&)> answer;  ///< Empty if nobody waits.
    TakenOfStart taken;
    int missing = 1;  ///< What the page has not got yet, and the reading itself.

    void settleOne() {
      if (--missing == 0 && answer) answer(taken);
    }
  };
  using StartPtr = std::shared_ptr<Start>;
  struct QueuedFile {
    QuendoImportedTextFile file;
    StartPtr start;
    bool isStandardInput = false;
  };
  using Files = std::vector<QueuedFile>;

  void readIntoQueue(const StartRequest& request, const StartPtr& start);
  QuendoTextFileReader::Result read(const StartRequest& request, const std::string& url) const;
  void showAndDeliver();
  void deliver(Files files, std::function<void()> then);
  void deliveryDidFinish(Files files, const EvaluationResult& result);
  void openNewNotes();
  void presentPendingFileOpenFailures();

  const HostState& state_;
  const Localization& localization_;
  const Surface& surface_;
  DocumentFiles& files_;
  PageCalls& pageCalls_;
  Application& application_;
  const std::function<void()> createNote_;

  Files pendingImportedFiles_;
  std::vector<StartPtr> pendingNewNotes_;
  std::vector<std::string> pendingFileOpenFailures_;
  bool nativeImportDeliveryInFlight_ = false;
  Lifetime lifetime_;
};

}  // namespace quendo
