import type { Texts } from './texts';

/** Tags, links between notes and the outline. */
// biome-ignore format: one row per text
export const linkTexts = {
  'cmd.followLink': ['Abrir o link ou a tag no cursor', 'Open the link or tag at the caret', 'Abrir el enlace o la etiqueta en el cursor'],
  'cmd.outline': ['Sumário da nota…', 'Outline of the note…', 'Esquema de la nota…'],

  'cmd.renameTag': ['Renomear uma tag…', 'Rename a tag…', 'Renombrar una etiqueta…'],

  'cmd.backlinks': ['Links para esta nota', 'Links to this note', 'Enlaces a esta nota'],

  'backlinks.label': ['Links para esta nota', 'Links to this note', 'Enlaces a esta nota'],
  'backlinks.count.one': ['1 nota leva a esta', '1 note links here', '1 nota enlaza aquí'],
  'backlinks.count.many': ['{n} notas levam a esta', '{n} notes link here', '{n} notas enlazan aquí'],
  'backlinks.none': ['Nenhuma nota leva a esta', 'No note links here', 'Ninguna nota enlaza aquí'],
  'backlinks.findMentions': ['Procurar menções sem link', 'Look for mentions without a link', 'Buscar menciones sin enlace'],
  'backlinks.mentions.one': ['1 menção sem link', '1 mention without a link', '1 mención sin enlace'],
  'backlinks.mentions.many': ['{n} menções sem link', '{n} mentions without a link', '{n} menciones sin enlace'],
  'backlinks.noMentions': ['Nenhuma menção sem link', 'No mentions without a link', 'Ninguna mención sin enlace'],

  'names.label': ['Sugestões', 'Suggestions', 'Sugerencias'],

  'tags.title': ['Tags', 'Tags', 'Etiquetas'],
  'tags.none': ['Nenhuma nota tem tags', 'No note has tags', 'Ninguna nota tiene etiquetas'],
  'tags.menu': ['Ações da tag', 'Tag actions', 'Acciones de la etiqueta'],
  'tags.show': ['Mostrar as notas', 'Show its notes', 'Mostrar las notas'],
  'tags.rename': ['Renomear…', 'Rename…', 'Renombrar…'],
  'tags.choose': ['Tag que vai mudar de nome', 'Tag to rename', 'Etiqueta que cambia de nombre'],
  'tags.found.one': ['1 tag', '1 tag', '1 etiqueta'],
  'tags.found.many': ['{n} tags', '{n} tags', '{n} etiquetas'],
  'tags.notFound': ['Nenhuma tag com “{query}”.', 'No tag matches “{query}”.', 'Ninguna etiqueta coincide con “{query}”.'],
  'tags.renameTitle': ['Renomear uma tag', 'Rename a tag', 'Renombrar una etiqueta'],
  'tags.newName': ['Novo nome da tag', 'New name of the tag', 'Nuevo nombre de la etiqueta'],
  'tags.badName': ['Use letras, números, “_” e “-”, com “/” entre os níveis e ao menos uma letra.', 'Use letters, digits, “_” and “-”, with “/” between levels and at least one letter.', 'Usa letras, números, “_” y “-”, con “/” entre niveles y al menos una letra.'],
  'tags.renameWhat': ['Troca #{name} em todas as notas', 'Replaces #{name} in all notes', 'Cambia #{name} en todas las notas'],
  'tags.renamed.one': ['Tag trocada em 1 nota', 'Tag renamed in 1 note', 'Etiqueta cambiada en 1 nota'],
  'tags.renamed.many': ['Tag trocada em {n} notas', 'Tag renamed in {n} notes', 'Etiqueta cambiada en {n} notas'],
  'links.updated.one': ['Links atualizados em 1 nota', 'Links updated in 1 note', 'Enlaces actualizados en 1 nota'],
  'links.updated.many': ['Links atualizados em {n} notas', 'Links updated in {n} notes', 'Enlaces actualizados en {n} notas'],

  'link.none': ['Não há link no cursor', 'There is no link at the caret', 'No hay ningún enlace en el cursor'],
  'link.notAllowed': ['Este endereço não pode ser aberto', 'This address cannot be opened', 'Esta dirección no se puede abrir'],
  'link.created': ['Nota “{title}” criada', 'Note “{title}” created', 'Nota “{title}” creada'],

  'outline.title': ['Sumário da nota', 'Outline of the note', 'Esquema de la nota'],
  'outline.label': ['Filtrar os títulos', 'Filter the headings', 'Filtrar los títulos'],
  'outline.count.one': ['1 título', '1 heading', '1 título'],
  'outline.count.many': ['{n} títulos', '{n} headings', '{n} títulos'],
  'outline.none': ['Nenhum título com “{query}”.', 'No heading matches “{query}”.', 'Ningún título coincide con “{query}”.'],
  'outline.empty': ['A nota não tem títulos.', 'The note has no headings.', 'La nota no tiene títulos.'],

  'preview.elsewhere': ['(leva a {address})', '(leads to {address})', '(lleva a {address})'],
  'preview.userName': ['(com nome de usuário; leva a {address})', '(with a user name; leads to {address})', '(con nombre de usuario; lleva a {address})'],
} as const satisfies Texts;
