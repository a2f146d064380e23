#pragma once

#include <gtkmm/window.h>

#include <functional>

#include "platform/Window.h"

namespace quendo::gtk {

/// Shows an alert modal to `parent`, which may be null. Its texts may have any length: long ones scroll.
/// `completion` is called once, after the alert is gone from the screen.
void showAlert(Gtk::Window* parent, const Alert& alert, std::function<void(AlertResult)> completion);

/// Shows the desktop's own panel for opening files, modal to `parent`.
void showOpenPanel(Gtk::Window& parent, const OpenPanel& panel,
                   std::function<void(std::optional<std::vector<std::string>>)> completion);

}  // namespace quendo::gtk
