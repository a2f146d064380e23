#include "platform/gtk/sharing/GtkSharingPicker.h"

#include <giomm/menu.h>
#include <glibmm/main.h>

#include <string>
#include <utility>

#include "platform/gtk/web/WebKitView.h"

namespace quendo::gtk {
namespace {

/// The side of the rectangle to show the popover on.
Gtk::PositionType positionOf(RectEdge edge) {
  switch (edge) {
    case RectEdge::minX:
      return Gtk::PositionType::LEFT;
    case RectEdge::minY:
      return Gtk::PositionType::TOP;
    case RectEdge::maxX:
      return Gtk::PositionType::RIGHT;
    case RectEdge::maxY:
      return Gtk::PositionType::BOTTOM;
  }
  return Gtk::PositionType::TOP;
}

/// A title as a menu item label, in which a single "_" marks a mnemonic.
std::string labelOf(const std::string& title) {
  std::string label;
  for (const char character : title) label.append(character == '_' ? 2 : 1, character);
  return label;
}

}  // namespace

GtkSharingPicker::GtkSharingPicker(const SharedItems& shared) : actions_(Gio::SimpleActionGroup::create()) {
  const auto menu = Gio::Menu::create();
  int number = 0;
  for (const auto& services : sharingServicesFor(shared)) {
    const auto section = Gio::Menu::create();
    for (const auto& [title, service] : services) {
      const std::string name = "service" + std::to_string(number++);
      actions_->add_action(name, [this, chosen = service] { choose(chosen); });
      section->append(labelOf(title), "share." + name);
    }
    menu->append_section(section);
  }
  popover_.set_menu_model(menu);
  popover_.insert_action_group("share", actions_);
  // The popover closes before the chosen item is activated, so a dismissal is only known slightly later.
  popover_.signal_closed().connect(
      [this] { Glib::signal_idle().connect_once(lifetime_.guard([this] { choose(nullptr); })); });
}

GtkSharingPicker::~GtkSharingPicker() {
  if (popover_.get_parent()) popover_.unparent();
}

void GtkSharingPicker::showRelativeTo(const Rect& rect, WebView& webView, RectEdge preferredEdge) {
  GtkWidget* widget = dynamic_cast<WebKitView&>(webView).widget();
  GtkWidget* container = gtk_widget_get_parent(widget);
  double x = rect.x;
  double y = rect.y;
  gtk_widget_translate_coordinates(widget, container, x, y, &x, &y);
  gtk_widget_set_parent(GTK_WIDGET(popover_.gobj()), container);
  popover_.set_pointing_to(Gdk::Rectangle(static_cast<int>(x), static_cast<int>(y), rect.width, rect.height));
  popover_.set_position(positionOf(preferredEdge));
  popover_.popup();
}

void GtkSharingPicker::choose(const std::shared_ptr<GtkSharingService>& service) {
  SharingServicePickerDelegate* delegate = std::exchange(delegate_, nullptr);
  if (!delegate) return;
  delegate->didChooseSharingService(service);
  if (service) Glib::signal_idle().connect_once([service] { service->start(); });
}

}  // namespace quendo::gtk
