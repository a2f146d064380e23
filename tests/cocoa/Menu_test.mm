#import "platform/cocoa/application/CocoaMenu.h"

#import "CocoaTest.h"

namespace quendo::cocoa {
namespace {

/// Remembers what it was asked.
struct Delegate final : MenuDelegate {
  bool validateMenuItem(const MenuItem& item) const override {
    asked.push_back(std::string(item.action) + "|" + item.representedObject + "|" + item.title);
    return allows;
  }
  void performMenuItem(const MenuItem& item) override {
    performed.push_back(std::string(item.action) + "|" + item.representedObject + "|" + item.title);
  }
  bool allows = true;
  mutable std::vector<std::string> asked;
  std::vector<std::string> performed;
};

std::shared_ptr<Menu> menuOf(std::vector<MenuItem> items, std::string title = "") {
  auto menu = std::make_shared<Menu>();
  menu->title = std::move(title);
  menu->items = std::move(items);
  return menu;
}

MenuItem hostItem(std::string_view action, std::string title = "Title") {
  MenuItem item;
  item.action = action;
  item.title = std::move(title);
  return item;
}

class CocoaMenuTest : public CocoaTest {
 protected:
  NSMenuItem* made(const MenuItem& item) {
    return [makeMenuBar(*menuOf({item}), nullptr, target_).mainMenu.itemArray firstObject];
  }

  Delegate delegate_;
  QuendoMenuTarget* target_ = [[QuendoMenuTarget alloc] initWithDelegate:&delegate_];
};

TEST_F(CocoaMenuTest, CommandsOfTheHostHaveAMethodEach) {
  for (const char* action :
       {"checkForUpdates", "changeLanguage", "newNote", "quickCapture", "importFiles", "saveNow",
        "saveAsCurrentNote", "exportMarkdown", "copyForWhatsApp", "searchNotes", "showShortcutGuide",
        "previousTab", "nextTab", "showAllTabs", "reopenClosedTab", "closeCurrentTab", "closeOtherTabs",
        "closeTabsToRight", "closeAllTabs"}) {
    NSMenuItem* item = made(hostItem(action));
    EXPECT_TRUE(item.action == NSSelectorFromString(doubles::stringFrom(std::string(action) + ":")))
        << action;
    EXPECT_EQ(item.target, target_) << action;
    ASSERT_TRUE([target_ respondsToSelector:item.action]) << action;
    [target_ performSelector:item.action withObject:item];
    ASSERT_FALSE(delegate_.performed.empty()) << action;
    EXPECT_EQ(delegate_.performed.back(), std::string(action) + "||Title");
  }
}

TEST_F(CocoaMenuTest, OfThePlatformTravelsTheResponderChain) {
  MenuItem item = hostItem("copy");
  item.platformAction = PlatformAction::copy;
  EXPECT_TRUE(made(item).action == @selector(copy:));
  EXPECT_EQ(made(item).target, nil);
}

TEST_F(CocoaMenuTest, AnItemWithASubmenuHasNeitherActionNorTarget) {
  MenuItem item = hostItem("");
  item.submenu = menuOf({hostItem("newNote")}, "File");
  NSMenuItem* entry = made(item);
  EXPECT_TRUE(entry.action == nullptr);
  EXPECT_EQ(entry.target, nil);
  EXPECT_TRUE([entry.submenu.title isEqualToString:@"File"]);
  EXPECT_EQ(entry.submenu.itemArray.count, 1U);
}

TEST_F(CocoaMenuTest, ItemsHaveTheirKeysMasksAndTicks) {
  MenuItem item = hostItem("newNote");
  item.keyEquivalent = "n";
  item.modifiers = kModifierCommand | kModifierShift | kModifierOption;
  item.on = true;
  NSMenuItem* entry = made(item);
  EXPECT_TRUE([entry.keyEquivalent isEqualToString:@"n"]);
  EXPECT_EQ(entry.keyEquivalentModifierMask, (1U << 17U) | (1U << 19U) | (1U << 20U));
  EXPECT_EQ(entry.state, NSControlStateValueOn);
  EXPECT_EQ(made(hostItem("newNote")).state, NSControlStateValueOff);
  EXPECT_TRUE([made(hostItem("newNote")).keyEquivalent isEqualToString:@""]);
}

TEST_F(CocoaMenuTest, ItemsThatStandForSomethingSaySo) {
  MenuItem item = hostItem("changeLanguage", "Português");
  item.representedObject = "pt";
  NSMenuItem* entry = made(item);
  EXPECT_TRUE([entry.representedObject isEqual:@"pt"]);
  EXPECT_EQ(made(hostItem("changeLanguage")).representedObject, nil);
  [target_ changeLanguage:entry];
  EXPECT_EQ(delegate_.performed, std::vector<std::string>{"changeLanguage|pt|Português"});
}

TEST_F(CocoaMenuTest, SeparatorsAreSeparators) {
  MenuItem item;
  item.separator = true;
  EXPECT_TRUE(made(item).isSeparatorItem);
}

TEST_F(CocoaMenuTest, TheDelegateValidates) {
  MenuItem item = hostItem("changeLanguage", "Português");
  item.representedObject = "pt";
  NSMenuItem* entry = made(item);
  EXPECT_TRUE([target_ validateMenuItem:entry]);
  delegate_.allows = false;
  EXPECT_FALSE([target_ validateMenuItem:entry]);
  EXPECT_EQ(delegate_.asked, (std::vector<std::string>(2, "changeLanguage|pt|Português")));
}

TEST_F(CocoaMenuTest, ACommandThatNoMenuItemSendsDoesNothing) {
  [target_ newNote:nil];
  [target_ newNote:[[NSObject alloc] init]];
  EXPECT_TRUE(delegate_.performed.empty());
}

TEST_F(CocoaMenuTest, NobodyIsAskedOnceTheDelegateIsGone) {
  NSMenuItem* entry = made(hostItem("newNote"));
  [target_ setDelegate:nullptr];
  [target_ newNote:entry];
  EXPECT_FALSE([target_ validateMenuItem:entry]);
  EXPECT_TRUE(delegate_.performed.empty());
  EXPECT_TRUE(delegate_.asked.empty());
}

TEST_F(CocoaMenuTest, TheWindowsMenuIsTheOneInTheMainMenu) {
  MenuItem file = hostItem("", "File");
  file.submenu = menuOf({hostItem("newNote")}, "File");
  MenuItem window = hostItem("", "Window");
  window.submenu = menuOf({}, "Window");
  ports_.application.setWindowsMenu(window.submenu);
  ports_.application.setMainMenu(menuOf({file, window}));
  NSApplication* application = NSApplication.sharedApplication;
  EXPECT_EQ(application.windowsMenu, [[application.mainMenu.itemArray objectAtIndex:1] submenu]);
  EXPECT_TRUE([application.windowsMenu.title isEqualToString:@"Window"]);
}

TEST_F(CocoaMenuTest, AWindowsMenuThatIsNotInTheMainMenuIsNone) {
  const auto other = menuOf({}, "Window");
  EXPECT_EQ(makeMenuBar(*menuOf({hostItem("newNote")}), other.get(), target_).windowsMenu, nil);
}

}  // namespace
}  // namespace quendo::cocoa
