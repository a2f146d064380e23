#pragma once

#include <giomm/simpleactiongroup.h>
#include <gtkmm/popovermenu.h>

#include <memory>
#include <vector>

#include "platform/Lifetime.h"
#include "platform/Sharing.h"
#include "platform/gtk/sharing/GtkSharingServices.h"

namespace quendo::gtk {

/// A popover on the web view with the core's own entries, as the desktop has no share picker.
class GtkSharingPicker final : public SharingServicePicker {
 public:
  explicit GtkSharingPicker(const SharedItems& shared);
  ~GtkSharingPicker() override;
  GtkSharingPicker(const GtkSharingPicker&) = delete;
  GtkSharingPicker& operator=(const GtkSharingPicker&) = delete;

  void setDelegate(SharingServicePickerDelegate* delegate) override { delegate_ = delegate; }
  void showRelativeTo(const Rect& rect, WebView& webView, RectEdge preferredEdge) override;

 private:
  void choose(const std::shared_ptr<GtkSharingService>& service);

  Gtk::PopoverMenu popover_;
  Glib::RefPtr<Gio::SimpleActionGroup> actions_;
  SharingServicePickerDelegate* delegate_ = nullptr;
  Lifetime lifetime_;
};

}  // namespace quendo::gtk
