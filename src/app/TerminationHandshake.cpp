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

}  // namespace

TerminationReply TerminationHandshake::applicationShouldTerminate() {
  if (state_.fatalMode) return TerminationReply::now;
  if (state_.terminationPending) return TerminationReply::later;
  state_.terminationPending = true;
  const Attempt attempt = uuids_.randomUuid();
  terminationAttempt_ = attempt;
  application_.updateMainMenu();
  armTimeout(kPageReplyLimit, attempt, kPageTooSlow);
  // Without a web view nobody replies, and the time-out cancels the attempt.
  pageCalls_.prepareForTermination(
      lifetime_.guard([this, attempt](EvaluationResult reply) { pageDidReply(attempt, std::move(reply)); }));
  return TerminationReply::later;
}

void TerminationHandshake::pageDidReply(const Attempt& attempt, EvaluationResult reply) {
  if (!isCurrent(attempt)) return;
  std::string* serialized = reply.error ? nullptr : stringField(reply.value, "serialized");
  if (!serialized) {
    cancelTermination(attempt, kPageFailed);
    return;
  }
  disarmTimeout();
  armTimeout(kDiskWriteLimit, attempt, kStoreTooSlow);
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

void TerminationHandshake::armTimeout(std::chrono::milliseconds delay, const Attempt& attempt,
                                      std::string_view message) {
  terminationTimeout_ = mainQueue_.asyncAfter(
      delay, lifetime_.guard([this, attempt, message] { cancelTermination(attempt, message); }));
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
  surface_.window->beginSheet(alert, {});
}

}  // namespace quendo
