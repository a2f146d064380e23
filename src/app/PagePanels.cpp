#include "app/PagePanels.h"

#include <utility>

namespace quendo {

void PagePanels::runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                                   std::function<void(std::optional<std::string>)> completion) {
  const auto show = [this, prompt, defaultText, completion] {
    Alert alert;
    alert.messageText = prompt;
    alert.buttons = {"OK", localization_.tr("Cancelar")};
    alert.accessory = Alert::TextField{defaultText, 320, 24};
    shownPrompt_ = surface_.window->beginSheet(alert, lifetime_.guard([this, completion](AlertResult result) {
      shownPrompt_.reset();
      finish([&] { completion(result.button == 0 ? std::optional(std::move(result.text)) : std::nullopt); });
    }));
  };
  add({show, [completion] { completion(std::nullopt); }});
}

void PagePanels::dismissTextInputPanels() {
  refuseWaiting();
  if (const auto prompt = shownPrompt_) prompt->dismiss();
}

// Multiple selection is always allowed, whatever the page's input asks for; the page validates the contents.
void PagePanels::runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion) {
  const auto show = [this, completion] {
    OpenPanel panel;
    panel.title = localization_.tr("Abrir arquivos de texto no Quendo");
    panel.prompt = localization_.tr("Abrir");
    panel.startingFolder = workspace_.homeDirectory();
    panel.allowsMultipleSelection = true;
    panel.canChooseDirectories = false;
    surface_.window->beginSheet(
        panel, lifetime_.guard([this, completion](std::optional<std::vector<std::string>> paths) {
          finish([&] { completion(std::move(paths)); });
        }));
  };
  add({show, [completion] { completion(std::nullopt); }});
}

void PagePanels::refuseWaiting() {
  for (const Request& request : std::exchange(waiting_, {})) request.refuse();
}

void PagePanels::add(Request request) {
  if (!canAsk() || waiting_.size() >= kMaximumWaiting) {
    request.refuse();
    return;
  }
  waiting_.push_back(std::move(request));
  if (!showing_) showNext();
}

void PagePanels::finish(const std::function<void()>& answer) {
  answer();
  showing_ = false;
  if (!canAsk()) refuseWaiting();
  showNext();
}

void PagePanels::showNext() {
  if (waiting_.empty()) return;
  showing_ = true;
  const Request request = std::move(waiting_.front());
  waiting_.pop_front();
  request.show();
}

}  // namespace quendo
