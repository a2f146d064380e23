import { t } from '../i18n/language';
import type { Note } from '../state/model';
import { keysOf } from '../state/noteIndex';
import { titleOf } from '../state/titleOf';
import { marksIn } from '../text/noteMarks';
import { withoutMarks } from '../text/title';
import { linkable, titleKey, withoutExtension } from '../text/titleKey';
import { inSlices } from '../time/slices';
import type { FoundPlace } from '../views/backlinksPanel';
import { type Context, focusMain } from './context';
import { openNote } from './notes';

const SHOWN = 200;
const SHOWN_OF_NOTE = 3;
/** How much of a line is read around a place, and how much of it is shown: the place stays in the visible part. */
const READ_AROUND = 300;
const [BEFORE, AFTER] = [40, 120];
const SLICE_MS = 5;
const SHORTEST_TITLE = 2;
const LONGEST_LINK = 640;

/** The links in other notes that lead to the shown one. */
export function linksHere({ workspace, index }: Context): ReadonlyArray<FoundPlace> {
  const note = workspace.activeNote;
  if (!note) return [];
  const keys = keysOf(note).filter((key) => index.noteTitled(key)?.id === note.id);
  const found: FoundPlace[] = [];
  for (const other of index.linkingTo(note)) {
    const text = other.text.toString();
    for (const { kind, name, from, to } of marksIn(text)) {
      if (kind === 'link' && keys.includes(titleKey(name))) found.push(placeIn(other, text, from, to));
    }
    if (found.length >= SHOWN) break;
  }
  return found.slice(0, SHOWN);
}

/** Looks for the title of the shown note in the others, where it is not a link; returns a cancel function. */
export function findMentions(context: Context, onDone: (found: ReadonlyArray<FoundPlace>) => void): () => void {
  const { workspace } = context;
  const note = workspace.activeNote;
  const found: FoundPlace[] = [];
  const work = function* () {
    const title = note ? linkable(note.name === null ? titleOf(note) : withoutExtension(note.name)) : '';
    if (title.length < SHORTEST_TITLE) return;
    for (const other of workspace.notesInOrder()) {
      if (other.id !== note?.id) found.push(...mentionsIn(other, title));
      if (found.length >= SHOWN) return;
      yield;
    }
  };
  return inSlices(work(), { slice: SLICE_MS, delay: 0, onDone: () => onDone(found.slice(0, SHOWN)) });
}

/** Opens a note with a place in it selected. */
export function openPlace(context: Context, { id, from, to }: FoundPlace): void {
  openNote(context, id);
  context.editor.select(from, to);
}

export function toggleBacklinks(context: Context): void {
  const { backlinks } = context.shell;
  backlinks.toggle();
  if (backlinks.isOpen) backlinks.focus();
  else focusMain(context);
}

export function mentionsIn(note: Note, title: string): FoundPlace[] {
  const text = note.text.toString();
  const found: FoundPlace[] = [];
  const pattern = new RegExp(title.replace(/[\\^$.*+?()[\]{}|/]/g, '\\$&').replace(/ /g, '\\s+'), 'giu');
  for (const { 0: words, index: from } of text.matchAll(pattern)) {
    const to = from + words.length;
    if (isInWord(text, from, to) || isInLink(text, from)) continue;
    found.push(placeIn(note, text, from, to));
    if (found.length === SHOWN_OF_NOTE) break;
  }
  return found;
}

function isInWord(text: string, from: number, to: number): boolean {
  const letter = /[\p{L}\p{N}\p{M}_]/u;
  return letter.test(text.charAt(from - 1)) || letter.test(text.charAt(to));
}

function isInLink(text: string, at: number): boolean {
  const before = text.slice(Math.max(0, at - LONGEST_LINK), at);
  const open = before.lastIndexOf('[[');
  return open >= 0 && !/\]\]|\n/.test(before.slice(open));
}

/** A place with its line as a reader sees it, cut around it. */
function placeIn(note: Note, text: string, from: number, to: number): FoundPlace {
  const start = Math.max(text.lastIndexOf('\n', from - 1) + 1, from - READ_AROUND);
  const lineEnd = text.indexOf('\n', to);
  const end = Math.min(lineEnd < 0 ? text.length : lineEnd, to + READ_AROUND);
  const { before, words, after } = withoutMarks(text.slice(start, from), text.slice(from, to), text.slice(to, end));
  const title = titleOf(note) || t('untitled');
  const lead = before.length > BEFORE ? `…${before.slice(-BEFORE).replace(/^\S+\s/, '')}` : before;
  return { id: note.id, title, before: lead, words, after: after.slice(0, AFTER), from, to };
}
