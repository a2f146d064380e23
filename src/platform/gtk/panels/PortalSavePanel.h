#pragma once

#include <gtkmm/filechoosernative.h>

#include <functional>
#include <memory>

#include "platform/SavePanel.h"

namespace quendo::gtk {

/// Whether the user's files are reached only through the desktop portal, because the program is confined.
bool onlyPortalReachesFiles();

/// The portal's file dialog. It belongs to another process: the extension is one of its choices, and counts
/// when the user confirms; the name in it cannot be read or changed meanwhile. A confined program may write
/// to the very file that the user named and to no other, so that a name which gets its extension only then is
/// asked for once more, complete.
class PortalSavePanel final : public SavePanel, public std::enable_shared_from_this<PortalSavePanel> {
 public:
  PortalSavePanel(Gtk::Window& parent, SavePanelConfiguration configuration, SavePanelCompletion completion);

  /// Shows the panel. `gone` is called once it has left the screen, before the completion is. The panel keeps
  /// itself alive meanwhile.
  void show(std::function<void()> gone);

  std::string nameFieldStringValue() const override { return configuration_.nameFieldStringValue; }
  void setNameFieldStringValue(const std::string& /*name*/) override {}
  std::size_t indexOfSelectedItem() const override;

 private:
  void didRespond(int response);
  /// The name under which what the user chose is written.
  std::string completeName(const std::string& path) const;
  void askAgain(const std::string& name);

  SavePanelConfiguration configuration_;
  SavePanelCompletion completion_;
  Glib::RefPtr<Gtk::FileChooserNative> chooser_;
  std::function<void()> gone_;
  std::shared_ptr<PortalSavePanel> self_;
};

}  // namespace quendo::gtk
