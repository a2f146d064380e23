import type { Texts } from './texts';

/** Pasting, and the commands for writing. */
// biome-ignore format: one row per text
export const writingTexts = {
  'paste.lost': ['{name} não pode ser guardado em uma nota', '{name} cannot be kept in a note', '{name} no se puede guardar en una nota'],
  'paste.lostMore.one': ['{name} e mais 1 não podem ser guardados em uma nota', '{name} and 1 more cannot be kept in a note', '{name} y 1 más no se pueden guardar en una nota'],
  'paste.lostMore.many': ['{name} e mais {n} não podem ser guardados em uma nota', '{name} and {n} more cannot be kept in a note', '{name} y {n} más no se pueden guardar en una nota'],
  'guide.pastePlain': ['Colar sem formatação', 'Paste without formatting', 'Pegar sin formato'],
} as const satisfies Texts;
