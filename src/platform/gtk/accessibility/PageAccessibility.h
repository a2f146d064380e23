#pragma once

#include <gio/gio.h>
#include <webkit/webkit.h>

#include "platform/Lifetime.h"
#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

/// Shows the page to assistive technology, as what is in the web view. The page's process has all of it on
/// the accessibility bus, but only GTK from 4.14 on can tell that it belongs into the window. Main thread.
class PageAccessibility {
 public:
  /// The view must outlive this.
  explicit PageAccessibility(WebKitWebView* view);
  ~PageAccessibility();
  PageAccessibility(const PageAccessibility&) = delete;
  PageAccessibility& operator=(const PageAccessibility&) = delete;

 private:
  void busIsThere(GDBusConnection* bus);
  void attach();
  static void onNameOwnerChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                                 GVariant* change, gpointer self);
  static void search(GTask* task, gpointer, gpointer, GCancellable*);
  void searchIsOver(GTask* task);

  WebKitWebView* view_;
  GObjectPtr<GDBusConnection> bus_;
  guint subscription_ = 0;
  bool searching_ = false;
  bool searchAgain_ = false;  ///< Something has changed since the search began.
  Lifetime lifetime_;
};

}  // namespace quendo::gtk
