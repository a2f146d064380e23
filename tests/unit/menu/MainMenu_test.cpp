#include "menu/MainMenu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake/FakePlatform.h"

namespace quendo {
namespace {

constexpr std::uint32_t kCommand = 0x100000;
constexpr std::uint32_t kShift = 0x20000;
constexpr std::uint32_t kOption = 0x80000;

struct Row {
  std::string title;
  std::string action;
  std::string key;
  std::uint32_t modifiers;
  MenuTarget target;
};
const Row kSeparator{"-", "", "", 0, MenuTarget::responderChain};

class MainMenuTest : public ::testing::Test {
 protected:
  MainMenu build(const char* language) {
    defaults_.strings["QuendoLanguage"] = language;
    return makeMainMenu(localization_);
  }

  static const Menu& submenu(const MainMenu& main, std::size_t index) {
    return *main.menu->items.at(index).submenu;
  }

  static std::vector<std::string> titles(const Menu& menu) {
    std::vector<std::string> titles;
    for (const MenuItem& item : menu.items) titles.push_back(item.separator ? "-" : item.title);
    return titles;
  }

  static std::vector<std::string> barTitles(const MainMenu& main) {
    std::vector<std::string> titles;
    for (const MenuItem& item : main.menu->items) {
      EXPECT_EQ(item.title, "");
      titles.push_back(item.submenu->title);
    }
    return titles;
  }

  static void expectRows(const Menu& menu, const std::vector<Row>& rows) {
    ASSERT_EQ(menu.items.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const MenuItem& item = menu.items[i];
      const Row& row = rows[i];
      EXPECT_EQ(item.separator, row.title == "-") << i;
      if (item.separator) continue;
      EXPECT_EQ(item.title, row.title);
      EXPECT_EQ(item.action, row.action) << row.title;
      EXPECT_EQ(item.keyEquivalent, row.key) << row.title;
      EXPECT_EQ(item.modifiers, row.modifiers) << row.title;
      EXPECT_EQ(item.target(), row.target) << row.title;
    }
  }

  fake::FakeDefaults defaults_;
  fake::FakeLocale locale_;
  Localization localization_{defaults_, locale_};
};

TEST_F(MainMenuTest, NamesTheBarInEveryLanguage) {
  EXPECT_EQ(barTitles(build("pt")),
            (std::vector<std::string>{"Quendo", "Arquivo", "Editar", "Visualizar", "Atalhos", "Janela"}));
  EXPECT_EQ(barTitles(build("en")),
            (std::vector<std::string>{"Quendo", "File", "Edit", "View", "Shortcuts", "Window"}));
  EXPECT_EQ(barTitles(build("es")),
            (std::vector<std::string>{"Quendo", "Archivo", "Editar", "Ver", "Atajos", "Ventana"}));
  EXPECT_EQ(build("en").menu->title, "Main Menu");
}

TEST_F(MainMenuTest, LeavesTheLanguagesAndZoomUntranslated) {
  for (const char* language : {"pt", "en", "es"}) {
    const MainMenu main = build(language);
    EXPECT_EQ(titles(*submenu(main, 0).items[2].submenu),
              (std::vector<std::string>{"Português", "English", "Español"}));
    EXPECT_EQ(submenu(main, 5).items[11].title, "Zoom");
  }
}

TEST_F(MainMenuTest, TicksExactlyTheCurrentLanguage) {
  for (const char* language : {"pt", "en", "es"}) {
    const MainMenu main = build(language);
    for (const MenuItem& item : submenu(main, 0).items[2].submenu->items) {
      EXPECT_EQ(item.on, item.representedObject == language);
      EXPECT_EQ(item.action, "changeLanguage");
      EXPECT_EQ(item.target(), MenuTarget::host);
      EXPECT_EQ(item.keyEquivalent, "");
    }
  }
}

TEST_F(MainMenuTest, OffersTheWindowMenuAsTheWindowsMenu) {
  const MainMenu main = build("en");
  EXPECT_EQ(main.windowsMenu, main.menu->items.back().submenu);
  EXPECT_EQ(main.windowsMenu->title, "Window");
}

TEST_F(MainMenuTest, TitlesTheLanguageSubmenuInTheCurrentLanguage) {
  const MainMenu main = build("en");
  EXPECT_EQ(submenu(main, 0).items[2].title, "Language");
  EXPECT_EQ(submenu(main, 0).items[2].submenu->title, "Language");
}

TEST_F(MainMenuTest, HoldsEveryItemWithItsActionKeyModifiersAndTarget) {
  constexpr MenuTarget self = MenuTarget::host;
  constexpr MenuTarget chain = MenuTarget::responderChain;
  const MainMenu main = build("pt");
  expectRows(submenu(main, 0), {{"Sobre o Quendo", "orderFrontStandardAboutPanel", "", kCommand, chain},
                                {"Verificar atualizações…", "checkForUpdates", "", kCommand, self},
                                {"Idioma", "", "", kCommand, chain},
                                kSeparator,
                                {"Ocultar Quendo", "hide", "h", kCommand, chain},
                                {"Ocultar Outros", "hideOtherApplications", "h", kCommand | kOption, chain},
                                kSeparator,
                                {"Sair do Quendo", "terminate", "q", kCommand, chain}});
  expectRows(submenu(main, 1), {{"Nova nota", "newNote", "n", kCommand, self},
                                {"Captura rápida", "quickCapture", "k", kCommand, self},
                                {"Abrir arquivo…", "importFiles", "o", kCommand, self},
                                {"Salvar agora", "saveNow", "s", kCommand, self},
                                {"Salvar como…", "saveAsCurrentNote", "s", kCommand | kShift, self},
                                {"Copiar para WhatsApp", "copyForWhatsApp", "c", kCommand | kOption, self}});
  expectRows(submenu(main, 2), {{"Desfazer", "undo", "z", kCommand, chain},
                                {"Refazer", "redo", "z", kCommand | kShift, chain},
                                kSeparator,
                                {"Recortar", "cut", "x", kCommand, chain},
                                {"Copiar", "copy", "c", kCommand, chain},
                                {"Colar", "paste", "v", kCommand, chain},
                                {"Selecionar Tudo", "selectAll", "a", kCommand, chain}});
  expectRows(submenu(main, 3), {{"Buscar notas", "searchNotes", "p", kCommand, self}});
  expectRows(submenu(main, 4), {{"Como usar edição avançada…", "showShortcutGuide", "", kCommand, self}});
  expectRows(submenu(main, 5),
             {{"Aba anterior", "previousTab", "[", kCommand | kShift, self},
              {"Próxima aba", "nextTab", "]", kCommand | kShift, self},
              {"Mostrar todas as abas", "showAllTabs", "", kCommand, self},
              {"Reabrir aba fechada", "reopenClosedTab", "t", kCommand | kShift, self},
              kSeparator,
              {"Fechar aba…", "closeCurrentTab", "w", kCommand, self},
              {"Fechar outras abas…", "closeOtherTabs", "w", kCommand | kOption, self},
              {"Fechar abas à direita…", "closeTabsToRight", "", kCommand, self},
              {"Fechar todas as abas…", "closeAllTabs", "w", kCommand | kOption | kShift, self},
              kSeparator,
              {"Minimizar", "performMiniaturize", "m", kCommand, chain},
              {"Zoom", "performZoom", "", kCommand, chain},
              kSeparator,
              {"Fechar janela", "performClose", "w", kCommand | kShift, chain}});
}

}  // namespace
}  // namespace quendo
