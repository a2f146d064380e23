import type { Texts } from './texts';

/** Settings, and what moves the parts of the window. */
// biome-ignore format: one row per text
export const lookTexts = {
  'cmd.settings': ['Configurações', 'Settings', 'Configuración'],
  'cmd.moveTabLeft': ['Mover a aba para a esquerda', 'Move tab left', 'Mover la pestaña a la izquierda'],
  'cmd.moveTabRight': ['Mover a aba para a direita', 'Move tab right', 'Mover la pestaña a la derecha'],
  'tabs.all': ['Todas as abas', 'All tabs', 'Todas las pestañas'],
  'tabs.menu': ['Ações desta aba', 'Actions for this tab', 'Acciones de esta pestaña'],
  'import.listed.one': ['Mais 1 arquivo está só na lista', '1 more file is only in the list', '1 archivo más está solo en la lista'],
  'import.listed.many': ['Mais {n} arquivos estão só na lista', '{n} more files are only in the list', '{n} archivos más están solo en la lista'],
  'sidebar.width': ['Largura da lista de notas', 'Width of the note list', 'Ancho de la lista de notas'],
  'settings.face': ['Fonte do texto', 'Text font', 'Fuente del texto'],
  'settings.sans': ['Do sistema', 'The desktop’s', 'La del sistema'],
  'settings.serif': ['Com serifa', 'Serif', 'Con serifa'],
  'settings.mono': ['Monoespaçada', 'Monospaced', 'Monoespaciada'],
  'settings.size': ['Tamanho do texto', 'Text size', 'Tamaño del texto'],
  'settings.lines': ['Largura das linhas', 'Line width', 'Ancho de las líneas'],
  'settings.narrow': ['Estreita', 'Narrow', 'Estrecho'],
  'settings.medium': ['Média', 'Medium', 'Medio'],
  'settings.wide': ['Larga', 'Wide', 'Ancho'],
} as const satisfies Texts;
