import type { InlineContext, MarkdownConfig } from '@lezer/markdown';
import { type Fence, fenceAfterLine } from './fences';
import { LONGEST_PARAGRAPH } from './paragraphs';

/** A tag or a link to a note, with the place of its name or title. */
export interface NoteMark {
  readonly kind: 'tag' | 'link';
  readonly name: string;
  readonly from: number;
  readonly to: number;
}

const NAME = '[\\p{L}\\p{N}\\p{M}_-]+(?:/[\\p{L}\\p{N}\\p{M}_-]+)*';
const LINK = '\\[\\[([^\\[\\]|\\n]{1,300})(?:\\|([^\\[\\]\\n]{0,300}))?\\]\\]';
const LONGEST_MARK = 640;
const LONGEST_TAG = 100;
const STEP_CHARACTERS = 50_000;

const tagAtStart = new RegExp(`^#(${NAME})`, 'u');
const linkAtStart = new RegExp(`^${LINK}`, 'u');
/** What a tag cannot follow: it would be part of a word, an address or an entity. */
const beforeNoTag = /[\p{L}\p{N}\p{M}_#/&]$/u;
const mayHaveMarks = /#[\p{L}\p{N}_-]|\[\[/u;

/** The parts of a paragraph in which there are no marks, and the marks: the third group is a link, the fourth a tag. */
const pieces = new RegExp(
  [
    '\\\\[^]',
    '(`+)(?!`)(?:[^]*?[^`])?\\1(?!`)|`+',
    '^ {0,3}\\[[^\\]\\n]+\\]:[ \\t]*\\S+',
    `(${LINK})`,
    '\\]\\((?:<[^<>\\n]*>|[^()\\s]*(?:\\([^()\\s]*\\)[^()\\s]*)*)(?:\\s+"[^"\\n]*")?\\)',
    '</?[a-zA-Z!][^<>]*>',
    '(?:https?://|www\\.|mailto:)[^\\s<]+',
    '[\\p{L}\\p{N}\\p{M}_&/]+#*',
    `#(${NAME})`,
    '#+',
  ].join('|'),
  'gmu',
);

export function isTagName(name: string): boolean {
  return name.length <= LONGEST_TAG && new RegExp(`^${NAME}$`, 'u').test(name) && /\p{L}/u.test(name);
}

/** Title and label of a link as it is written, with its brackets. */
export function partsOfLink(written: string): { readonly title: string; readonly label: string } {
  const [, title = '', label] = linkAtStart.exec(written) ?? [];
  return { title: title.trim(), label: label?.trim() || title.trim() };
}

/** Teaches the Markdown grammar tags and links to notes. */
export const noteMarks: MarkdownConfig = {
  defineNodes: ['NoteLink', 'NoteTag'],
  parseInline: [
    { name: 'NoteLink', before: 'Link', parse: parseLink },
    { name: 'NoteTag', before: 'Link', parse: parseTag },
  ],
};

function parseLink(context: InlineContext, next: number, at: number): number {
  if (next !== 91 || context.char(at + 1) !== 91) return -1;
  const written = linkAtStart.exec(context.slice(at, Math.min(context.end, at + LONGEST_MARK)))?.[0];
  return written ? context.addElement(context.elt('NoteLink', at, at + written.length)) : -1;
}

function parseTag(context: InlineContext, next: number, at: number): number {
  if (next !== 35 || beforeNoTag.test(context.slice(Math.max(context.offset, at - 2), at))) return -1;
  const name = tagAtStart.exec(context.slice(at, Math.min(context.end, at + LONGEST_TAG + 2)))?.[1];
  if (name === undefined || !isTagName(name)) return -1;
  return context.addElement(context.elt('NoteTag', at, at + 1 + name.length));
}

/**
 * The marks of a whole text, in order. Much faster than the grammar: only paragraphs that may have marks are looked
 * into, and of their structure only what hides marks.
 */
export function* marksIn(text: string): Generator<NoteMark, void> {
  for (const mark of marksInSteps(text)) if (mark) yield mark;
}

/** The same, with a null from time to time, so that a long text can be read in slices. */
export function* marksInSteps(text: string): Generator<NoteMark | null, void> {
  if (!mayHaveMarks.test(text)) return;
  let rested = 0;
  for (const { from, to } of paragraphs(text)) {
    const part = text.slice(from, to);
    if (part.length <= LONGEST_PARAGRAPH && mayHaveMarks.test(part)) yield* marksOfParagraph(part, from);
    if (to - rested < STEP_CHARACTERS) continue;
    rested = to;
    yield null;
  }
}

function* marksOfParagraph(part: string, offset: number): Generator<NoteMark, void> {
  let afterTag = -1;
  for (const { 0: piece, 2: link, 3: title = '', 5: tag, index } of part.matchAll(pieces)) {
    const at = offset + index;
    if (link !== undefined) {
      const name = title.trim();
      const from = at + 2 + title.length - title.trimStart().length;
      if (name) yield { kind: 'link', name, from, to: from + name.length };
    } else if (tag !== undefined && isTagName(tag) && index !== afterTag) {
      yield { kind: 'tag', name: tag, from: at + 1, to: at + 1 + tag.length };
      afterTag = index + piece.length;
    }
  }
}

/** Runs of lines without a blank one, outside of code blocks. */
function* paragraphs(text: string): Generator<{ readonly from: number; readonly to: number }, void> {
  let fence: Fence = '';
  let start = -1;
  let inList = false;
  for (let at = 0; at <= text.length; ) {
    const end = text.indexOf('\n', at) < 0 ? text.length : text.indexOf('\n', at);
    const line = text.slice(at, end);
    const isBlank = line.trim() === '';
    const isIndented = /^(?: {4}|\t)/.test(line);
    if (/^\s*(?:[-*+]|\d{1,9}[.)])\s/.test(line)) inList = true;
    else if (!isBlank && !/^\s/.test(line)) inList = false;
    const isCode = isIndented && start < 0 && !inList;
    const after = isCode || !/`{3}|~{3}/.test(line) ? fence : fenceAfterLine(fence, line.replace(/^[\s>]+/, ''));
    if (isBlank || isCode || fence || after) {
      if (start >= 0) yield { from: start, to: at };
      start = -1;
    } else if (start < 0) start = at;
    fence = after;
    at = end + 1;
  }
  if (start >= 0) yield { from: start, to: text.length };
}
