#include "i18n/Translations.h"

#include <algorithm>
#include <array>

namespace quendo {
namespace {

constexpr std::array kTranslations = {
    Translation{"Sobre o Quendo", "About Quendo", "Acerca de Quendo"},
    Translation{"Verificar atualizações…", "Check for Updates…", "Buscar actualizaciones…"},
    Translation{"Idioma", "Language", "Idioma"},
    Translation{"Ocultar Quendo", "Hide Quendo", "Ocultar Quendo"},
    Translation{"Ocultar Outros", "Hide Others", "Ocultar otros"},
    Translation{"Sair do Quendo", "Quit Quendo", "Salir de Quendo"},
    Translation{"Arquivo", "File", "Archivo"},
    Translation{"Nova nota", "New Note", "Nueva nota"},
    Translation{"Captura rápida", "Quick Capture", "Captura rápida"},
    Translation{"Abrir arquivo…", "Open File…", "Abrir archivo…"},
    Translation{"Salvar agora", "Save Now", "Guardar ahora"},
    Translation{"Salvar como…", "Save As…", "Guardar como…"},
    Translation{"Copiar para WhatsApp", "Copy for WhatsApp", "Copiar para WhatsApp"},
    Translation{"Editar", "Edit", "Editar"},
    Translation{"Desfazer", "Undo", "Deshacer"},
    Translation{"Refazer", "Redo", "Rehacer"},
    Translation{"Recortar", "Cut", "Cortar"},
    Translation{"Copiar", "Copy", "Copiar"},
    Translation{"Colar", "Paste", "Pegar"},
    Translation{"Selecionar Tudo", "Select All", "Seleccionar todo"},
    Translation{"Visualizar", "View", "Ver"},
    Translation{"Buscar notas", "Search Notes", "Buscar notas"},
    Translation{"Atalhos", "Shortcuts", "Atajos"},
    Translation{"Como usar edição avançada…", "How to Use Advanced Editing…",
                "Cómo usar la edición avanzada…"},
    Translation{"Janela", "Window", "Ventana"},
    Translation{"Aba anterior", "Previous Tab", "Pestaña anterior"},
    Translation{"Próxima aba", "Next Tab", "Pestaña siguiente"},
    Translation{"Mostrar todas as abas", "Show All Tabs", "Mostrar todas las pestañas"},
    Translation{"Reabrir aba fechada", "Reopen Closed Tab", "Reabrir pestaña cerrada"},
    Translation{"Fechar aba…", "Close Tab…", "Cerrar pestaña…"},
    Translation{"Fechar outras abas…", "Close Other Tabs…", "Cerrar otras pestañas…"},
    Translation{"Fechar abas à direita…", "Close Tabs to the Right…", "Cerrar pestañas a la derecha…"},
    Translation{"Fechar todas as abas…", "Close All Tabs…", "Cerrar todas las pestañas…"},
    Translation{"Minimizar", "Minimize", "Minimizar"},
    Translation{"Fechar janela", "Close Window", "Cerrar ventana"},
    Translation{"Continuar editando", "Continue Editing", "Continuar editando"},
    Translation{"Cancelar", "Cancel", "Cancelar"},
    Translation{"Abrir", "Open", "Abrir"},
    Translation{"Salvar", "Save", "Guardar"},
    Translation{"Exportar", "Export", "Exportar"},
    Translation{"Salvar nota como", "Save Note As", "Guardar nota como"},
    Translation{"Extensão:", "Extension:", "Extensión:"},
    Translation{"Personalizada (digite no nome)", "Custom (type it in the name)",
                "Personalizada (escríbela en el nombre)"},
    Translation{"Abrir arquivos de texto no Quendo", "Open Text Files in Quendo",
                "Abrir archivos de texto en Quendo"},
    Translation{"Baixar atualização", "Download Update", "Descargar actualización"},
    Translation{"Lembrar depois", "Remind Me Later", "Recordar más tarde"},
    Translation{"O Quendo não fechou", "Quendo Did Not Quit", "Quendo no se cerró"},
    Translation{"Este arquivo não foi aberto", "This File Was Not Opened", "Este archivo no se abrió"},
    Translation{"Alguns arquivos não foram abertos", "Some Files Were Not Opened",
                "Algunos archivos no se abrieron"},
    Translation{"O Quendo não pôde iniciar", "Quendo Could Not Start", "Quendo no pudo iniciarse"},
    Translation{"Exportar arquivo de texto", "Export Text File", "Exportar archivo de texto"},
    Translation{"Exportar nota em Markdown", "Export Markdown Note", "Exportar nota en Markdown"},
    Translation{"Exportação cancelada", "Export canceled", "Exportación cancelada"},
    Translation{"Arquivo exportado", "File exported", "Archivo exportado"},
    Translation{"Markdown exportado", "Markdown exported", "Markdown exportado"},
    Translation{"Não foi possível exportar o arquivo", "Could not export the file",
                "No se pudo exportar el archivo"},
    Translation{"Não foi possível verificar atualizações", "Could not check for updates",
                "No se pudo buscar actualizaciones"},
    Translation{"Você já está na versão mais recente", "You already have the latest version",
                "Ya tienes la versión más reciente"},
    Translation{"Não foi possível copiar para o WhatsApp", "Could not copy for WhatsApp",
                "No se pudo copiar para WhatsApp"},
    Translation{"A ação não pôde ser concluída", "The action could not be completed",
                "No se pudo completar la acción"},
};

constexpr std::array kHostTexts = {
    Translation{"Enviar por e-mail", "Send by E-mail", "Enviar por correo"},
    Translation{"Abrir com", "Open with", "Abrir con"},
    Translation{"Copiar arquivo", "Copy File", "Copiar archivo"},
    Translation{"Copiar texto", "Copy Text", "Copiar texto"},
    Translation{"Copiar link", "Copy Link", "Copiar enlace"},
    Translation{"O Quendo está aberto em outra sessão", "Quendo Is Open in Another Session",
                "Quendo está abierto en otra sesión"},
    Translation{"Feche-o lá. Suas notas serão abertas aqui em seguida.",
                "Close it there. Your notes will then open here.",
                "Ciérralo allí. Tus notas se abrirán aquí a continuación."},
    Translation{"O Quendo não encontrou nenhuma tela para abrir sua janela; inicie-o em uma sessão gráfica.",
                "Quendo found no display to open its window on; start it in a graphical session.",
                "Quendo no encontró ninguna pantalla para abrir su ventana; inícialo en una sesión gráfica."},
    Translation{
        "O Quendo não encontrou nenhuma fonte para mostrar texto; instale uma, por exemplo DejaVu Sans.",
        "Quendo found no font to show text with; install one, for example DejaVu Sans.",
        "Quendo no encontró ninguna fuente para mostrar texto; instala una, por ejemplo DejaVu Sans."},
    Translation{"O Quendo não sabe onde guardar suas notas; defina HOME ou XDG_DATA_HOME.",
                "Quendo does not know where to keep your notes; set HOME or XDG_DATA_HOME.",
                "Quendo no sabe dónde guardar tus notas; define HOME o XDG_DATA_HOME."},
    Translation{"Quendo {version} está disponível", "Quendo {version} is available",
                "Quendo {version} está disponible"},
    Translation{"Você está usando a versão {version}. Atualize para receber as melhorias mais recentes.",
                "You are using version {version}. Update to get the latest improvements.",
                "Estás usando la versión {version}. Actualiza para recibir las mejoras más recientes."},
};

constexpr std::array<std::string_view, 24> kPortugueseOnly = {
    // Fatal errors and the recovery of the page.
    "Os recursos do aplicativo não foram encontrados.",
    "Falha ao abrir a interface: ",
    "Falha ao carregar a interface: ",
    "O processo da interface foi encerrado e os recursos locais não foram encontrados.",
    "Interface recuperada · suas notas foram restauradas",
    // Why a quit was cancelled.
    "O editor não respondeu a tempo. O Quendo permaneceu aberto para não perder seu texto.",
    "Não foi possível preparar o rascunho para gravação. Nada foi fechado.",
    "Não foi possível gravar o rascunho no disco. Libere espaço e tente novamente.",
    "A gravação no disco demorou demais. O Quendo permaneceu aberto para não perder seu texto.",
    // What became of opened files.
    ": excede o limite de ",
    ": selecione um arquivo, não uma pasta",
    ": o arquivo não pôde ser lido",
    ": não parece ser um arquivo de texto",
    ": não foi possível ler o arquivo",
    ": o conjunto selecionado ultrapassa 60 MB",
    "A interface não conseguiu criar as abas. Os arquivos continuam aguardando no Quendo.",
    "Arquivo sem nome",
    " arquivo(s).",
    // Save As, the clipboard and update checks.
    "Salvamento cancelado",
    "Não foi possível salvar o arquivo",
    "Salvo como ",
    "Texto copiado",
    "Markdown copiado",
    "A verificação já está em andamento",
};

}  // namespace

std::span<const Translation> allTranslations() {
  return kTranslations;
}

std::span<const Translation> hostTexts() {
  return kHostTexts;
}

std::span<const std::string_view> portugueseOnlyTexts() {
  return kPortugueseOnly;
}

// Linear search is enough: texts are looked up when a menu or a panel is built.
const Translation* findTranslation(std::string_view portuguese) {
  for (const auto table : {allTranslations(), hostTexts()}) {
    const auto row = std::ranges::find(table, portuguese, &Translation::portuguese);
    if (row != table.end()) return &*row;
  }
  return nullptr;
}

}  // namespace quendo
