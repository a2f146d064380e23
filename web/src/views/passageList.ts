import { h } from '../dom/elements';
import type { Key } from '../i18n/catalogue';
import { t } from '../i18n/language';
import type { Passage, Piece } from '../state/passages';

/** More than anybody reads; a text that was replaced has thousands. */
const SHOWN_PASSAGES = 60;
const SHOWN_CHARACTERS = 3000;

/** Shows passages, each with both texts by name, so that nothing depends on colours. */
export function fillPassages(
  into: HTMLElement,
  passages: ReadonlyArray<Passage>,
  onRestore: ((passage: Passage, at: number) => void) | null,
): void {
  const shown = passages.slice(0, SHOWN_PASSAGES);
  const rest = passages.length - shown.length;
  into.replaceChildren(
    ...shown.map((passage, at) => {
      const id = `passage${at}`;
      const restore = h('button', {
        class: 'button',
        t: 'versions.restorePassage',
        attrs: { type: 'button', 'aria-describedby': id },
        on: { click: () => onRestore?.(passage, at) },
      });
      return h(
        'section',
        { class: 'passage' },
        h(
          'div',
          { class: 'passage-head' },
          h('h3', { attrs: { id } }, t('versions.line', { line: passage.line })),
          ...(onRestore ? [restore] : []),
        ),
        side('versions.then', 'del', passage.before),
        side('versions.now', 'ins', passage.now),
      );
    }),
  );
  if (!passages.length) into.append(h('p', { class: 'quiet', t: 'versions.same' }));
  if (rest) into.append(h('p', { class: 'quiet' }, t('versions.more', { n: rest })));
}

function side(label: Key, tag: 'del' | 'ins', pieces: ReadonlyArray<Piece>): HTMLElement {
  const text = h('div', { class: 'passage-text', attrs: { dir: 'auto' } });
  let room = SHOWN_CHARACTERS;
  for (const piece of pieces) {
    const part = piece.text.length > room ? `${piece.text.slice(0, room)}…` : piece.text;
    text.append(piece.differs ? h(tag, {}, part) : part);
    room -= piece.text.length;
    if (room <= 0) break;
  }
  if (!pieces.length) text.append(h('span', { class: 'quiet', t: 'versions.absent' }));
  return h('div', { class: `passage-side ${tag}` }, h('div', { class: 'quiet', t: label }), text);
}
