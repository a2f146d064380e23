#pragma once

#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/popovermenubar.h>

#include "platform/Lifetime.h"
#include "platform/Window.h"
#include "platform/gtk/application/GtkHostApplication.h"
#include "platform/gtk/application/ThemeVariant.h"
#include "platform/gtk/panels/SheetQueue.h"
#include "platform/gtk/web/WebKitView.h"

namespace quendo::gtk {

/// The container that fills the window below the menu bar.
class GtkContainerView final : public View {
 public:
  GtkContainerView();
  void addPinnedSubview(WebView& webView) override;
  Gtk::Widget& widget() { return box_; }
  WebKitView* webView() const { return webView_; }

 private:
  Gtk::Box box_;
  WebKitView* webView_ = nullptr;
};

/// The window: menu bar above, content below. Also the target of the menu's platform actions.
class GtkHostWindow final : public Window, public Responder {
 public:
  GtkHostWindow(GtkHostApplication& application, const Rect& contentRect, std::uint32_t styleMask);
  ~GtkHostWindow() override;
  GtkHostWindow(const GtkHostWindow&) = delete;
  GtkHostWindow& operator=(const GtkHostWindow&) = delete;

  void setTitle(const std::string& title) override;
  void setAppearance(Appearance appearance) override { theme_.show(appearance); }
  void setDelegate(WindowDelegate* delegate) override { delegate_ = delegate; }
  void setMinimumSize(int width, int height) override;
  void center() override;
  std::optional<Rect> contentViewBounds() const override;
  void setContentView(View& view) override;
  void makeKeyAndOrderFront() override;
  // Sheets queue only while one is showing.
  bool hasAttachedSheet() const override { return sheets_.isShowing(); }
  std::shared_ptr<PresentedAlert> beginSheet(const Alert& alert,
                                             std::function<void(AlertResult)> completion) override;
  void beginSheet(const OpenPanel& panel,
                  std::function<void(std::optional<std::vector<std::string>>)> completion) override;
  std::shared_ptr<SavePanel> beginSheet(SavePanelConfiguration configuration,
                                        SavePanelCompletion completion) override;

  bool canPerform(PlatformAction action) const override;
  void perform(PlatformAction action) override;
  void focusContent() override;

 private:
  void keepFocusOutOfMenuBar();
  void keepKeysInOrder();
  bool takesKey(guint key, guint code, Gdk::ModifierType modifiers);
  void validateMenuBeforeUse();
  void performUnhandledEditingKeys();
  void acceptDroppedFiles();

  GtkHostApplication& application_;
  Gtk::ApplicationWindow window_;
  ThemeVariant theme_;
  Gtk::Box layout_;
  Gtk::PopoverMenuBar menuBar_;
  GtkContainerView* content_ = nullptr;
  WindowDelegate* delegate_ = nullptr;
  SheetQueue sheets_;
  Rect contentRect_;
  Lifetime lifetime_;
};

}  // namespace quendo::gtk
