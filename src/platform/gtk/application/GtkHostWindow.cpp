#include "platform/gtk/application/GtkHostWindow.h"

#include <glibmm/main.h>
#include <gtkmm/droptarget.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollerlegacy.h>
#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/popover.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/gtk/application/BracketKeys.h"
#include "platform/gtk/application/X11Windows.h"
#include "platform/gtk/panels/GtkAlert.h"
#include "platform/gtk/panels/GtkSavePanel.h"
#include "platform/gtk/panels/PortalSavePanel.h"

namespace quendo::gtk {
namespace {

const char* editingCommand(PlatformAction action) {
  switch (action) {
    case PlatformAction::undo:
      return WEBKIT_EDITING_COMMAND_UNDO;
    case PlatformAction::redo:
      return WEBKIT_EDITING_COMMAND_REDO;
    case PlatformAction::cut:
      return WEBKIT_EDITING_COMMAND_CUT;
    case PlatformAction::copy:
      return WEBKIT_EDITING_COMMAND_COPY;
    case PlatformAction::paste:
      return WEBKIT_EDITING_COMMAND_PASTE;
    case PlatformAction::selectAll:
      return WEBKIT_EDITING_COMMAND_SELECT_ALL;
    default:
      return nullptr;
  }
}

// While the user moves between two menus of the bar, none is open for a moment.
constexpr unsigned kMenuSettlingMilliseconds = 120;

bool hasOpenMenu(Gtk::Widget& menuBar) {
  for (Gtk::Widget* item = menuBar.get_first_child(); item; item = item->get_next_sibling()) {
    for (Gtk::Widget* child = item->get_first_child(); child; child = child->get_next_sibling()) {
      if (dynamic_cast<Gtk::Popover*>(child) && child->get_visible()) return true;
    }
  }
  return false;
}

void refuseFocus(Gtk::Widget& menuBar) {
  for (Gtk::Widget* item = menuBar.get_first_child(); item; item = item->get_next_sibling()) {
    item->set_focusable(false);
  }
}

}  // namespace

GtkContainerView::GtkContainerView() : box_(Gtk::Orientation::VERTICAL) {
  box_.set_hexpand(true);
  box_.set_vexpand(true);
}

void GtkContainerView::addPinnedSubview(WebView& webView) {
  webView_ = &dynamic_cast<WebKitView&>(webView);
  gtk_box_append(box_.gobj(), webView_->widget());
}

GtkHostWindow::GtkHostWindow(GtkHostApplication& application, const Rect& contentRect,
                             std::uint32_t styleMask)
    : application_(application),
      layout_(Gtk::Orientation::VERTICAL),
      menuBar_(application.menuBar()),
      contentRect_(contentRect) {
  window_.set_default_size(contentRect.width, contentRect.height);
  window_.set_decorated((styleMask & kWindowTitled) != 0);
  window_.set_deletable((styleMask & kWindowClosable) != 0);
  window_.set_resizable((styleMask & kWindowResizable) != 0);
  window_.set_icon_name("com.quendo.Quendo");
  layout_.append(menuBar_);
  window_.set_child(layout_);
  window_.signal_close_request().connect([this] { return delegate_ && !delegate_->windowShouldClose(); },
                                         false);
  application_.application()->add_window(window_);
  application_.setResponder(this);
  validateMenuBeforeUse();
  performUnhandledEditingKeys();
  acceptDroppedFiles();
  keepFocusOutOfMenuBar();
  keepKeysInOrder();
  // GTK's inspector is a developer tool; its keys are disabled here.
  g_signal_connect(window_.gobj(), "enable-debugging",
                   G_CALLBACK(+[](GtkWindow*, gboolean, gpointer) -> gboolean { return TRUE; }), nullptr);
}

GtkHostWindow::~GtkHostWindow() {
  application_.setResponder(nullptr);
}

// Validates the items before matching a key against them and before a menu opens.
void GtkHostWindow::validateMenuBeforeUse() {
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](guint key, guint code, Gdk::ModifierType modifiers) {
        application_.updateMainMenu();
        return takesKey(key, code, modifiers);
      },
      false);
  window_.add_controller(keys);
  auto pointer = Gtk::EventControllerMotion::create();
  pointer->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  pointer->signal_enter().connect([this](double, double) { application_.updateMainMenu(); });
  menuBar_.add_controller(pointer);
  auto clicks = Gtk::GestureClick::create();
  clicks->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  clicks->signal_pressed().connect([this](int, double, double) { application_.updateMainMenu(); });
  menuBar_.add_controller(clicks);
}

// Added last, so that it comes before the menu's keys.
void GtkHostWindow::keepKeysInOrder() {
  auto events = Gtk::EventControllerLegacy::create();
  events->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  events->signal_event().connect(
      [this](const Glib::RefPtr<const Gdk::Event>& event) {
        WebKitView* view = content_ ? content_->webView() : nullptr;
        return view && view->queuedKeys().holdsBack(const_cast<GdkEvent*>(event->gobj()));
      },
      false);
  window_.add_controller(events);
}

bool GtkHostWindow::takesKey(guint key, guint code, Gdk::ModifierType modifiers) {
  const auto held = modifiers & (Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::SHIFT_MASK |
                                 Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK);
  // The web view uses a hidden GtkTextView to interpret keys, and F7 there aborts the process.
  if (key == GDK_KEY_F7 && held == Gdk::ModifierType{}) return true;
  const MenuEntry* command = bracketCommand(application_.menuEntries(), code, held);
  if (!command) return false;
  application_.application()->activate_action(command->actionName);
  return true;
}

void GtkHostWindow::focusContent() {
  if (content_ && content_->webView()) content_->webView()->grabFocus();
}

// The menu bar keeps the focus after a menu closes, and even takes it when the pointer passes over it; what
// is typed next would then go to the menus. So its titles are not focusable, and when nothing has the focus
// and no menu is open, the content gets it back.
void GtkHostWindow::keepFocusOutOfMenuBar() {
  refuseFocus(menuBar_);
  application_.menuBar()->signal_items_changed().connect([this](int, int, int) {
    Glib::signal_idle().connect_once(lifetime_.guard([this] { refuseFocus(menuBar_); }));
  });
  window_.property_focus_widget().signal_changed().connect([this] {
    Glib::signal_timeout().connect_once(lifetime_.guard([this] {
      Gtk::Widget* focused = window_.get_focus();
      const bool left = !focused || focused == &menuBar_ || focused->is_ancestor(menuBar_);
      if (left && window_.is_active() && !hasOpenMenu(menuBar_)) focusContent();
    }),
                                        kMenuSettlingMilliseconds);
  });
}

// The web view handles the editing keys itself but leaves some to its embedder (undo in a plain text field):
// keys handled by neither the page nor the web view arrive here and run the command.
void GtkHostWindow::performUnhandledEditingKeys() {
  auto shortcuts = Gtk::ShortcutController::create();
  shortcuts->set_propagation_phase(Gtk::PropagationPhase::BUBBLE);
  for (const MenuEntry& entry : application_.menuEntries()) {
    if (!isEditing(entry.item.platformAction)) continue;
    for (const std::string& key : acceleratorsFor(entry.item)) {
      shortcuts->add_shortcut(Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string(key),
                                                    Gtk::NamedAction::create("app." + entry.actionName)));
    }
  }
  window_.add_controller(shortcuts);
}

// Intercepts dropped files before the web view, which would pass them to the page unread. Other drags, such
// as text, are left to the web view.
void GtkHostWindow::acceptDroppedFiles() {
  auto target = Gtk::DropTarget::create(GDK_TYPE_FILE_LIST, Gdk::DragAction::COPY);
  target->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  target->signal_drop().connect(
      [this](const Glib::ValueBase& value, double, double) {
        std::vector<std::string> urls;
        for (auto* link = static_cast<GSList*>(g_value_get_boxed(value.gobj())); link; link = link->next) {
          const GCharPtr uri(g_file_get_uri(G_FILE(link->data)));
          urls.emplace_back(uri.get());
        }
        application_.openDroppedFiles(urls);
        return true;
      },
      false);
  window_.add_controller(target);
}

void GtkHostWindow::setTitle(const std::string& title) {
  window_.set_title(title);
}

void GtkHostWindow::setMinimumSize(int width, int height) {
  window_.set_size_request(width, height);
}

void GtkHostWindow::center() {
  centerWhenMapped(window_, contentRect_);
}

std::optional<Rect> GtkHostWindow::contentViewBounds() const {
  return Rect{0, 0, contentRect_.width, contentRect_.height};
}

void GtkHostWindow::setContentView(View& view) {
  content_ = &dynamic_cast<GtkContainerView&>(view);
  layout_.append(content_->widget());
}

void GtkHostWindow::makeKeyAndOrderFront() {
  const bool firstTime = !window_.get_visible();
  window_.present();
  if (firstTime && content_ && content_->webView()) content_->webView()->grabFocus();
}

std::shared_ptr<PresentedAlert> GtkHostWindow::beginSheet(const Alert& alert,
                                                          std::function<void(AlertResult)> completion) {
  auto sheet = std::make_shared<AlertSheet>(alert, std::move(completion));
  sheets_.present([this, sheet](std::function<void()> gone) { sheet->show(window_, std::move(gone)); });
  return sheet;
}

void GtkHostWindow::beginSheet(const OpenPanel& panel,
                               std::function<void(std::optional<std::vector<std::string>>)> completion) {
  sheets_.present([this, panel, completion = std::move(completion)](std::function<void()> gone) {
    showOpenPanel(window_, panel,
                  [completion, gone = std::move(gone)](std::optional<std::vector<std::string>> paths) {
                    gone();
                    completion(std::move(paths));
                  });
  });
}

std::shared_ptr<SavePanel> GtkHostWindow::beginSheet(SavePanelConfiguration configuration,
                                                     SavePanelCompletion completion) {
  const auto present = [this](auto panel) -> std::shared_ptr<SavePanel> {
    sheets_.present([panel](std::function<void()> gone) { panel->show(std::move(gone)); });
    return panel;
  };
  if (onlyPortalReachesFiles()) {
    return present(
        std::make_shared<PortalSavePanel>(window_, std::move(configuration), std::move(completion)));
  }
  return present(std::make_shared<GtkSavePanel>(window_, std::move(configuration), std::move(completion)));
}

bool GtkHostWindow::canPerform(PlatformAction action) const {
  if (action == PlatformAction::hideOtherApplications) return canHideOtherApplications();
  if (editingCommand(action)) return content_ && content_->webView();
  return true;
}

void GtkHostWindow::perform(PlatformAction action) {
  switch (action) {
    case PlatformAction::hide:
    case PlatformAction::performMiniaturize:
      window_.minimize();
      break;
    case PlatformAction::hideOtherApplications:
      hideOtherApplications();
      break;
    case PlatformAction::performZoom:
      if (window_.is_maximized()) {
        window_.unmaximize();
      } else {
        window_.maximize();
      }
      break;
    case PlatformAction::performClose:
      window_.close();
      break;
    default:
      if (const char* command = editingCommand(action)) content_->webView()->executeEditingCommand(command);
      break;
  }
}

}  // namespace quendo::gtk
