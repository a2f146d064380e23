#include "platform/gtk/panels/GtkSavePanel.h"

#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <glibmm/miscutils.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/filefilter.h>
#include <gtkmm/label.h>

#include <optional>
#include <utility>

#include "platform/gtk/GObjectPtr.h"
#include "text/Utf8.h"

namespace quendo::gtk {
namespace {

constexpr int kAccept = static_cast<int>(Gtk::ResponseType::ACCEPT);
constexpr int kInset = 6;

/// Names that GTK, and a user who types them, treats as a folder.
bool isFolderShortcut(const std::string& name) {
  return name == "." || name == ".." || name == "~";
}

/// Whether GTK reads a name without a slash as a folder: "~notes" would be somebody's home directory.
bool isReadAsFolder(const std::string& name) {
  return isFolderShortcut(name) || name.starts_with('~');
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
  auto* confirm = Gtk::make_managed<Gtk::Button>(configuration_.prompt);
  // Runs before the dialog's own handler: the dialog then validates, and asks about, the file that is
  // actually written.
  confirm->signal_clicked().connect([this] { completeName(); }, false);
  dialog_.add_action_widget(*confirm, Gtk::ResponseType::ACCEPT);
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
  using Accessory = SavePanelConfiguration::Accessory;
  const Accessory& accessory = *configuration_.accessory;
  auto* row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, Accessory::kSpacing);
  row->set_margin_top(Accessory::kVerticalInset);
  row->set_margin_bottom(Accessory::kVerticalInset);
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
  const std::string folder = configuration_.startingFolder ? configuration_.startingFolder() : std::string();
  if (!folder.empty()) dialog_.set_current_folder(Gio::File::create_for_path(folder));
  dialog_.present();
}

std::string GtkSavePanel::nameFieldStringValue() const {
  return dialog_.get_current_name();
}

void GtkSavePanel::setNameFieldStringValue(const std::string& name) {
  configuration_.nameFieldStringValue = name;
  dialog_.set_current_name(name);
}

std::size_t GtkSavePanel::indexOfSelectedItem() const {
  return extensions_ ? extensions_->get_selected() : 0;
}

bool GtkSavePanel::completeName() {
  const std::string typed = dialog_.get_current_name();
  const auto shown = dialog_.get_current_folder();
  const std::string folder = shown ? shown->get_path() : "";
  const bool literal = !folder.empty() && isReadAsFolder(typed) && typed.find('/') == std::string::npos &&
                       (!isFolderShortcut(typed) || typed == configuration_.nameFieldStringValue);
  std::string path;
  if (literal) {
    path = Glib::build_filename(folder, typed);
  } else if (const auto file = dialog_.get_file()) {
    path = file->get_path();
  }
  // The dialog reports invalid names itself, and opens folders.
  if (path.empty() || (!literal && Glib::file_test(path, Glib::FileTest::IS_DIR))) return false;
  const std::string written = configuration_.writtenPath(*this, path);
  if (!literal && written == path) return false;
  std::string location = Glib::path_get_basename(written);
  if (Glib::path_get_dirname(written) != folder) {
    location = written;
  } else if (isReadAsFolder(location)) {
    location.insert(0, "./");
  }
  // A folder name that is not UTF-8 cannot be typed: keep the user's choice.
  if (!isValidUtf8(location)) return false;
  enterLocation(location);
  return true;
}

void GtkSavePanel::enterLocation(const std::string& location) {
  for (GtkWidget* child = gtk_widget_get_first_child(GTK_WIDGET(dialog_.get_content_area()->gobj())); child;
       child = gtk_widget_get_next_sibling(child)) {
    // Uses the chooser's key binding for typing a location, because the name field counts only while it has
    // the focus, or had it last.
    if (GTK_IS_FILE_CHOOSER_WIDGET(child)) g_signal_emit_by_name(child, "location-popup", location.c_str());
  }
}

void GtkSavePanel::didRespond(int response) {
  const bool confirmed = response == kAccept;
  const auto file = confirmed ? dialog_.get_file() : nullptr;
  if (!file) {
    finish({});
  } else if (completeName()) {
    // Typed while the dialog was checking the previous file.
    dialog_.response(kAccept);
  } else {
    const std::string path = file->get_path();
    finish({.confirmed = true, .path = path.empty() ? std::nullopt : std::optional(path)});
  }
}

void GtkSavePanel::finish(const SavePanelResult& result) {
  if (!self_) return;
  dialog_.hide();
  // The dialog's own call is still on the stack.
  Glib::signal_idle().connect_once([self = std::move(self_)] {});
  std::exchange(gone_, {})();
  std::exchange(completion_, {})(*this, result);
}

}  // namespace quendo::gtk
