#pragma once

#include <gtkmm/dropdown.h>
#include <gtkmm/filechooserdialog.h>

#include <functional>
#include <memory>

#include "platform/SavePanel.h"

namespace quendo::gtk {

/// GTK's own file dialog, in this process, so that the row below the files can change the name at once. What
/// is typed may be a path: absolute, from the home directory ("~/") or from the folder on show.
class GtkSavePanel final : public SavePanel, public std::enable_shared_from_this<GtkSavePanel> {
 public:
  GtkSavePanel(Gtk::Window& parent, SavePanelConfiguration configuration, SavePanelCompletion completion);

  /// Shows the panel. `gone` is called once it has left the screen, before the completion is. The panel keeps
  /// itself alive meanwhile.
  void show(std::function<void()> gone);

  std::string nameFieldStringValue() const override;
  void setNameFieldStringValue(const std::string& name) override;
  std::size_t indexOfSelectedItem() const override;

 private:
  void addAccessory();
  void addFilter();
  void didRespond(int response);
  /// Puts into the name field what GTK understands as the path that is written, where what stands there means
  /// another. False when there was nothing to change.
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
