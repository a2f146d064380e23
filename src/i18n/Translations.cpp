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
    Translation{"Entrada padrão", "Standard input", "Entrada estándar"},
    // On the command line.
    Translation{"Uso: quendo [OPÇÃO]... [ARQUIVO]...", "Usage: quendo [OPTION]... [FILE]...",
                "Uso: quendo [OPCIÓN]... [ARCHIVO]..."},
    Translation{"Abre cada ARQUIVO, um caminho ou uma URL file:, em uma aba. Se ARQUIVO é -,\n"
                "a entrada padrão é lida até o fim e se torna uma nova nota. Se o Quendo já\n"
                "está aberto, a janela dele recebe tudo.",
                "Opens each FILE, a path or a file: URL, in a tab. When FILE is -, standard input\n"
                "is read to its end and becomes a new note. Where Quendo runs already, its window\n"
                "takes everything.",
                "Abre cada ARCHIVO, una ruta o una URL file:, en una pestaña. Si ARCHIVO es -,\n"
                "la entrada estándar se lee hasta el final y se convierte en una nota nueva. Si\n"
                "Quendo ya está abierto, su ventana lo recibe todo."},
    Translation{"MODO", "MODE", "MODO"},
    Translation{"abre uma nova nota", "open a new note", "abre una nota nueva"},
    Translation{"o que desenha a janela: auto, card (a placa de vídeo) ou processor",
                "what draws the window: auto, card (the graphics card) or processor",
                "qué dibuja la ventana: auto, card (la tarjeta gráfica) o processor"},
    Translation{"continua onde o sistema não permite isolar a página em uma sandbox",
                "go on where the system does not let the page be sandboxed",
                "continúa donde el sistema no permite aislar la página en una sandbox"},
    Translation{"mostra a versão e sai", "print the version and exit", "muestra la versión y termina"},
    Translation{"mostra esta ajuda e sai", "print this help and exit", "muestra esta ayuda y termina"},
    Translation{"Status de saída:\n"
                "  0  tudo certo; um Quendo já aberto recebeu ao menos um ARQUIVO\n"
                "  1  o Quendo não pôde iniciar; a saída de erro diz por quê\n"
                "  2  o Quendo já aberto não recebeu nenhum ARQUIVO, ou o texto da entrada\n"
                "     padrão não foi aberto",
                "Exit status:\n"
                "  0  all went well; a Quendo that runs already took at least one FILE\n"
                "  1  Quendo could not start; standard error says why\n"
                "  2  a Quendo that runs already took no FILE, or the text of standard input\n"
                "     was not opened",
                "Estado de salida:\n"
                "  0  todo bien; un Quendo ya abierto recibió al menos un ARCHIVO\n"
                "  1  Quendo no pudo iniciarse; la salida de error dice por qué\n"
                "  2  el Quendo ya abierto no recibió ningún ARCHIVO, o el texto de la entrada\n"
                "     estándar no se abrió"},
    Translation{"quendo: opção desconhecida: {argument}", "quendo: unknown option: {argument}",
                "quendo: opción desconocida: {argument}"},
    Translation{"quendo: a opção não aceita um valor: {argument}",
                "quendo: the option takes no value: {argument}",
                "quendo: la opción no admite un valor: {argument}"},
    Translation{"quendo: --rendering é auto, card ou processor",
                "quendo: --rendering is auto, card or processor",
                "quendo: --rendering es auto, card o processor"},
    Translation{"Veja quendo --help para mais informações.", "See quendo --help for more information.",
                "Consulte quendo --help para más información."},
    Translation{"quendo: a entrada padrão não pôde ser lida: {reason}",
                "quendo: standard input could not be read: {reason}",
                "quendo: no se pudo leer la entrada estándar: {reason}"},
    Translation{"quendo: o texto da entrada padrão não foi aberto",
                "quendo: the text of standard input was not opened",
                "quendo: el texto de la entrada estándar no se abrió"},
    Translation{"quendo: nenhum dos arquivos foi aberto", "quendo: none of the files was opened",
                "quendo: no se abrió ninguno de los archivos"},
    Translation{
        "quendo: o sistema não permite isolar a página em uma sandbox (não há namespaces de usuário); "
        "inicie com --without-web-sandbox para continuar sem ela.",
        "quendo: the system does not let the page be sandboxed (user namespaces are not permitted); "
        "start with --without-web-sandbox to go on without.",
        "quendo: el sistema no permite aislar la página en una sandbox (no hay espacios de nombres de "
        "usuario); inicie con --without-web-sandbox para continuar sin ella."},
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

std::string_view translated(std::string_view portuguese, NativeLanguage language) {
  const Translation* row = language == NativeLanguage::pt ? nullptr : findTranslation(portuguese);
  if (!row) return portuguese;
  return language == NativeLanguage::en ? row->english : row->spanish;
}

}  // namespace quendo
