#include "app/TerminationHandshake.h"

#include <chrono>
#include <utility>

#include "bridge/MessageFields.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kPageReplyLimit = 5s;
constexpr std::chrono::milliseconds kDiskWriteLimit = 15s;

// Shown in Portuguese whatever the interface language.
constexpr std::string_view kPageTooSlow =
    "O editor não respondeu a tempo. O Quendo permaneceu aberto para não perder seu texto.";
constexpr std::string_view kPageFailed =
    "Não foi possível preparar o rascunho para gravação. Nada foi fechado.";
constexpr std::string_view kStoreFailed =
    "Não foi possível gravar o rascunho no disco. Libere espaço e tente novamente.";
constexpr std::string_view kStoreTooSlow =
    "A gravação no disco demorou demais. O Quendo permaneceu aberto para não perder seu texto.";

// How long an unattended quit waits for a page that is loading, and how often it starts over with another.
constexpr std::chrono::milliseconds kPageLoadLimit = 15s;
constexpr int kMostPagesLost = 3;

// Leaves the page time to answer even while a key is held.
constexpr std::chrono::milliseconds kQueuedKeysLimit = 3s;

}  // namespace

TerminationReply TerminationHandshake::applicationShouldTerminate(TerminationReason reason) {
  if (state_.fatalMode || state_.notesLockedElsewhere) return TerminationReply::now;
  const bool unattended = reason != TerminationReason::user;
  if (state_.terminationPending) {
    if (unattended) quitIsUnattended();
    return TerminationReply::later;
  }
  state_.terminationPending = true;
  pagesLost_ = 0;
  application_.updateMainMenu();
  // What it says is about to be tried again.
  if (const auto alert = std::exchange(cancelAlert_, nullptr)) alert->dismiss();
  if (unattended) quitIsUnattended();
  if (unattended && !state_.webReady && surface_.webView) {
    awaitPage();
  } else {
    askPage();
  }
  return TerminationReply::later;
}

// A page that waits for the answer to its `prompt()` runs no script, and would never reply.
void TerminationHandshake::quitIsUnattended() {
  state_.terminationUnattended = true;
  panels_.dismissTextInputPanels();
}

void TerminationHandshake::pageDidFinishLoading() {
  if (state_.terminationPending && phase_ == Phase::awaitingPage) askPage();
}

void TerminationHandshake::pageWasLost() {
  const bool waits = state_.terminationPending && phase_ != Phase::writing;
  if (waits && state_.terminationUnattended && ++pagesLost_ <= kMostPagesLost) awaitPage();
}

// A page that never finishes loading may all the same be there, and have text in it: it is asked in the end.
void TerminationHandshake::awaitPage() {
  disarmTimeout();
  phase_ = Phase::awaitingPage;
  terminationAttempt_ = uuids_.randomUuid();
  armTimeout(kPageLoadLimit, [this] { askPage(); });
}

void TerminationHandshake::askPage() {
  disarmTimeout();
  phase_ = Phase::askingPage;
  const Attempt attempt = uuids_.randomUuid();
  terminationAttempt_ = attempt;
  armCancel(kPageReplyLimit, attempt, kPageTooSlow);
  // Without a web view nobody replies, and the time-out cancels the attempt.
  pageCalls_.afterQueuedKeys(kQueuedKeysLimit, lifetime_.guard([this, attempt] {
    // An attempt that is over must not put the page into its closing state any more.
    if (!isCurrent(attempt)) return;
    openedFiles_.deliverBeforeQuit(lifetime_.guard([this, attempt] {
      if (!isCurrent(attempt)) return;
      pageCalls_.prepareForTermination(lifetime_.guard(
          [this, attempt](EvaluationResult reply) { pageDidReply(attempt, std::move(reply)); }));
    }));
  }));
}

void TerminationHandshake::pageDidReply(const Attempt& attempt, EvaluationResult reply) {
  if (!isCurrent(attempt) || phase_ != Phase::askingPage) return;
  std::string* serialized = reply.error ? nullptr : stringField(reply.value, "serialized");
  if (!serialized) {
    cancelTermination(attempt, kPageFailed);
    return;
  }
  disarmTimeout();
  phase_ = Phase::writing;
  armCancel(kDiskWriteLimit, attempt, kStoreTooSlow);
  const std::int64_t revision = integerField(reply.value, "revision");
  store_.save(std::move(*serialized), revision, lifetime_.guard([this, attempt](bool success) {
    if (success) {
      finishTermination(attempt);
    } else {
      cancelTermination(attempt, kStoreFailed);
    }
  }));
}

void TerminationHandshake::finishTermination(const Attempt& attempt) {
  if (!mayReply(attempt)) return;
  disarmTimeout();
  terminationReplySent_ = true;
  application_.replyToApplicationShouldTerminate(true);
}

void TerminationHandshake::cancelTermination(const Attempt& attempt, std::string_view message) {
  if (!mayReply(attempt)) return;
  disarmTimeout();
  terminationReplySent_ = true;
  application_.replyToApplicationShouldTerminate(false);
  state_.terminationPending = false;
  state_.terminationUnattended = false;
  terminationReplySent_ = false;
  terminationAttempt_.reset();
  application_.updateMainMenu();
  pageCalls_.terminationDidCancel();
  if (surface_.window) surface_.window->makeKeyAndOrderFront();
  openedFiles_.deliverPendingFileImports();
  showCancelAlert(message);
}

bool TerminationHandshake::windowShouldClose() {
  if (!state_.terminationPending) application_.terminate();
  return false;
}

bool TerminationHandshake::isCurrent(const Attempt& attempt) const {
  return state_.terminationPending && terminationAttempt_ == attempt;
}

// After a fatal error the alert that says so ends the program; until then nothing is shown beside it.
bool TerminationHandshake::mayReply(const Attempt& attempt) const {
  return isCurrent(attempt) && !terminationReplySent_ && !state_.fatalMode;
}

void TerminationHandshake::armTimeout(std::chrono::milliseconds delay, std::function<void()> expired) {
  terminationTimeout_ = mainQueue_.asyncAfter(delay, lifetime_.guard(std::move(expired)));
}

void TerminationHandshake::armCancel(std::chrono::milliseconds delay, const Attempt& attempt,
                                     std::string_view message) {
  armTimeout(delay, [this, attempt, message] { cancelTermination(attempt, message); });
}

void TerminationHandshake::disarmTimeout() {
  if (terminationTimeout_) terminationTimeout_->cancel();
}

void TerminationHandshake::showCancelAlert(std::string_view message) {
  if (!surface_.window) return;
  Alert alert;
  alert.style = AlertStyle::warning;
  alert.messageText = localization_.tr("O Quendo não fechou");
  alert.informativeText = message;
  alert.buttons = {localization_.tr("Continuar editando")};
  cancelAlert_ = surface_.window->beginSheet(alert, {});
}

}  // namespace quendo
