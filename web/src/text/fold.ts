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

/**
 * Folding changes the length of text outside Latin-1, so such text is folded character by character with a map back.
 */
function foldWithOrigins(text: string): { folded: string; origin: (at: number) => number } {
  if (LATIN_ONLY.test(text)) return { folded: foldLatin(text), origin: (at) => at };
  let folded = '';
  const origins: number[] = [];
  let offset = 0;
  for (const char of text) {
    const foldedChar = fold(char);
    for (let i = 0; i < foldedChar.length; i++) origins.push(offset);
    folded += foldedChar;
    offset += char.length;
  }
  return { folded, origin: (at) => origins[at] ?? text.length };
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
