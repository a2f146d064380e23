#include "app/NotesLock.h"

#include <chrono>
#include <utility>

namespace quendo {
namespace {

using namespace std::chrono_literals;

// No alert flashes up for a program that is just ending.
constexpr std::chrono::milliseconds kPause = 250ms;

}  // namespace

void NotesLock::acquire(std::function<void()> then) {
  state_.notesLockedElsewhere = !store_.lockDirectory();
  if (state_.notesLockedElsewhere) {
    tryAgain(std::move(then));
  } else {
    then();
  }
}

void NotesLock::tryAgain(std::function<void()> then) {
  mainQueue_.asyncAfter(kPause, lifetime_.guard([this, then = std::move(then)] {
    state_.notesLockedElsewhere = !store_.lockDirectory();
    if (state_.notesLockedElsewhere) {
      if (!alert_) showAlert();
      tryAgain(then);
      return;
    }
    if (const auto alert = std::exchange(alert_, nullptr)) alert->dismiss();
    then();
  }));
}

void NotesLock::showAlert() {
  Alert alert;
  alert.style = AlertStyle::informational;
  alert.messageText = localization_.tr("O Quendo está aberto em outra sessão");
  alert.informativeText = localization_.tr("Feche-o lá. Suas notas serão abertas aqui em seguida.");
  alert.buttons = {localization_.tr("Sair do Quendo")};
  // Once the notes are open it is this class that takes the alert away.
  alert_ = toolkit_.runModal(alert, lifetime_.guard([this](const AlertResult&) {
    if (state_.notesLockedElsewhere) application_.terminate();
  }));
}

}  // namespace quendo
