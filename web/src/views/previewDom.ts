import { colourCode } from '../editor/codeColours';
import { t } from '../i18n/language';
import type { Piece } from '../text/previewBlocks';
import { h } from '../dom/elements';

/**
 * Builds a preview's elements from a closed list of tags. Note text is only ever inserted as text, never as
 * an element or attribute name.
 */
export function drawPiece(piece: Piece, onLoaded: () => void): HTMLElement {
  const element = h(piece.tag, piece.kind ? { class: `is-${piece.kind}` } : {});
  if (piece.tag === 'pre') {
    element.append(...codeOf(piece, onLoaded));
    // Wide code scrolls, so it must be focusable for keyboard users.
    element.tabIndex = 0;
    return element;
  }
  if (piece.href !== undefined) {
    element.setAttribute('href', piece.href);
    element.setAttribute('target', '_blank');
    element.setAttribute('rel', 'noopener noreferrer');
    element.title = piece.href;
  }
  if (piece.start !== undefined && piece.start !== 1) element.setAttribute('start', String(piece.start));
  if (piece.kind === 'done' || piece.kind === 'toDo') {
    element.setAttribute('role', 'img');
    element.setAttribute('aria-label', t(piece.kind === 'done' ? 'preview.done' : 'preview.toDo'));
  }
  if (piece.kind === 'image') element.append(h('span', { class: 'image-sign' }, t('preview.image')), ' ');
  if (piece.tag === 'td' || piece.tag === 'th') element.dir = 'auto';
  for (const child of piece.children) {
    element.append(typeof child === 'string' ? child : drawPiece(child, onLoaded));
  }
  return element;
}

function codeOf({ children, language }: Piece, onLoaded: () => void): Node[] {
  const code = children.join('');
  if (!language) return [document.createTextNode(code)];
  return colourCode(code, language, onLoaded).map(([text, className]) =>
    className ? h('span', { class: className }, text) : document.createTextNode(text),
  );
}
