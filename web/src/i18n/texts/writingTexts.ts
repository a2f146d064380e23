import type { Texts } from './texts';

/** Pasting, and the commands for writing. */
// biome-ignore format: one row per text
export const writingTexts = {
  'paste.lost': ['{name} não pode ser guardado em uma nota', '{name} cannot be kept in a note', '{name} no se puede guardar en una nota'],
  'paste.lostMore.one': ['{name} e mais 1 não podem ser guardados em uma nota', '{name} and 1 more cannot be kept in a note', '{name} y 1 más no se pueden guardar en una nota'],
  'paste.lostMore.many': ['{name} e mais {n} não podem ser guardados em uma nota', '{name} and {n} more cannot be kept in a note', '{name} y {n} más no se pueden guardar en una nota'],
  'guide.pastePlain': ['Colar sem formatação', 'Paste without formatting', 'Pegar sin formato'],

  'cmd.bold': ['Negrito', 'Bold', 'Negrita'],
  'cmd.italic': ['Itálico', 'Italic', 'Cursiva'],
  'cmd.code': ['Código', 'Code', 'Código'],
  'cmd.link': ['Link', 'Link', 'Enlace'],
  'cmd.heading1': ['Título 1', 'Heading 1', 'Título 1'],
  'cmd.heading2': ['Título 2', 'Heading 2', 'Título 2'],
  'cmd.heading3': ['Título 3', 'Heading 3', 'Título 3'],
  'cmd.quote': ['Citação', 'Quote', 'Cita'],
  'cmd.list': ['Lista', 'List', 'Lista'],
  'cmd.task': ['Tarefa', 'Task', 'Tarea'],
  'cmd.focusMode': ['Modo de foco', 'Focus mode', 'Modo de concentración'],
  'cmd.typewriter': ['Manter a linha no meio da tela', 'Typewriter scrolling', 'Mantener la línea en el centro'],
  'focusMode.on': ['Modo de foco ligado', 'Focus mode is on', 'Modo de concentración activado'],
  'focusMode.off': ['Modo de foco desligado', 'Focus mode is off', 'Modo de concentración desactivado'],
  'typewriter.on': ['A linha do cursor fica no meio da tela', 'The caret’s line stays in the middle', 'La línea del cursor queda en el centro'],
  'typewriter.off': ['A linha do cursor se move livremente', 'The caret’s line moves freely', 'La línea del cursor se mueve libremente'],
} as const satisfies Texts;
