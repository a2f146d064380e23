import type { Texts } from './texts';

/** All notes out and in. */
// biome-ignore format: one row per text
export const libraryTexts = {
  'cmd.exportBook': ['Exportar todas as notas como um livro Markdown…', 'Export all notes as a Markdown book…', 'Exportar todas las notas como un libro Markdown…'],
  'cmd.exportLibrary': ['Exportar todas as notas como JSON…', 'Export all notes as JSON…', 'Exportar todas las notas como JSON…'],
  'cmd.exportLibraryAndBin': ['Exportar todas as notas e a lixeira como JSON…', 'Export all notes and the bin as JSON…', 'Exportar todas las notas y la papelera como JSON…'],
  'library.fileName': ['Notas do Quendo {date}', 'Quendo notes {date}', 'Notas de Quendo {date}'],
  'library.part': ['{name} ({part} de {parts})', '{name} ({part} of {parts})', '{name} ({part} de {parts})'],
  'library.nothing': ['Não há notas para exportar', 'There are no notes to export', 'No hay notas que exportar'],
  'library.leftOut': ['Notas com mais de 20 MB que ficaram de fora: {n}', 'Notes over 20 MB that were left out: {n}', 'Notas de más de 20 MB que quedaron fuera: {n}'],
  'library.title': ['Trazer notas de outra biblioteca', 'Bring in another library', 'Traer notas de otra biblioteca'],
  'library.ask.one': ['{name} contém 1 nota do Quendo. Juntá-la às suas?', '{name} contains 1 Quendo note. Merge it with yours?', '{name} contiene 1 nota de Quendo. ¿Unirla a las tuyas?'],
  'library.ask.many': ['{name} contém {n} notas do Quendo. Juntá-las às suas?', '{name} contains {n} Quendo notes. Merge them with yours?', '{name} contiene {n} notas de Quendo. ¿Unirlas a las tuyas?'],
  'library.why': ['Nenhuma nota é apagada. Onde só um lado mudou, vale o mais novo e o texto anterior fica como versão; onde os dois mudaram, ficam as duas notas.', 'No note is deleted. Where one side changed, the newer text is used and the other becomes a version; where both changed, both notes stay.', 'No se borra ninguna nota. Si cambió un solo lado, vale el texto más nuevo y el otro queda como versión; si cambiaron los dos, quedan ambas notas.'],
  'library.do': ['Juntar', 'Merge', 'Unir'],
  'library.done': ['Biblioteca importada. Notas novas: {added}, atualizadas: {updated}, em conflito: {both}', 'Library imported. New notes: {added}, updated: {updated}, in conflict: {both}', 'Biblioteca importada. Notas nuevas: {added}, actualizadas: {updated}, en conflicto: {both}'],
  'library.same': ['Você já tem todas essas notas', 'You already have all these notes', 'Ya tienes todas esas notas'],
  'library.damaged': ['{name}: a biblioteca está danificada; nada foi alterado', '{name}: the library is damaged; nothing was changed', '{name}: la biblioteca está dañada; no se cambió nada'],
  'library.newer': ['{name}: a biblioteca é de uma versão mais nova do Quendo; nada foi alterado', '{name}: the library is from a newer version of Quendo; nothing was changed', '{name}: la biblioteca es de una versión más nueva de Quendo; no se cambió nada'],
  'library.conflict': ['{title} (conflito)', '{title} (conflict)', '{title} (conflicto)'],
  'cmd.rename': ['Renomear nota importada…', 'Rename imported note…', 'Cambiar el nombre de la nota importada…'],
  'cmd.useHeading': ['Usar a primeira linha como título', 'Use the first line as the title', 'Usar la primera línea como título'],
  'rename.title': ['Renomear nota', 'Rename note', 'Cambiar el nombre de la nota'],
  'rename.field': ['Título da nota', 'Title of the note', 'Título de la nota'],
  'rename.do': ['Renomear', 'Rename', 'Cambiar nombre'],
  'note.source': ['Cópia de {name}', 'Copy of {name}', 'Copia de {name}'],
} as const satisfies Texts;
