#include "platform/gtk/panels/PortalSavePanel.h"

#include <glibmm/main.h>
#include <glibmm/miscutils.h>
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

// The criteria GTK itself uses to choose portal dialogs.
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

std::string PortalSavePanel::completeName(const std::string& path) const {
  return Glib::path_get_basename(configuration_.writtenPath(*this, path));
}

void PortalSavePanel::askAgain(const std::string& name) {
  const std::string selected = std::to_string(indexOfSelectedItem());
  // The dialog's own call is still on the stack.
  Glib::signal_idle().connect_once([self = self_, name, selected] {
    self->chooser_->set_current_name(name);
    if (self->configuration_.accessory) self->chooser_->set_choice(kExtensionChoice, selected);
    self->chooser_->show();
  });
}

void PortalSavePanel::didRespond(int response) {
  if (!self_) return;
  SavePanelResult result;
  if (response == static_cast<int>(Gtk::ResponseType::ACCEPT)) {
    const auto file = chooser_->get_file();
    result.confirmed = file != nullptr;
    const std::string path = file ? file->get_path() : "";
    if (!path.empty()) {
      const std::string name = completeName(path);
      if (name != Glib::path_get_basename(path)) {
        askAgain(name);
        return;
      }
      result.path = path;
    }
  }
  // The dialog's own call is still on the stack.
  Glib::signal_idle().connect_once([self = std::move(self_)] {});
  std::exchange(gone_, {})();
  std::exchange(completion_, {})(*this, result);
}

}  // namespace quendo::gtk
