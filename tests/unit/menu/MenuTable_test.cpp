#include "menu/MenuTable.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <utility>

#include "i18n/Translations.h"

namespace quendo {
namespace {

TEST(MenuTable, SpellsTheScriptOfEveryPageCommand) {
  static constexpr std::array kScripts = {
      std::pair{"newNote", "createNote()"},
      std::pair{"quickCapture", "openCapture()"},
      std::pair{"exportMarkdown", "exportMarkdown()"},
      std::pair{"saveAsCurrentNote", "window.quendoSaveAsCurrentNote?.()"},
      std::pair{"importFiles", "document.getElementById('importFileInput').click()"},
      std::pair{"closeCurrentTab", "window.quendoCloseCurrentTab?.()"},
      std::pair{"closeOtherTabs", "window.quendoRequestCloseTabs?.('others')"},
      std::pair{"closeTabsToRight", "window.quendoRequestCloseTabs?.('right')"},
      std::pair{"closeAllTabs", "window.quendoRequestCloseTabs?.('all')"},
      std::pair{"reopenClosedTab", "window.quendoReopenClosedTab?.()"},
      std::pair{"previousTab", "window.quendoSwitchOpenTab?.(-1)"},
      std::pair{"nextTab", "window.quendoSwitchOpenTab?.(1)"},
      std::pair{"showAllTabs", "window.quendoShowTabOverview?.()"},
      std::pair{"showShortcutGuide", "window.quendoOpenShortcutGuide?.()"},
      std::pair{"searchNotes",
                "state.sidebarMode='all';renderSidebar();setDrawer('sidebar',{focus:false});document."
                "getElementById('searchInput').focus();document.getElementById('searchInput').select()"},
      std::pair{"saveNow", "flushPendingSave()"},
  };
  for (const auto& [action, script] : kScripts) {
    const MenuRow* row = findMenuRow(action);
    ASSERT_TRUE(row) << action;
    EXPECT_EQ(row->script, script);
    EXPECT_TRUE(row->needsPage());
  }
  std::size_t scripts = menuCommandsWithoutItem().size();
  for (const MenuSection& section : menuSections()) {
    for (const MenuRow& row : section.rows) scripts += row.script.empty() ? 0U : 1U;
  }
  EXPECT_EQ(scripts, kScripts.size());
}

TEST(MenuTable, GivesNativeCommandsNoScript) {
  for (const char* action : {"checkForUpdates", "copyForWhatsApp", "terminate", "copy"}) {
    ASSERT_TRUE(findMenuRow(action)) << action;
    EXPECT_TRUE(findMenuRow(action)->script.empty()) << action;
  }
  EXPECT_TRUE(findMenuRow("copyForWhatsApp")->needsPage());
  EXPECT_FALSE(findMenuRow("checkForUpdates")->needsPage());
}

TEST(MenuTable, FindsNothingUnderAnUnknownName) {
  EXPECT_FALSE(findMenuRow(""));
  EXPECT_FALSE(findMenuRow("newnote"));
}

TEST(MenuTable, NamesEachActionAndUsesEachKeyOnce) {
  std::set<std::string_view> actions;
  std::set<std::pair<std::string_view, std::uint32_t>> keys;
  for (const MenuSection& section : menuSections()) {
    for (const MenuRow& row : section.rows) {
      if (!row.action.empty()) {
        EXPECT_TRUE(actions.insert(row.action).second) << row.action;
      }
      if (!row.key.empty()) {
        EXPECT_TRUE(keys.insert({row.key, row.modifiers}).second) << row.action;
      }
    }
  }
}

TEST(MenuTable, TranslatesEveryTitleButZoom) {
  for (const MenuSection& section : menuSections()) {
    if (section.title != "Quendo") {
      EXPECT_TRUE(findTranslation(section.title)) << section.title;
    }
    for (const MenuRow& row : section.rows) {
      if (row.isSeparator()) continue;
      EXPECT_EQ(findTranslation(row.title) != nullptr, row.title != "Zoom") << row.title;
    }
  }
}

}  // namespace
}  // namespace quendo
