const ASCII_ONLY = /^[\x00-\x7f]*$/;
const MARKS = /\p{M}+/gu;

/** Lower case without accents, so that "acao" finds "Ação". */
export function fold(text: string): string {
  if (ASCII_ONLY.test(text)) return text.toLowerCase();
  return text.normalize('NFD').replace(MARKS, '').toLowerCase();
}

/**
 * Where `foldedQuery` stands in `text`, in the text's own offsets. Folding changes lengths, so
 * the folded text is built character by character with a map back; meant for titles and
 * excerpts, not for whole notes.
 */
export function findFolded(text: string, foldedQuery: string): { from: number; to: number } | null {
  if (!foldedQuery) return null;
  let folded = '';
  const origin: number[] = [];
  let offset = 0;
  for (const char of text) {
    const piece = fold(char);
    for (let i = 0; i < piece.length; i++) origin.push(offset);
    folded += piece;
    offset += char.length;
  }
  const at = folded.indexOf(foldedQuery);
  if (at < 0) return null;
  return { from: origin[at] ?? 0, to: origin[at + foldedQuery.length] ?? text.length };
}
