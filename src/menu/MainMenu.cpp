#include "menu/MainMenu.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quendo {
namespace {

constexpr std::uint32_t kCommand = kModifierCommand;
constexpr std::uint32_t kCommandShift = kModifierCommand | kModifierShift;
constexpr std::uint32_t kCommandOption = kModifierCommand | kModifierOption;
constexpr std::uint32_t kCommandOptionShift = kModifierCommand | kModifierOption | kModifierShift;

/// Writes the menus of one language. The tables below read title, action, key, modifiers.
class MenuWriter {
 public:
  explicit MenuWriter(const Localization& localization) : localization_(localization) {}

  std::string tr(std::string_view text) const { return localization_.tr(text); }

  MenuItem hostItem(std::string_view title, MenuAction action, std::string key = {},
                    std::uint32_t modifiers = kCommand) const {
    MenuItem item = platformItem(title, action, std::move(key), modifiers);
    item.target = MenuTarget::host;
    return item;
  }

  MenuItem platformItem(std::string_view title, MenuAction action, std::string key = {},
                        std::uint32_t modifiers = kCommand) const {
    MenuItem item;
    item.title = tr(title);
    item.action = action;
    item.keyEquivalent = std::move(key);
    item.modifiers = modifiers;
    return item;
  }

  static MenuItem separator() {
    MenuItem item;
    item.separator = true;
    return item;
  }

  /// An item that only carries a submenu. Those of the menu bar have no title of their own.
  static MenuItem submenuItem(std::string title, std::shared_ptr<const Menu> submenu) {
    MenuItem item;
    item.title = std::move(title);
    item.submenu = std::move(submenu);
    return item;
  }

  static std::shared_ptr<const Menu> menu(std::string title, std::vector<MenuItem> items) {
    return std::make_shared<const Menu>(Menu{std::move(title), std::move(items)});
  }

 private:
  const Localization& localization_;
};

std::string_view displayName(NativeLanguage language) {
  switch (language) {
    case NativeLanguage::en:
      return "English";
    case NativeLanguage::es:
      return "Español";
    case NativeLanguage::pt:
      break;
  }
  return "Português";
}

std::shared_ptr<const Menu> languageMenu(const MenuWriter& writer, NativeLanguage current) {
  std::vector<MenuItem> items;
  for (const NativeLanguage language : kAllLanguages) {
    MenuItem item;
    item.title = displayName(language);
    item.action = MenuAction::changeLanguage;
    item.target = MenuTarget::host;
    item.representedObject = rawValue(language);
    item.on = language == current;
    items.push_back(std::move(item));
  }
  return MenuWriter::menu(writer.tr("Idioma"), std::move(items));
}

std::shared_ptr<const Menu> applicationMenu(const MenuWriter& writer, NativeLanguage current) {
  return MenuWriter::menu(
      "Quendo",
      {writer.platformItem("Sobre o Quendo", MenuAction::orderFrontStandardAboutPanel),
       writer.hostItem("Verificar atualizações…", MenuAction::checkForUpdates),
       MenuWriter::submenuItem(writer.tr("Idioma"), languageMenu(writer, current)), MenuWriter::separator(),
       writer.platformItem("Ocultar Quendo", MenuAction::hide, "h"),
       writer.platformItem("Ocultar Outros", MenuAction::hideOtherApplications, "h", kCommandOption),
       MenuWriter::separator(), writer.platformItem("Sair do Quendo", MenuAction::terminate, "q")});
}

std::shared_ptr<const Menu> fileMenu(const MenuWriter& writer) {
  return MenuWriter::menu(
      writer.tr("Arquivo"),
      {writer.hostItem("Nova nota", MenuAction::newNote, "n"),
       writer.hostItem("Captura rápida", MenuAction::quickCapture, "k"),
       writer.hostItem("Abrir arquivo…", MenuAction::importFiles, "o"),
       writer.hostItem("Salvar agora", MenuAction::saveNow, "s"),
       writer.hostItem("Salvar como…", MenuAction::saveAsCurrentNote, "s", kCommandShift),
       writer.hostItem("Copiar para WhatsApp", MenuAction::copyForWhatsApp, "c", kCommandOption)});
}

std::shared_ptr<const Menu> editMenu(const MenuWriter& writer) {
  return MenuWriter::menu(writer.tr("Editar"),
                          {writer.platformItem("Desfazer", MenuAction::undo, "z"),
                           writer.platformItem("Refazer", MenuAction::redo, "z", kCommandShift),
                           MenuWriter::separator(), writer.platformItem("Recortar", MenuAction::cut, "x"),
                           writer.platformItem("Copiar", MenuAction::copy, "c"),
                           writer.platformItem("Colar", MenuAction::paste, "v"),
                           writer.platformItem("Selecionar Tudo", MenuAction::selectAll, "a")});
}

std::shared_ptr<const Menu> viewMenu(const MenuWriter& writer) {
  return MenuWriter::menu(writer.tr("Visualizar"),
                          {writer.hostItem("Buscar notas", MenuAction::searchNotes, "p")});
}

std::shared_ptr<const Menu> shortcutsMenu(const MenuWriter& writer) {
  return MenuWriter::menu(writer.tr("Atalhos"),
                          {writer.hostItem("Como usar edição avançada…", MenuAction::showShortcutGuide)});
}

// Command+W closes the page's tab and Command+Shift+W the window: tabs are closed far more often.
std::shared_ptr<const Menu> windowMenu(const MenuWriter& writer) {
  MenuItem zoom;
  zoom.title = "Zoom";
  zoom.action = MenuAction::performZoom;
  return MenuWriter::menu(
      writer.tr("Janela"),
      {writer.hostItem("Aba anterior", MenuAction::previousTab, "[", kCommandShift),
       writer.hostItem("Próxima aba", MenuAction::nextTab, "]", kCommandShift),
       writer.hostItem("Mostrar todas as abas", MenuAction::showAllTabs),
       writer.hostItem("Reabrir aba fechada", MenuAction::reopenClosedTab, "t", kCommandShift),
       MenuWriter::separator(), writer.hostItem("Fechar aba…", MenuAction::closeCurrentTab, "w"),
       writer.hostItem("Fechar outras abas…", MenuAction::closeOtherTabs, "w", kCommandOption),
       writer.hostItem("Fechar abas à direita…", MenuAction::closeTabsToRight),
       writer.hostItem("Fechar todas as abas…", MenuAction::closeAllTabs, "w", kCommandOptionShift),
       MenuWriter::separator(), writer.platformItem("Minimizar", MenuAction::performMiniaturize, "m"),
       std::move(zoom), MenuWriter::separator(),
       writer.platformItem("Fechar janela", MenuAction::performClose, "w", kCommandShift)});
}

}  // namespace

MainMenu makeMainMenu(const Localization& localization) {
  const MenuWriter writer(localization);
  MainMenu main;
  main.windowsMenu = windowMenu(writer);
  main.menu = MenuWriter::menu(
      "Main Menu",
      {MenuWriter::submenuItem({}, applicationMenu(writer, localization.current())),
       MenuWriter::submenuItem({}, fileMenu(writer)), MenuWriter::submenuItem({}, editMenu(writer)),
       MenuWriter::submenuItem({}, viewMenu(writer)), MenuWriter::submenuItem({}, shortcutsMenu(writer)),
       MenuWriter::submenuItem({}, main.windowsMenu)});
  return main;
}

}  // namespace quendo
