const LATIN_ONLY = /^[\x00-\xff]*$/;
const ACCENTED = /[\xe0-\xff]/g;
const BEYOND_LATIN = /[\u0100-\u{10ffff}]+/gu;
const MARKS = /\p{M}+/gu;

/** The lower-case letters U+00E0 to U+00FF without accents, one character each. */
const BARE_LETTERS = Array.from({ length: 32 }, (_, i) => withoutMarks(String.fromCharCode(0xe0 + i)));

/** Lower case without accents: "acao" finds "Ação". */
export function fold(text: string): string {
  const latin = foldLatin(text);
  // Most texts have few such characters: an emoji, a dash. Normalising all of the text would take ten times as long.
  return LATIN_ONLY.test(text) ? latin : latin.replace(BEYOND_LATIN, withoutMarks);
}

export interface Place {
  readonly from: number;
  readonly to: number;
}

/** The first position of `foldedQuery` in `text`, in the text's own offsets. Meant for titles and excerpts. */
export function findFolded(text: string, foldedQuery: string): Place | null {
  if (!foldedQuery) return null;
  const { folded, origin } = foldWithOrigins(text);
  const at = folded.indexOf(foldedQuery);
  return at < 0 ? null : { from: origin(at), to: origin(at + foldedQuery.length) };
}

/** Where any of some folded words is, in order; places that overlap are one. Meant for lines, not whole notes. */
export function foldedPlaces(text: string, words: ReadonlyArray<string>): Place[] {
  const { folded, origin } = foldWithOrigins(text);
  const all = words.flatMap((word) => {
    const places: Place[] = [];
    for (let at = folded.indexOf(word); word && at >= 0; at = folded.indexOf(word, at + word.length)) {
      places.push({ from: origin(at), to: origin(at + word.length) });
    }
    return places;
  });
  const merged: Place[] = [];
  for (const place of all.sort((one, other) => one.from - other.from)) {
    const last = merged.at(-1);
    if (!last || place.from >= last.to) merged.push(place);
    else merged[merged.length - 1] = { from: last.from, to: Math.max(last.to, place.to) };
  }
  return merged;
}

/** Part of a folded text: one character outside Latin-1, or a run of others, which keep their length. */
interface Run {
  readonly start: number;
  readonly origin: number;
  readonly isLatin: boolean;
}

/**
 * Folding changes the length of text outside Latin-1, so such text is folded character by character with a map back.
 */
function foldWithOrigins(text: string): { folded: string; origin: (at: number) => number } {
  if (LATIN_ONLY.test(text)) return { folded: foldLatin(text), origin: (at) => at };
  let folded = '';
  const runs: Run[] = [];
  const add = (part: string, origin: number, isLatin: boolean) => {
    if (!part) return;
    runs.push({ start: folded.length, origin, isLatin });
    folded += part;
  };
  let end = 0;
  for (const { 0: beyond, index } of text.matchAll(BEYOND_LATIN)) {
    add(foldLatin(text.slice(end, index)), end, true);
    end = index;
    for (const char of beyond) {
      add(fold(char), end, false);
      end += char.length;
    }
  }
  add(foldLatin(text.slice(end)), end, true);
  const origin = (at: number) => {
    if (at >= folded.length) return text.length;
    let index = runs.length - 1;
    while ((runs[index]?.start ?? 0) > at) index--;
    const { start = 0, origin = 0, isLatin = true } = runs[index] ?? {};
    return isLatin ? origin + at - start : origin;
  };
  return { folded, origin };
}

/**
 * Engines store such text with one byte per character until something widens it, and normalising does.
 * Widened text takes twice the memory and is slower to search.
 */
function foldLatin(text: string): string {
  return text.toLowerCase().replace(ACCENTED, (letter) => BARE_LETTERS[letter.charCodeAt(0) - 0xe0] ?? letter);
}

function withoutMarks(text: string): string {
  return text.normalize('NFD').replace(MARKS, '');
}
