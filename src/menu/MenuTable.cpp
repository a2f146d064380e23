#include "menu/MenuTable.h"

#include <algorithm>
#include <array>

namespace quendo {
namespace {

constexpr std::uint32_t kCommand = kModifierCommand;
constexpr std::uint32_t kCommandShift = kModifierCommand | kModifierShift;
constexpr std::uint32_t kCommandOption = kModifierCommand | kModifierOption;
constexpr std::uint32_t kCommandOptionShift = kModifierCommand | kModifierOption | kModifierShift;

constexpr MenuRow page(std::string_view title, std::string_view action, std::string_view script,
                       std::string_view key = {}, std::uint32_t modifiers = kCommand) {
  return {title, action, key, modifiers, script};
}

/// A command the host performs without a script.
constexpr MenuRow native(std::string_view title, std::string_view action, std::string_view key = {},
                         std::uint32_t modifiers = kCommand) {
  return {title, action, key, modifiers, {}};
}

constexpr MenuRow platform(std::string_view title, std::string_view action, PlatformAction platformAction,
                           std::string_view key = {}, std::uint32_t modifiers = kCommand) {
  return {title, action, key, modifiers, {}, platformAction};
}

constexpr MenuRow kSeparator{};

using enum PlatformAction;

constexpr std::array kApplicationMenu = {
    platform("Sobre o Quendo", "orderFrontStandardAboutPanel", orderFrontStandardAboutPanel),
    native("Verificar atualizações…", "checkForUpdates"),
    native("Idioma", ""),  // Holds the language submenu.
    kSeparator,
    platform("Ocultar Quendo", "hide", hide, "h"),
    platform("Ocultar Outros", "hideOtherApplications", hideOtherApplications, "h", kCommandOption),
    kSeparator,
    platform("Sair do Quendo", "terminate", terminate, "q"),
};

constexpr std::array kFileMenu = {
    page("Nova nota", "newNote", "createNote()", "n"),
    page("Captura rápida", "quickCapture", "openCapture()", "k"),
    page("Abrir arquivo…", "importFiles", "document.getElementById('importFileInput').click()", "o"),
    page("Salvar agora", "saveNow", "flushPendingSave()", "s"),
    page("Salvar como…", "saveAsCurrentNote", "window.quendoSaveAsCurrentNote?.()", "s", kCommandShift),
    native("Copiar para WhatsApp", "copyForWhatsApp", "c", kCommandOption),
};

constexpr std::array kEditMenu = {
    platform("Desfazer", "undo", undo, "z"),
    platform("Refazer", "redo", redo, "z", kCommandShift),
    kSeparator,
    platform("Recortar", "cut", cut, "x"),
    platform("Copiar", "copy", copy, "c"),
    platform("Colar", "paste", paste, "v"),
    platform("Selecionar Tudo", "selectAll", selectAll, "a"),
};

constexpr std::array kViewMenu = {
    page("Buscar notas", "searchNotes",
         "state.sidebarMode='all';renderSidebar();setDrawer('sidebar',{focus:false});"
         "document.getElementById('searchInput').focus();document.getElementById('searchInput').select()",
         "p"),
};

constexpr std::array kShortcutsMenu = {
    page("Como usar edição avançada…", "showShortcutGuide", "window.quendoOpenShortcutGuide?.()"),
};

// Command+W closes the page's tab and Command+Shift+W the window, because tabs are closed far more often.
constexpr std::array kWindowMenu = {
    page("Aba anterior", "previousTab", "window.quendoSwitchOpenTab?.(-1)", "[", kCommandShift),
    page("Próxima aba", "nextTab", "window.quendoSwitchOpenTab?.(1)", "]", kCommandShift),
    page("Mostrar todas as abas", "showAllTabs", "window.quendoShowTabOverview?.()"),
    page("Reabrir aba fechada", "reopenClosedTab", "window.quendoReopenClosedTab?.()", "t", kCommandShift),
    kSeparator,
    page("Fechar aba…", "closeCurrentTab", "window.quendoCloseCurrentTab?.()", "w"),
    page("Fechar outras abas…", "closeOtherTabs", "window.quendoRequestCloseTabs?.('others')", "w",
         kCommandOption),
    page("Fechar abas à direita…", "closeTabsToRight", "window.quendoRequestCloseTabs?.('right')"),
    page("Fechar todas as abas…", "closeAllTabs", "window.quendoRequestCloseTabs?.('all')", "w",
         kCommandOptionShift),
    kSeparator,
    platform("Minimizar", "performMiniaturize", performMiniaturize, "m"),
    platform("Zoom", "performZoom", performZoom),  // Not translated: the same word in every language.
    kSeparator,
    platform("Fechar janela", "performClose", performClose, "w", kCommandShift),
};

constexpr MenuSection kSections[] = {
    {"Quendo", kApplicationMenu}, {"Arquivo", kFileMenu},      {"Editar", kEditMenu},
    {"Visualizar", kViewMenu},    {"Atalhos", kShortcutsMenu}, {"Janela", kWindowMenu},
};

constexpr std::array kWithoutItem = {page("", "exportMarkdown", "exportMarkdown()")};

}  // namespace

std::span<const MenuSection> menuSections() {
  return kSections;
}

std::span<const MenuRow> menuCommandsWithoutItem() {
  return kWithoutItem;
}

const MenuRow* findMenuRow(std::string_view action) {
  if (action.empty()) return nullptr;
  const auto find = [action](std::span<const MenuRow> rows) -> const MenuRow* {
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [action](const MenuRow& candidate) { return candidate.action == action; });
    return row == rows.end() ? nullptr : &*row;
  };
  for (const MenuSection& section : kSections) {
    if (const MenuRow* row = find(section.rows)) return row;
  }
  return find(kWithoutItem);
}

}  // namespace quendo
