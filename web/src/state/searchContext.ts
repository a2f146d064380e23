import { findFolded, fold } from '../text/fold';
import { stripMarks } from '../text/title';
import type { NoteText } from './noteText';
import { chunkWith, KEPT_CHARACTERS } from './search';

/** So much that a word stands in the middle of what a row shows beside its date. */
const CONTEXT_BEFORE = 10;
const CONTEXT_AFTER = 120;
/** How much of the text around a match is read; marks take some of it. */
const READ_BEFORE = 120;
const READ_AFTER = 240;
const WINDOW_CHARACTERS = 400;

/**
 * An excerpt around the first of these words that the text has, on one line and without Markdown marks; empty if it
 * has none. A correct guess in `near` saves searching the text.
 */
export function contextOf(text: NoteText, words: ReadonlyArray<string>, near = 0): string {
  for (const word of words) {
    const at = placeOf(text, word, near);
    if (at) return excerpt(text, word, at.from, at.to);
  }
  return '';
}

function placeOf(text: NoteText, word: string, near: number): { from: number; to: number } | null {
  if (!word) return null;
  const end = near + word.length;
  if (end <= text.length && fold(text.slice(near, end)) === word) return { from: near, to: end };
  if (text.length <= KEPT_CHARACTERS) return firstPlace(text.toString(), word, 0);
  const chunk = chunkWith(text, word);
  return chunk && firstPlace(chunk.text, word, chunk.from);
}

function firstPlace(text: string, word: string, offset: number): { from: number; to: number } | null {
  // Mapping a match back to the text's own offsets is slow, so narrow down the range first.
  const overlap = word.length * 4;
  const step = Math.max(WINDOW_CHARACTERS, overlap);
  for (let at = 0; at < text.length; at += step) {
    const window = text.slice(at, at + step + overlap);
    if (!fold(window).includes(word)) continue;
    const match = findFolded(window, word);
    return match && { from: offset + at + match.from, to: offset + at + match.to };
  }
  return null;
}

function excerpt(text: NoteText, word: string, from: number, to: number): string {
  const start = Math.max(0, from - READ_BEFORE);
  const before = text.slice(start, from);
  const after = text.slice(from, to + READ_AFTER);
  const lineStart = before.lastIndexOf('\n') + 1;
  const nextLine = after.indexOf('\n', to - from);
  const lineEnd = nextLine < 0 ? after.length : nextLine;
  const line = before.slice(lineStart) + after.slice(0, lineEnd);
  const lead = readable(before.slice(0, lineStart));
  const shown = oneLine(bareWith(line, word));
  const whole = [lead, shown, readable(after.slice(lineEnd))].filter(Boolean).join(' ');
  const at = lead.length + (findFolded(whole.slice(lead.length), word)?.from ?? 0);
  const cut = startOfCut(whole, at);
  const rest = whole.slice(cut, at + word.length + CONTEXT_AFTER);
  return cut > 0 || start > 0 ? `…${rest}` : rest;
}

/** Without marks, unless the word is part of one, such as the address of a link. */
function bareWith(line: string, word: string): string {
  const bare = stripMarks(line);
  if (fold(bare).includes(word)) return bare;
  const whole = stripMarks(withAddresses(line));
  return fold(whole).includes(word) ? whole : line;
}

/** With both parts of every link as words. */
function withAddresses(line: string): string {
  return line.replace(/!?\[([^\]]*)\]\(([^)]*)\)/g, '$1 $2').replace(/\[\[([^[\]|]+)\|([^[\]]*)\]\]/g, '$1 $2');
}

/** Not far before the match, at the start of a word if there is one. */
function startOfCut(whole: string, at: number): number {
  if (at <= CONTEXT_BEFORE) return 0;
  const space = whole.indexOf(' ', at - CONTEXT_BEFORE - 1);
  return space >= 0 && space < at ? space + 1 : at - CONTEXT_BEFORE;
}

function readable(lines: string): string {
  return oneLine(lines.split('\n').map(stripMarks).filter(Boolean).join(' '));
}

function oneLine(text: string): string {
  return text.replace(/\s+/g, ' ').trim();
}
