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

/**
 * The position of `foldedQuery` in `text`, in the text's own offsets. Folding changes the length of text
 * outside Latin-1, so such text is folded character by character with a map back. Meant for titles and
 * excerpts, not whole notes.
 */
export function findFolded(text: string, foldedQuery: string): { from: number; to: number } | null {
  if (!foldedQuery) return null;
  if (LATIN_ONLY.test(text)) {
    const from = foldLatin(text).indexOf(foldedQuery);
    return from < 0 ? null : { from, to: from + foldedQuery.length };
  }
  let folded = '';
  const origin: number[] = [];
  let offset = 0;
  for (const char of text) {
    const foldedChar = fold(char);
    for (let i = 0; i < foldedChar.length; i++) origin.push(offset);
    folded += foldedChar;
    offset += char.length;
  }
  const at = folded.indexOf(foldedQuery);
  if (at < 0) return null;
  return { from: origin[at] ?? 0, to: origin[at + foldedQuery.length] ?? text.length };
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
