import type { Key } from '../i18n/catalogue';
import { t } from '../i18n/language';

/** The editor library's English phrases and the catalogue rows that translate them. */
const rows: Record<string, Key> = {
  Find: 'find.field',
  Replace: 'find.replaceField',
  next: 'find.next',
  previous: 'find.previous',
  all: 'find.all',
  'match case': 'find.case',
  regexp: 'find.regexp',
  'by word': 'find.word',
  replace: 'find.replace',
  'replace all': 'find.replaceAll',
  close: 'close',
  'current match': 'find.current',
  'replaced $ matches': 'find.replaced',
  'replaced match on line $': 'find.replacedOne',
  'on line': 'find.onLine',
  'Go to line': 'find.goToLine',
  go: 'find.go',
  Completions: 'names.label',
};

export function phrases(): Record<string, string> {
  return Object.fromEntries(Object.entries(rows).map(([phrase, key]) => [phrase, t(key)]));
}
