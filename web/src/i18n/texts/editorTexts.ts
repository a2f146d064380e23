import type { Texts } from './texts';

/** What the editor and its find bar say. */
// biome-ignore format: one row per text
export const editorTexts = {
  'editor.label': ['Texto da nota', 'Note text', 'Texto de la nota'],
  'editor.placeholder': ['Escreva. A primeira linha é o título.', 'Write. The first line is the title.', 'Escribe. La primera línea es el título.'],

  'fold.open': ['Mostrar o que está dobrado', 'Show what is folded', 'Mostrar lo plegado'],

  'find.place': ['{at} de {total}', '{at} of {total}', '{at} de {total}'],
  'find.total': ['{total} no texto', '{total} in the text', '{total} en el texto'],
  'find.none': ['Nada encontrado', 'Nothing found', 'Sin resultados'],
  'find.wrong': ['Expressão incompleta', 'Incomplete expression', 'Expresión incompleta'],
  'find.showReplace': ['Mostrar substituição', 'Show replace', 'Mostrar reemplazo'],
  'find.field': ['Procurar', 'Find', 'Buscar'],
  'find.replaceField': ['Substituir por', 'Replace with', 'Reemplazar por'],
  'find.next': ['Próxima ocorrência', 'Next match', 'Coincidencia siguiente'],
  'find.previous': ['Ocorrência anterior', 'Previous match', 'Coincidencia anterior'],
  'find.all': ['Selecionar todas as ocorrências', 'Select all matches', 'Seleccionar todas las coincidencias'],
  'find.case': ['Diferenciar maiúsculas', 'Match case', 'Distinguir mayúsculas'],
  'find.regexp': ['Expressão regular', 'Regexp', 'Expresión regular'],
  'find.word': ['Palavra inteira', 'Whole word', 'Palabra completa'],
  'find.replace': ['Substituir', 'Replace', 'Reemplazar'],
  'find.replaceAll': ['Substituir tudo', 'Replace all', 'Reemplazar todo'],
  'find.current': ['ocorrência atual', 'current match', 'coincidencia actual'],
  'find.replaced': ['$ ocorrências substituídas', 'replaced $ matches', '$ coincidencias reemplazadas'],
  'find.replacedOne': ['ocorrência substituída na linha $', 'replaced match on line $', 'coincidencia reemplazada en la línea $'],
  'find.onLine': ['na linha', 'on line', 'en la línea'],
  'find.goToLine': ['Ir para a linha', 'Go to line', 'Ir a la línea'],
  'find.go': ['Ir', 'Go', 'Ir'],
} as const satisfies Texts;
