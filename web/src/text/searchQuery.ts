import { fold } from './fold';
import { type Period, periodOf } from './searchDates';

type Place = 'text' | 'title' | 'tag';
type Moment = 'edited' | 'created';

/** One condition; all folded. */
export type Term = { readonly not: boolean } & (
  | { readonly kind: Place; readonly value: string }
  | ({ readonly kind: Moment; readonly value: string } & Period)
);

export interface Query {
  /** What was typed, folded: equal for queries that find the same. */
  readonly source: string;
  /** The words and phrases every find contains, as typed. */
  readonly words: ReadonlyArray<string>;
  /** All other conditions. */
  readonly filters: ReadonlyArray<Term>;
}

/** The names of the conditions in the three languages, folded. */
const kinds: ReadonlyMap<string, Place | Moment> = new Map([
  ...['title', 'titulo'].map((name) => [name, 'title'] as const),
  ...['tag', 'etiqueta'].map((name) => [name, 'tag'] as const),
  ...['edited', 'editado', 'editada', 'updated', 'atualizado', 'atualizada', 'actualizado', 'actualizada'].map(
    (name) => [name, 'edited'] as const,
  ),
  ...['date', 'data', 'fecha'].map((name) => [name, 'edited'] as const),
  ...['created', 'criado', 'criada', 'creado', 'creada'].map((name) => [name, 'created'] as const),
]);

/** An optional minus, an optional name with a colon, and a phrase or a word. */
const TOKEN = /(-?)(?:(\p{L}+):)?(?:"([^"]*)"?|(\S+))/gu;

/**
 * Words in any order, "phrases", -exclusions, tag:, title:, edited: and created:. Whatever is none of these is
 * searched as it stands.
 */
export function parseQuery(text: string, now: number): Query {
  const source = fold(text.trim());
  const terms = [...source.matchAll(TOKEN)].flatMap((token) => termOf(token, now));
  const isWord = (term: Term) => term.kind === 'text' && !term.not;
  return {
    source,
    words: terms.filter(isWord).map(({ value }) => value),
    filters: terms.filter((term) => !isWord(term)),
  };
}

/** What to mark in a note that was found. */
export function markedWords({ words, filters }: Query): ReadonlyArray<string> {
  const more = filters.flatMap(({ kind, value, not }) => {
    if (not || kind === 'edited' || kind === 'created') return [];
    return kind === 'tag' ? [`#${value}`] : [value];
  });
  return [...words, ...more];
}

/** Whether whatever `query` finds was found by `before`. */
export function narrows(query: Query, before: Query): boolean {
  return (
    before.source !== '' &&
    before.words.every((word) => query.words.some((one) => one.includes(word))) &&
    before.filters.every((filter) => query.filters.some((one) => impliesFilter(one, filter)))
  );
}

function impliesFilter(one: Term, other: Term): boolean {
  if (one.kind !== other.kind || one.not !== other.not) return false;
  return one.kind === 'title' && !one.not ? one.value.includes(other.value) : one.value === other.value;
}

function termOf([whole, minus, name = '', phrase, word]: RegExpMatchArray, now: number): Term[] {
  const not = minus === '-';
  const kind = kinds.get(name);
  const value = (phrase ?? word ?? '').trim();
  if (!value || whole === '-') return [];
  const tag = value.replace(/^#|\/$/g, '');
  if (kind === 'tag' && tag) return [{ kind, value: tag, not }];
  if (kind === 'title') return [{ kind, value, not }];
  const period = kind && kind !== 'tag' && periodOf(value, now);
  if (period) return [{ kind, value, not, ...period }];
  // A name that means nothing belongs to the word, as in an address.
  return [{ kind: 'text', value: name ? `${name}:${value}` : value, not }];
}
