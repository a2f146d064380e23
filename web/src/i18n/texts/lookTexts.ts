import type { Texts } from './texts';

/** Settings, and what moves the parts of the window. */
// biome-ignore format: one row per text
export const lookTexts = {
  'cmd.settings': ['Configurações', 'Settings', 'Configuración'],
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
