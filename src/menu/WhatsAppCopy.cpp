#include "menu/WhatsAppCopy.h"

namespace quendo {

// A call that completes needs no reaction, whatever it returns: the page has already informed the user.
void WhatsAppCopy::copyForWhatsApp() {
  if (!state_.webReady || state_.terminationPending || state_.fatalMode) {
    application_.beep();
    return;
  }
  pageCalls_.copyCurrentNoteForWhatsApp(lifetime_.guard([this](const EvaluationResult& result) {
    if (result.error) pageCalls_.showToast(localization_.tr("Não foi possível copiar para o WhatsApp"));
  }));
}

}  // namespace quendo
