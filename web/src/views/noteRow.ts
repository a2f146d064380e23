import { t } from '../i18n/language';
import { shortDate } from '../i18n/shortDate';
import { drawIcon, h } from '../dom/elements';
import type { Note } from '../state/model';
import { contextOf } from '../state/searchContext';
import type { SearchMatch } from '../state/search';
import { titleOf } from '../state/titleOf';
import { fold, foldedPlaces } from '../text/fold';
import { headOf } from '../text/title';

const SEEN_OF_TITLE = 28;

export interface RowLook {
  /** The heading right above the row, said with it; empty if there is none. */
  readonly heading: string;
  /** Words to be marked. */
  readonly words: ReadonlyArray<string>;
  readonly moment: 'created' | 'updated';
}

/** Fills a row of the list of notes. Does nothing if the row shows all this already. */
export function fillNoteRow(row: HTMLElement, note: Note, match: SearchMatch, look: RowLook): void {
  const { heading, words, moment } = look;
  const title = titleOf(note);
  const missing = wordsNotSeen(words, title);
  const isSeen = match.inTitle && missing.length === 0;
  const below = (!isSeen && contextOf(note.text, [...missing, ...words], match.near)) || excerptOf(note);
  const fallback = title ? '' : t('sidebar.emptyNote');
  const date = shortDate(note[moment], Date.now());
  const signature = JSON.stringify([heading, title, below, words, t('untitled'), note.pinned, date]);
  if (row.dataset.signature === signature) return;
  row.dataset.signature = signature;
  row.replaceChildren(
    ...(heading ? [h('span', { class: 'unseen' }, `${heading}: `)] : []),
    h(
      'div',
      { class: 'row-title', attrs: { dir: 'auto' } },
      ...(note.pinned ? [pinMark()] : []),
      ...marked(title || t('untitled'), words),
    ),
    h(
      'div',
      { class: 'row-below' },
      h('span', { class: 'row-date' }, date),
      h('div', { class: 'row-excerpt', attrs: { dir: 'auto' } }, ...marked(below || fallback, words)),
    ),
  );
  row.classList.toggle('is-untitled', !title);
  row.classList.toggle('is-empty', !below);
}

/** The words that are not in what a row shows of the title: they are worth more than those that are. */
function wordsNotSeen(words: ReadonlyArray<string>, title: string): ReadonlyArray<string> {
  const seen = fold(title.slice(0, SEEN_OF_TITLE));
  return words.filter((word) => !seen.includes(word));
}

/** An imported note has its file name as title, so its first line belongs in the excerpt. */
function excerptOf(note: Note): string {
  const { title, excerpt } = headOf(note.text);
  return note.name === null ? excerpt : [title, excerpt].filter(Boolean).join(' ');
}

function pinMark(): HTMLElement {
  return h('span', { class: 'pin', tLabel: 'note.isPinned', attrs: { role: 'img' } }, drawIcon('pin'));
}

function marked(text: string, words: ReadonlyArray<string>): Array<Node | string> {
  let end = 0;
  const parts = foldedPlaces(text, words).flatMap(({ from, to }) => {
    const part = [text.slice(end, from), h('mark', {}, text.slice(from, to))];
    end = to;
    return part;
  });
  return [...parts, text.slice(end)];
}
