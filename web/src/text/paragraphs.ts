export const LONGEST_PARAGRAPH = 50_000;

/**
 * Whether a text has a paragraph too long to parse as Markdown. Paragraphs are parsed as a whole, at a cost
 * that can grow with the square of the length.
 */
export function hasLongParagraph(lines: Iterable<string>): boolean {
  let length = 0;
  for (const line of lines) {
    length = line.trim() ? length + line.length + 1 : 0;
    if (length > LONGEST_PARAGRAPH) return true;
  }
  return false;
}

export function mayHaveLongParagraph(length: number): boolean {
  return length >= LONGEST_PARAGRAPH;
}
