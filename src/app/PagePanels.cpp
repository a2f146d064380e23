#include "app/PagePanels.h"

#include <utility>

namespace quendo {

void PagePanels::runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                                   std::function<void(std::optional<std::string>)> completion) {
  if (!canAsk()) {
    completion(std::nullopt);
    return;
  }
  Alert alert;
  alert.messageText = prompt;
  alert.buttons = {"OK", localization_.tr("Cancelar")};
  alert.accessory = Alert::TextField{defaultText, 320, 24};
  const int number = ++lastPanel_;
  auto forget = lifetime_.guard([this, number] { textInputPanels_.erase(number); });
  textInputPanels_[number] = surface_.window->beginSheet(
      alert, [completion = std::move(completion), forget](AlertResult result) mutable {
        forget();
        completion(result.button == 0 ? std::optional(std::move(result.text)) : std::nullopt);
      });
}

void PagePanels::dismissTextInputPanels() {
  for (const auto& [number, panel] : std::exchange(textInputPanels_, {})) panel->dismiss();
}

// Several files may always be chosen, whatever the page's input asks for; the page judges the contents.
void PagePanels::runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion) {
  if (!canAsk()) {
    completion(std::nullopt);
    return;
  }
  OpenPanel panel;
  panel.title = localization_.tr("Abrir arquivos de texto no Quendo");
  panel.prompt = localization_.tr("Abrir");
  panel.allowsMultipleSelection = true;
  panel.canChooseDirectories = false;
  surface_.window->beginSheet(panel, std::move(completion));
}

}  // namespace quendo
