import type { Texts } from './texts';

/** The search, the order of the list and going to a note. */
// biome-ignore format: one row per text
export const findingTexts = {
  'search.hint': ['Também: "frase exata", -sem, etiqueta:x, título:x, editado:<30d, criado:2026-11', 'Also: "exact phrase", -without, tag:x, title:x, edited:<30d, created:2026-11', 'También: "frase exacta", -sin, etiqueta:x, título:x, editado:<30d, creado:2026-11'],

  'guide.hit': ['Próximo resultado da busca na nota', 'Next match of the search in the note', 'Siguiente resultado de la búsqueda en la nota'],
  'cmd.switcher': ['Ir para a nota…', 'Go to note…', 'Ir a la nota…'],
  'switcher.label': ['Título da nota', 'Title of the note', 'Título de la nota'],
  'switcher.create': ['Criar “{title}”', 'Create “{title}”', 'Crear “{title}”'],

  'sidebar.count.one': ['1 nota', '1 note', '1 nota'],
  'sidebar.count.many': ['{n} notas', '{n} notes', '{n} notas'],
  'sidebar.selected.one': ['1 nota selecionada', '1 note selected', '1 nota seleccionada'],
  'sidebar.selected.many': ['{n} notas selecionadas', '{n} notes selected', '{n} notas seleccionadas'],
  'sort.label': ['Ordem da lista', 'Order of the list', 'Orden de la lista'],
  'sort.edited': ['Por edição', 'By last edit', 'Por edición'],
  'sort.created': ['Por criação', 'By creation', 'Por creación'],
  'sort.title': ['Por título', 'By title', 'Por título'],
  'cmd.sortEdited': ['Ordenar as notas por edição', 'Sort notes by last edit', 'Ordenar las notas por edición'],
  'cmd.sortCreated': ['Ordenar as notas por criação', 'Sort notes by creation', 'Ordenar las notas por creación'],
  'cmd.sortTitle': ['Ordenar as notas por título', 'Sort notes by title', 'Ordenar las notas por título'],
  'section.pinned': ['Fixadas', 'Pinned', 'Fijadas'],
  'section.today': ['Hoje', 'Today', 'Hoy'],
  'section.yesterday': ['Ontem', 'Yesterday', 'Ayer'],
  'section.week': ['Últimos 7 dias', 'Last 7 days', 'Últimos 7 días'],
  'rows.label': ['Notas selecionadas', 'Selected notes', 'Notas seleccionadas'],
  'rows.copyLink': ['Copiar link', 'Copy link', 'Copiar enlace'],
  'rows.linkCopied': ['Link copiado', 'Link copied', 'Enlace copiado'],
  'rows.pin': ['Fixar notas', 'Pin notes', 'Fijar notas'],
  'rows.unpin': ['Desafixar notas', 'Unpin notes', 'Dejar de fijar las notas'],
  'rows.delete': ['Apagar notas', 'Delete notes', 'Borrar notas'],
  'rows.deleted': ['{n} notas apagadas', '{n} notes deleted', '{n} notas borradas'],
  'rows.pinned': ['{n} notas fixadas no alto da lista', '{n} notes pinned to the top of the list', '{n} notas fijadas en lo alto de la lista'],
  'rows.unpinned': ['{n} notas não estão mais fixadas', '{n} notes no longer pinned', '{n} notas ya no están fijadas'],
} as const satisfies Texts;
