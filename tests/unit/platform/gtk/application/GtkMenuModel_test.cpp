#include "platform/gtk/application/GtkMenuModel.h"

#include <gtest/gtest.h>

#include <utility>

namespace quendo::gtk {
namespace {

MenuItem itemWithKey(const char* key, std::uint32_t modifiers) {
  MenuItem item;
  item.keyEquivalent = key;
  item.modifiers = modifiers;
  return item;
}

TEST(GtkMenuModel, ShowsCommandAsControlAndOptionAsAlt) {
  EXPECT_EQ(acceleratorsFor(itemWithKey("n", kModifierCommand)), std::vector<std::string>{"<Control>n"});
  EXPECT_EQ(acceleratorsFor(itemWithKey("w", kModifierCommand | kModifierOption | kModifierShift)),
            std::vector<std::string>{"<Control><Alt><Shift>w"});
  EXPECT_TRUE(acceleratorsFor(itemWithKey("", kModifierCommand)).empty());
}

TEST(GtkMenuModel, TakesABracketKeyWhateverShiftMakesOfIt) {
  EXPECT_EQ(acceleratorsFor(itemWithKey("[", kModifierCommand | kModifierShift)),
            (std::vector<std::string>{"<Control><Shift>bracketleft", "<Control><Shift>braceleft"}));
}

TEST(GtkMenuModel, LeavesTheEditingKeysToTheWebView) {
  Menu menu;
  menu.items.push_back(itemWithKey("z", kModifierCommand));
  menu.items.back().action = "undo";
  menu.items.back().platformAction = PlatformAction::undo;
  menu.items.push_back(itemWithKey("n", kModifierCommand));
  menu.items.back().action = "newNote";
  const auto entries = menuEntries(menu);
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_TRUE(entries[0].accelerators.empty());
  EXPECT_EQ(entries[1].accelerators, std::vector<std::string>{"<Control>n"});
}

TEST(GtkMenuModel, HasTheItemsThatHideWithoutTheirKeys) {
  Menu menu;
  for (const auto& [action, platformAction] :
       {std::pair{"hide", PlatformAction::hide},
        std::pair{"hideOtherApplications", PlatformAction::hideOtherApplications}}) {
    menu.items.push_back(itemWithKey("h", kModifierCommand));
    menu.items.back().action = action;
    menu.items.back().platformAction = platformAction;
  }
  const auto entries = menuEntries(menu);
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_TRUE(entries[0].accelerators.empty());
  EXPECT_TRUE(entries[1].accelerators.empty());
}

}  // namespace
}  // namespace quendo::gtk
