#include "app/FatalErrors.h"

namespace quendo {

void FatalErrors::showFatalError(const std::string& message) {
  state_.fatalMode = true;
  state_.webReady = false;
  surface_.window = nullptr;
  stopEverythingElse_();
  if (state_.terminationUnattended) {
    application_.terminate();
    return;
  }
  Alert alert;
  alert.style = AlertStyle::critical;
  alert.messageText = localization_.tr("O Quendo não pôde iniciar");
  alert.informativeText = message;
  toolkit_.runModal(alert, lifetime_.guard([this](const AlertResult&) { application_.terminate(); }));
}

}  // namespace quendo
