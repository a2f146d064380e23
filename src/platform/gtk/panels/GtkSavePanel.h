#pragma once

#include <gtkmm/dropdown.h>
#include <gtkmm/filechooserdialog.h>

#include <functional>
#include <memory>

#include "platform/SavePanel.h"

namespace quendo::gtk {

/// GTK's own in-process file dialog, where the row below the files can change the name immediately. A path
/// may be typed: absolute, relative to the home directory ("~/") or to the current folder.
class GtkSavePanel final : public SavePanel, public std::enable_shared_from_this<GtkSavePanel> {
 public:
  GtkSavePanel(Gtk::Window& parent, SavePanelConfiguration configuration, SavePanelCompletion completion);

  /// Shows the panel. `gone` is called once it has closed, before the completion. The panel keeps itself
  /// alive until then.
  void show(std::function<void()> gone);

  std::string nameFieldStringValue() const override;
  void setNameFieldStringValue(const std::string& name) override;
  std::size_t indexOfSelectedItem() const override;

 private:
  void addAccessory();
  void addFilter();
  void didRespond(int response);
  /// Rewrites the name field, if needed, to make GTK resolve it to the path that will be written. False if
  /// there was nothing to change.
  bool completeName();
  void enterLocation(const std::string& location);
  void finish(const SavePanelResult& result);

  Gtk::FileChooserDialog dialog_;
  SavePanelConfiguration configuration_;
  SavePanelCompletion completion_;
  std::function<void()> gone_;
  Gtk::DropDown* extensions_ = nullptr;
  std::shared_ptr<GtkSavePanel> self_;
};

}  // namespace quendo::gtk
