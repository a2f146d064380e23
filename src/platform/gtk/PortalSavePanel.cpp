#include "platform/gtk/PortalSavePanel.h"

#include <glibmm/main.h>
#include <gtkmm/dialog.h>

#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace quendo::gtk {
namespace {

constexpr const char* kExtensionChoice = "extension";

}  // namespace

// The same signs by which the toolkit decides whether its dialogs are the portal's.
bool onlyPortalReachesFiles() {
  const char* wanted = std::getenv("GDK_DEBUG");
  std::error_code error;
  return (wanted && std::string_view(wanted).find("portals") != std::string_view::npos) ||
         std::filesystem::exists("/.flatpak-info", error);
}

PortalSavePanel::PortalSavePanel(Gtk::Window& parent, SavePanelConfiguration configuration,
                                 SavePanelCompletion completion)
    : configuration_(std::move(configuration)),
      completion_(std::move(completion)),
      chooser_(Gtk::FileChooserNative::create(configuration_.title, parent, Gtk::FileChooser::Action::SAVE,
                                              configuration_.prompt, configuration_.cancel)) {
  chooser_->set_modal(true);
  chooser_->set_create_folders(configuration_.canCreateDirectories);
  chooser_->set_current_name(configuration_.nameFieldStringValue);
  if (configuration_.accessory) {
    std::vector<Glib::ustring> indices;
    for (std::size_t i = 0; i < configuration_.accessory->items.size(); ++i)
      indices.emplace_back(std::to_string(i));
    chooser_->add_choice(kExtensionChoice, configuration_.accessory->label, indices,
                         {configuration_.accessory->items.begin(), configuration_.accessory->items.end()});
    chooser_->set_choice(kExtensionChoice, std::to_string(configuration_.accessory->selected));
  }
  chooser_->signal_response().connect([this](int response) { didRespond(response); });
}

void PortalSavePanel::show(std::function<void()> gone) {
  gone_ = std::move(gone);
  self_ = shared_from_this();
  chooser_->show();
}

std::size_t PortalSavePanel::indexOfSelectedItem() const {
  if (!configuration_.accessory) return 0;
  const std::string choice = chooser_->get_choice(kExtensionChoice);
  std::size_t index = configuration_.accessory->selected;
  std::from_chars(choice.data(), choice.data() + choice.size(), index);
  return index;
}

void PortalSavePanel::didRespond(int response) {
  if (!self_) return;
  std::optional<std::string> path;
  const bool confirmed = response == static_cast<int>(Gtk::ResponseType::ACCEPT);
  const auto file = confirmed ? chooser_->get_file() : nullptr;
  if (file && !file->get_path().empty()) {
    path = file->get_path();
    if (configuration_.pathToWrite) path = configuration_.pathToWrite(*this, *path);
  }
  // The dialog's own call is still on the stack.
  Glib::signal_idle().connect_once([self = std::move(self_)] {});
  std::exchange(gone_, {})();
  std::exchange(completion_, {})(*this, path);
}

}  // namespace quendo::gtk
