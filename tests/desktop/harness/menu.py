"""The menu as it must be, written down a second time: titles in three languages, keys, what each item does.

Kept apart from the program's own tables on purpose: a slip there must not repeat itself here.
"""

from dataclasses import dataclass

LANGUAGES = ("pt", "en", "es")


@dataclass(frozen=True)
class Item:
    """One item. `key` is in the notation of `desktop.press`; `records` are the entries its command leaves in the
    recording page's journal, in order, empty for commands of the host itself."""

    titles: tuple
    action: str
    key: str = ""
    records: tuple = ()

    def title(self, language):
        return self.titles[LANGUAGES.index(language)]

    @property
    def needs_page(self):
        return bool(self.records)


@dataclass(frozen=True)
class Menu:
    """One menu of the bar, its items in order, without separators."""

    titles: tuple
    items: tuple

    def title(self, language):
        return self.titles[LANGUAGES.index(language)]


def _same(title):
    return (title, title, title)


LANGUAGE_TITLES = ("Idioma", "Language", "Idioma")
LANGUAGE_NAMES = {"pt": "Português", "en": "English", "es": "Español"}

_SEARCH = ("sidebarMode=all", "renderSidebar", "setDrawer sidebar false", "searchInput focused and selected")

QUENDO = Menu(_same("Quendo"), (
    Item(("Sobre o Quendo", "About Quendo", "Acerca de Quendo"), "orderFrontStandardAboutPanel"),
    Item(("Verificar atualizações…", "Check for Updates…", "Buscar actualizaciones…"), "checkForUpdates"),
    Item(LANGUAGE_TITLES, ""),
    Item(("Ocultar Quendo", "Hide Quendo", "Ocultar Quendo"), "hide"),
    Item(("Ocultar Outros", "Hide Others", "Ocultar otros"), "hideOtherApplications"),
    Item(("Sair do Quendo", "Quit Quendo", "Salir de Quendo"), "terminate", "ctrl+q"),
))
FILE = Menu(("Arquivo", "File", "Archivo"), (
    Item(("Nova nota", "New Note", "Nueva nota"), "newNote", "ctrl+n", ("createNote",)),
    Item(("Captura rápida", "Quick Capture", "Captura rápida"), "quickCapture", "ctrl+k", ("openCapture",)),
    Item(("Abrir arquivo…", "Open File…", "Abrir archivo…"), "importFiles", "ctrl+o",
         ("importFileInput clicked",)),
    Item(("Salvar agora", "Save Now", "Guardar ahora"), "saveNow", "ctrl+s", ("flushPendingSave",)),
    Item(("Salvar como…", "Save As…", "Guardar como…"), "saveAsCurrentNote", "ctrl+shift+s",
         ("quendoSaveAsCurrentNote",)),
    Item(("Copiar para WhatsApp", "Copy for WhatsApp", "Copiar para WhatsApp"), "copyForWhatsApp",
         "ctrl+alt+c", ("quendoCopyCurrentNoteForWhatsApp",)),
))
EDIT = Menu(("Editar", "Edit", "Editar"), (
    Item(("Desfazer", "Undo", "Deshacer"), "undo", "ctrl+z"),
    Item(("Refazer", "Redo", "Rehacer"), "redo", "ctrl+shift+z"),
    Item(("Recortar", "Cut", "Cortar"), "cut", "ctrl+x"),
    Item(("Copiar", "Copy", "Copiar"), "copy", "ctrl+c"),
    Item(("Colar", "Paste", "Pegar"), "paste", "ctrl+v"),
    Item(("Selecionar Tudo", "Select All", "Seleccionar todo"), "selectAll", "ctrl+a"),
))
VIEW = Menu(("Visualizar", "View", "Ver"), (
    Item(("Buscar notas", "Search Notes", "Buscar notas"), "searchNotes", "ctrl+p", _SEARCH),
))
SHORTCUTS = Menu(("Atalhos", "Shortcuts", "Atajos"), (
    Item(("Como usar edição avançada…", "How to Use Advanced Editing…", "Cómo usar la edición avanzada…"),
         "showShortcutGuide", "", ("quendoOpenShortcutGuide",)),
))
WINDOW = Menu(("Janela", "Window", "Ventana"), (
    Item(("Aba anterior", "Previous Tab", "Pestaña anterior"), "previousTab", "ctrl+shift+bracketleft",
         ("quendoSwitchOpenTab -1",)),
    Item(("Próxima aba", "Next Tab", "Pestaña siguiente"), "nextTab", "ctrl+shift+bracketright",
         ("quendoSwitchOpenTab 1",)),
    Item(("Mostrar todas as abas", "Show All Tabs", "Mostrar todas las pestañas"), "showAllTabs", "",
         ("quendoShowTabOverview",)),
    Item(("Reabrir aba fechada", "Reopen Closed Tab", "Reabrir pestaña cerrada"), "reopenClosedTab",
         "ctrl+shift+t", ("quendoReopenClosedTab",)),
    Item(("Fechar aba…", "Close Tab…", "Cerrar pestaña…"), "closeCurrentTab", "ctrl+w",
         ("quendoCloseCurrentTab",)),
    Item(("Fechar outras abas…", "Close Other Tabs…", "Cerrar otras pestañas…"), "closeOtherTabs", "ctrl+alt+w",
         ("quendoRequestCloseTabs others",)),
    Item(("Fechar abas à direita…", "Close Tabs to the Right…", "Cerrar pestañas a la derecha…"),
         "closeTabsToRight", "", ("quendoRequestCloseTabs right",)),
    Item(("Fechar todas as abas…", "Close All Tabs…", "Cerrar todas las pestañas…"), "closeAllTabs",
         "ctrl+shift+alt+w", ("quendoRequestCloseTabs all",)),
    Item(("Minimizar", "Minimize", "Minimizar"), "performMiniaturize", "ctrl+m"),
    Item(_same("Zoom"), "performZoom"),
    Item(("Fechar janela", "Close Window", "Cerrar ventana"), "performClose", "ctrl+shift+w"),
))

BAR = (QUENDO, FILE, EDIT, VIEW, SHORTCUTS, WINDOW)

# (menu, item) of every command that runs something in the page.
PAGE_COMMANDS = tuple((menu, item) for menu in BAR for item in menu.items if item.needs_page)
