#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/Menu.h"

/// Target of the menu items that the host performs: one action method for each of the host's commands.
@interface QuendoMenuTarget : NSObject <NSMenuItemValidation> {
 @private
  quendo::MenuDelegate* delegate_;
}
/// The delegate must outlive the target or be reset to null first.
- (instancetype)initWithDelegate:(quendo::MenuDelegate*)delegate;
- (void)setDelegate:(quendo::MenuDelegate*)delegate;

- (void)checkForUpdates:(id)sender;
- (void)changeLanguage:(id)sender;
- (void)newNote:(id)sender;
- (void)quickCapture:(id)sender;
- (void)importFiles:(id)sender;
- (void)saveNow:(id)sender;
- (void)saveAsCurrentNote:(id)sender;
- (void)exportMarkdown:(id)sender;
- (void)copyForWhatsApp:(id)sender;
- (void)searchNotes:(id)sender;
- (void)showShortcutGuide:(id)sender;
- (void)previousTab:(id)sender;
- (void)nextTab:(id)sender;
- (void)showAllTabs:(id)sender;
- (void)reopenClosedTab:(id)sender;
- (void)closeCurrentTab:(id)sender;
- (void)closeOtherTabs:(id)sender;
- (void)closeTabsToRight:(id)sender;
- (void)closeAllTabs:(id)sender;
@end

namespace quendo::cocoa {

/// The menu bar, and the menu within it to which the platform adds the windows.
struct MenuBar {
  NSMenu* mainMenu;
  NSMenu* windowsMenu;  ///< Nil if `windowsMenu` is none of its submenus.
  /// The items with keys, editing ones aside, once more: WebKit would show these keys to the page first, and
  /// the menu would learn of them after later ones, or never from a page that does not answer.
  NSMenu* keys;
};

/// Makes the menu. Items of the host get `target`; those of the platform travel the responder chain.
MenuBar makeMenuBar(const Menu& mainMenu, const Menu* windowsMenu, QuendoMenuTarget* target);

/// The selector of a menu action.
SEL selectorOf(const MenuItem& item);

}  // namespace quendo::cocoa
