#include "platform/gtk/panels/GtkSavePanel.h"

#include <glibmm/main.h>
#include <glibmm/miscutils.h>
#include <gtkmm/box.h>
#include <gtkmm/filefilter.h>
#include <gtkmm/label.h>

#include <utility>

#include "files/Path.h"
#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {
namespace {

constexpr int kAccept = static_cast<int>(Gtk::ResponseType::ACCEPT);
constexpr int kRowSpacing = 10;
constexpr int kRowInset = 8;
constexpr int kInset = 6;

/// Where the first panel opens; later ones open where the last one ended.
std::string& currentFolder() {
  static std::string folder;
  if (folder.empty()) folder = Glib::get_user_special_dir(Glib::UserDirectory::DOCUMENTS);
  if (folder.empty()) folder = Glib::get_home_dir();
  return folder;
}

}  // namespace

GtkSavePanel::GtkSavePanel(Gtk::Window& parent, SavePanelConfiguration configuration,
                           SavePanelCompletion completion)
    : dialog_(parent, configuration.title, Gtk::FileChooser::Action::SAVE),
      configuration_(std::move(configuration)),
      completion_(std::move(completion)) {
  dialog_.set_modal(true);
  dialog_.get_content_area()->set_margin(kInset);
  dialog_.add_button(configuration_.cancel, Gtk::ResponseType::CANCEL);
  dialog_.add_button(configuration_.prompt, Gtk::ResponseType::ACCEPT);
  dialog_.set_default_response(kAccept);
  dialog_.set_create_folders(configuration_.canCreateDirectories);
  dialog_.set_current_name(configuration_.nameFieldStringValue);
  if (!configuration_.allowsOtherFileTypes) addFilter();
  if (configuration_.accessory) addAccessory();
  dialog_.signal_response().connect([this](int response) { didRespond(response); });
}

void GtkSavePanel::addFilter() {
  auto filter = Gtk::FileFilter::create();
  const GCharPtr description(g_content_type_get_description(configuration_.allowedContentType.c_str()));
  filter->set_name(description.get());
  filter->add_mime_type(configuration_.allowedContentType);
  dialog_.add_filter(filter);
}

void GtkSavePanel::addAccessory() {
  const SavePanelConfiguration::Accessory& accessory = *configuration_.accessory;
  auto* row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, kRowSpacing);
  row->set_margin_top(kRowInset);
  row->set_margin_bottom(kRowInset);
  row->set_halign(Gtk::Align::CENTER);
  auto* label = Gtk::make_managed<Gtk::Label>(accessory.label);
  label->set_valign(Gtk::Align::CENTER);
  extensions_ = Gtk::make_managed<Gtk::DropDown>(
      std::vector<Glib::ustring>(accessory.items.begin(), accessory.items.end()));
  extensions_->set_selected(static_cast<guint>(accessory.selected));
  gtk_accessible_update_relation(GTK_ACCESSIBLE(extensions_->gobj()), GTK_ACCESSIBLE_RELATION_LABELLED_BY,
                                 GTK_ACCESSIBLE(label->gobj()), nullptr, -1);
  extensions_->property_selected().signal_changed().connect([this] {
    if (configuration_.accessory->didChange) configuration_.accessory->didChange(*this);
  });
  row->append(*label);
  row->append(*extensions_);
  dialog_.get_content_area()->append(*row);
}

void GtkSavePanel::show(std::function<void()> gone) {
  gone_ = std::move(gone);
  self_ = shared_from_this();
  dialog_.set_current_folder(Gio::File::create_for_path(currentFolder()));
  dialog_.present();
}

std::string GtkSavePanel::nameFieldStringValue() const {
  return dialog_.get_current_name();
}

void GtkSavePanel::setNameFieldStringValue(const std::string& name) {
  dialog_.set_current_name(name);
}

std::size_t GtkSavePanel::indexOfSelectedItem() const {
  return extensions_ ? extensions_->get_selected() : 0;
}

void GtkSavePanel::didRespond(int response) {
  const auto file = response == kAccept ? dialog_.get_file() : nullptr;
  if (!file || file->get_path().empty()) {
    finish(std::nullopt);
    return;
  }
  const std::string path = file->get_path();
  const std::string written = configuration_.pathToWrite ? configuration_.pathToWrite(*this, path) : path;
  if (written != path) {
    // Confirmed once more under its whole name, so that the dialog asks before it replaces that file.
    dialog_.set_current_name(std::string(lastPathComponent(written)));
    dialog_.response(kAccept);
    return;
  }
  currentFolder() = Glib::path_get_dirname(path);
  finish(path);
}

void GtkSavePanel::finish(const std::optional<std::string>& path) {
  if (!self_) return;
  dialog_.hide();
  // The dialog's own call is still on the stack.
  Glib::signal_idle().connect_once([self = std::move(self_)] {});
  std::exchange(gone_, {})();
  std::exchange(completion_, {})(*this, path);
}

}  // namespace quendo::gtk
