#pragma once

#include <gtkmm/window.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Window.h"

namespace quendo::gtk {

/// Shows an alert modal to `parent`, which may be null. Its texts may have any length: long ones scroll.
/// `completion` is called once, after the alert is gone from the screen.
std::shared_ptr<PresentedAlert> showAlert(Gtk::Window* parent, const Alert& alert,
                                          std::function<void(AlertResult)> completion);

/// An alert that is shown when its turn comes. Dismissed before that, it is never shown. While it is shown,
/// it keeps itself alive.
class AlertSheet final : public PresentedAlert, public std::enable_shared_from_this<AlertSheet> {
 public:
  AlertSheet(Alert alert, std::function<void(AlertResult)> completion)
      : alert_(std::move(alert)), completion_(std::move(completion)) {}
  /// Calls `gone` once, when the sheet has left the screen.
  void show(Gtk::Window& parent, std::function<void()> gone);
  void dismiss() override;

 private:
  Alert alert_;
  std::function<void(AlertResult)> completion_;
  std::shared_ptr<PresentedAlert> shown_;
  bool ended_ = false;
};

/// Shows the desktop's own panel for opening files, modal to `parent`.
void showOpenPanel(Gtk::Window& parent, const OpenPanel& panel,
                   std::function<void(std::optional<std::vector<std::string>>)> completion);

}  // namespace quendo::gtk
