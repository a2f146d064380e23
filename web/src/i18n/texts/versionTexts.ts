import type { Texts } from './texts';

/** The versions of a note. */
// biome-ignore format: one row per text
export const versionTexts = {
  'cmd.versions': ['Versões da nota…', 'Versions of the note…', 'Versiones de la nota…'],
  'versions.title': ['Versões da nota', 'Versions of the note', 'Versiones de la nota'],
  'versions.list': ['Versões anteriores', 'Earlier versions', 'Versiones anteriores'],
  'versions.differences': ['O que mudou desde então', 'What has changed since', 'Lo que ha cambiado desde entonces'],
  'versions.nothing': ['Ainda não há versões. Enquanto você escreve, uma é guardada a cada dez minutos, e sempre antes de um grande trecho ser apagado.', 'There are no versions yet. While you write, one is kept every ten minutes, and always before a large part is deleted.', 'Todavía no hay versiones. Mientras escribes, se guarda una cada diez minutos, y siempre antes de borrar una parte grande.'],
  'versions.extent': ['Depois: +{added} −{removed} caracteres', 'Since then: +{added} −{removed} characters', 'Después: +{added} −{removed} caracteres'],
  'versions.guarded': ['Antes de uma grande exclusão', 'Before a large deletion', 'Antes de un borrado grande'],
  'versions.line': ['Linha {line}', 'Line {line}', 'Línea {line}'],
  'versions.then': ['Nesta versão', 'In this version', 'En esta versión'],
  'versions.now': ['Agora', 'Now', 'Ahora'],
  'versions.absent': ['(nada)', '(nothing)', '(nada)'],
  'versions.same': ['O texto atual é igual a esta versão.', 'The current text is the same as this version.', 'El texto actual es igual a esta versión.'],
  'versions.more': ['E mais {n} trechos. Para tê-los de volta, restaure a versão inteira.', 'And {n} more passages. To get them back, restore the whole version.', 'Y {n} fragmentos más. Para recuperarlos, restaura la versión completa.'],
  'versions.restorePassage': ['Restaurar este trecho', 'Restore this passage', 'Restaurar este fragmento'],
  'versions.restore': ['Restaurar a versão inteira', 'Restore the whole version', 'Restaurar la versión completa'],
  'versions.restored': ['Versão restaurada. O texto de antes também foi guardado como versão.', 'Version restored. The text before it was kept as a version, too.', 'Versión restaurada. El texto anterior también se guardó como versión.'],
  'versions.passageRestored': ['Trecho restaurado', 'Passage restored', 'Fragmento restaurado'],
  'versions.hint': ['{enter} mostra a versão escolhida', '{enter} shows the chosen version', '{enter} muestra la versión elegida'],
} as const satisfies Texts;
