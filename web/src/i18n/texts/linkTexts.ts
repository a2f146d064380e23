import type { Texts } from './texts';

/** Tags, links between notes and the outline. */
// biome-ignore format: one row per text
export const linkTexts = {
  'cmd.followLink': ['Abrir o link ou a tag no cursor', 'Open the link or tag at the caret', 'Abrir el enlace o la etiqueta en el cursor'],
  'cmd.outline': ['Sumário da nota…', 'Outline of the note…', 'Esquema de la nota…'],

  'link.none': ['Não há link no cursor', 'There is no link at the caret', 'No hay ningún enlace en el cursor'],
  'link.notAllowed': ['Este endereço não pode ser aberto', 'This address cannot be opened', 'Esta dirección no se puede abrir'],
  'link.created': ['Nota “{title}” criada', 'Note “{title}” created', 'Nota “{title}” creada'],

  'outline.label': ['Filtrar os títulos', 'Filter the headings', 'Filtrar los títulos'],
  'outline.count.one': ['1 título', '1 heading', '1 título'],
  'outline.count.many': ['{n} títulos', '{n} headings', '{n} títulos'],
  'outline.none': ['Nenhum título com “{query}”.', 'No heading matches “{query}”.', 'Ningún título coincide con “{query}”.'],
  'outline.empty': ['A nota não tem títulos.', 'The note has no headings.', 'La nota no tiene títulos.'],

  'preview.elsewhere': ['(leva a {address})', '(leads to {address})', '(lleva a {address})'],
  'preview.userName': ['(com nome de usuário; leva a {address})', '(with a user name; leads to {address})', '(con nombre de usuario; lleva a {address})'],
} as const satisfies Texts;
