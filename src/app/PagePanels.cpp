#include "app/PagePanels.h"

#include <utility>

namespace quendo {

void PagePanels::runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                                   std::function<void(std::optional<std::string>)> completion) {
  Alert alert;
  alert.messageText = prompt;
  alert.buttons = {"OK", localization_.tr("Cancelar")};
  alert.accessory = Alert::TextField{defaultText, 320, 24};
  surface_.window->beginSheet(alert, [completion = std::move(completion)](AlertResult result) {
    completion(result.button == 0 ? std::optional(std::move(result.text)) : std::nullopt);
  });
}

// Several files may always be chosen, whatever the page's input asks for; the page judges the contents.
void PagePanels::runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion) {
  OpenPanel panel;
  panel.title = localization_.tr("Abrir arquivos de texto no Quendo");
  panel.prompt = localization_.tr("Abrir");
  panel.allowsMultipleSelection = true;
  panel.canChooseDirectories = false;
  surface_.window->beginSheet(panel, std::move(completion));
}

}  // namespace quendo
