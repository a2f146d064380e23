import type { Texts } from './texts';

/** The search, the order of the list and going to a note. */
// biome-ignore format: one row per text
export const findingTexts = {
  'search.hint': ['Também: "frase exata", -sem, etiqueta:x, título:x, editado:<30d, criado:2026-11', 'Also: "exact phrase", -without, tag:x, title:x, edited:<30d, created:2026-11', 'También: "frase exacta", -sin, etiqueta:x, título:x, editado:<30d, creado:2026-11'],

  'cmd.switcher': ['Ir para a nota…', 'Go to note…', 'Ir a la nota…'],
  'switcher.label': ['Título da nota', 'Title of the note', 'Título de la nota'],
  'switcher.create': ['Criar “{title}”', 'Create “{title}”', 'Crear “{title}”'],
} as const satisfies Texts;
