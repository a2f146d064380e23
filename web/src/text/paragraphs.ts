const LONGEST_PARAGRAPH = 50_000;

/**
 * Tells whether a text has a paragraph too long to be read as Markdown. A paragraph is parsed as a
 * whole, and the cost can grow with the square of its length.
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
