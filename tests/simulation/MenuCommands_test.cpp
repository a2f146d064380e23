#include "menu/MenuCommands.h"

#include "fake/HostFixture.h"

namespace quendo {
namespace {

constexpr std::string_view kPageCommands[] = {
    "newNote",           "quickCapture",    "exportMarkdown",  "importFiles",       "saveNow",
    "saveAsCurrentNote", "copyForWhatsApp", "searchNotes",     "showShortcutGuide", "previousTab",
    "nextTab",           "showAllTabs",     "reopenClosedTab", "closeCurrentTab",   "closeOtherTabs",
    "closeTabsToRight",  "closeAllTabs",
};

class MenuCommandsTest : public fake::HostTest {
 protected:
  bool isEnabled(std::string_view action) {
    MenuItem item;
    item.action = action;
    return application().validateMenuItem(item);
  }
  std::string title(std::size_t menu) { return platform_.application.mainMenu->items[menu].submenu->title; }
};

TEST_F(MenuCommandsTest, DisablesThePageCommandsUntilThePageIsReady) {
  launch();
  for (const std::string_view action : kPageCommands) EXPECT_FALSE(isEnabled(action));
  for (const std::string_view action :
       {"checkForUpdates", "changeLanguage", "orderFrontStandardAboutPanel", "terminate"}) {
    EXPECT_TRUE(isEnabled(action));
  }
  finishLoading();
  for (const std::string_view action : kPageCommands) EXPECT_TRUE(isEnabled(action));
}

TEST_F(MenuCommandsTest, DisablesThePageCommandsWhileAQuitIsPending) {
  start();
  platform_.application.terminate();
  for (const std::string_view action : kPageCommands) EXPECT_FALSE(isEnabled(action));
  EXPECT_TRUE(isEnabled("checkForUpdates"));
  EXPECT_TRUE(isEnabled("changeLanguage"));
}

TEST_F(MenuCommandsTest, DisablesThePageCommandsAfterAFatalError) {
  start();
  page().navigation->didFailNavigation("gone");
  for (const std::string_view action : kPageCommands) EXPECT_FALSE(isEnabled(action));
  // The view may still report the end of the load, which makes the page ready again.
  finishLoading();
  for (const std::string_view action : kPageCommands) EXPECT_FALSE(isEnabled(action));
  EXPECT_TRUE(isEnabled("checkForUpdates"));
}

TEST_F(MenuCommandsTest, ValidatesTheMenuAnewOnceThePageIsReady) {
  launch();
  platform_.log.clear();
  finishLoading();
  EXPECT_EQ(platform_.log, fake::CallLog{"updateMainMenu"});
}

TEST_F(MenuCommandsTest, RunsTheSnippetOfTheChosenCommandAndLeavesTheWindowOpen) {
  start();
  application().performMenuItem(menuItem("closeCurrentTab"));
  EXPECT_EQ(scripts(), std::vector<std::string>{"window.quendoCloseCurrentTab?.()"});
  EXPECT_TRUE(platform_.log.empty());
}

TEST_F(MenuCommandsTest, RebuildsTheMenuAndTellsThePageWhenALanguageIsChosen) {
  start();
  application().performMenuItem(menuItem("changeLanguage", "es"));
  EXPECT_EQ(platform_.defaults.strings["QuendoLanguage"], "es");
  EXPECT_EQ(platform_.log, (fake::CallLog{"setWindowsMenu", "setMainMenu"}));
  EXPECT_EQ(title(1), "Archivo");
  EXPECT_TRUE(menuItem("changeLanguage", "es").on);
  EXPECT_FALSE(menuItem("changeLanguage", "pt").on);
  EXPECT_FALSE(menuItem("changeLanguage", "en").on);
  EXPECT_EQ(scripts(), std::vector<std::string>{R"(window.quendoSetLanguage?.("es"))"});
}

TEST_F(MenuCommandsTest, ChangesTheLanguageButNotThePageBeforeThePageIsReady) {
  launch();
  application().performMenuItem(menuItem("changeLanguage", "en"));
  EXPECT_EQ(title(1), "File");
  EXPECT_TRUE(scripts().empty());
}

TEST_F(MenuCommandsTest, IgnoresALanguageItemWithoutALanguage) {
  start();
  MenuItem item = menuItem("changeLanguage", "en");
  item.representedObject = "fr";
  application().performMenuItem(item);
  item.representedObject = "";
  application().performMenuItem(item);
  EXPECT_TRUE(platform_.log.empty());
  EXPECT_FALSE(platform_.defaults.strings.contains("QuendoLanguage"));
}

TEST_F(MenuCommandsTest, TakesALanguageFromThePageWithoutCallingItBack) {
  start();
  post("quendoLanguage", "en");
  EXPECT_EQ(platform_.defaults.strings["QuendoLanguage"], "en");
  EXPECT_EQ(title(5), "Window");
  EXPECT_TRUE(scripts().empty());
}

TEST_F(MenuCommandsTest, DropsALanguageMessageThatIsNoCode) {
  start();
  for (const Value& body : {Value("EN"), Value("pt-BR"), Value(""), Value(1.0), Value(),
                            Value(Value::Dictionary{{"language", "en"}})}) {
    post("quendoLanguage", body);
  }
  EXPECT_TRUE(platform_.log.empty());
  EXPECT_FALSE(platform_.defaults.strings.contains("QuendoLanguage"));
}

}  // namespace
}  // namespace quendo
