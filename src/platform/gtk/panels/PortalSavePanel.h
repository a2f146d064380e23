#pragma once

#include <gtkmm/filechoosernative.h>

#include <functional>
#include <memory>

#include "platform/SavePanel.h"

namespace quendo::gtk {

/// Whether the program is confined and reaches the user's files only through the desktop portal.
bool onlyPortalReachesFiles();

/// The portal's file dialog. It runs in another process: the extension is one of its choices and takes effect
/// on confirmation; the name cannot be read or changed while it is open. A confined program may write only to
/// the exact file the user named, so if adding the extension changes the name, the panel asks again with the
/// full name.
class PortalSavePanel final : public SavePanel, public std::enable_shared_from_this<PortalSavePanel> {
 public:
  PortalSavePanel(Gtk::Window& parent, SavePanelConfiguration configuration, SavePanelCompletion completion);

  /// Shows the panel. `gone` is called once it has closed, before the completion. The panel keeps itself
  /// alive until then.
  void show(std::function<void()> gone);

  std::string nameFieldStringValue() const override { return configuration_.nameFieldStringValue; }
  void setNameFieldStringValue(const std::string& /*name*/) override {}
  std::size_t indexOfSelectedItem() const override;

 private:
  void didRespond(int response);
  /// The name to write the user's choice to.
  std::string completeName(const std::string& path) const;
  void askAgain(const std::string& name);

  SavePanelConfiguration configuration_;
  SavePanelCompletion completion_;
  Glib::RefPtr<Gtk::FileChooserNative> chooser_;
  std::function<void()> gone_;
  std::shared_ptr<PortalSavePanel> self_;
};

}  // namespace quendo::gtk
