import { colourCode } from '../editor/codeColours';
import { t } from '../i18n/language';
import type { PreviewNode } from '../text/previewBlocks';
import { h } from '../dom/elements';

/**
 * Builds a preview's elements from a closed list of tags. Note text is only ever inserted as text, never as
 * an element or attribute name.
 */
export function renderPreviewNode(node: PreviewNode, onLoaded: () => void): HTMLElement {
  const element = h(node.tag, node.kind ? { class: `is-${node.kind}` } : {});
  if (node.tag === 'pre') {
    element.append(...codeOf(node, onLoaded));
    // Wide code scrolls, so it must be focusable for keyboard users.
    element.tabIndex = 0;
    return element;
  }
  if (node.href !== undefined) {
    element.setAttribute('href', node.href);
    element.setAttribute('target', '_blank');
    element.setAttribute('rel', 'noopener noreferrer');
    element.title = node.href;
  }
  if (node.target !== undefined) {
    element.setAttribute('role', 'link');
    element.tabIndex = 0;
    element.dataset.target = node.target;
  }
  if (node.start !== undefined && node.start !== 1) element.setAttribute('start', String(node.start));
  if (isBox(node)) {
    element.setAttribute('role', 'img');
    element.setAttribute('aria-label', t(node.kind === 'done' ? 'preview.done' : 'preview.toDo'));
  }
  if (node.kind === 'image') element.append(h('span', { class: 'image-sign' }, t('preview.image')), ' ');
  if (node.tag === 'td' || node.tag === 'th') element.dir = 'auto';
  node.children.forEach((child, index) => {
    if (typeof child !== 'string') element.append(renderPreviewNode(child, onLoaded));
    // Blanks are of different widths; a box has the same distance from its text in every face.
    else element.append(isBox(node.children[index - 1]) ? child.replace(/^ /, '') : child);
  });
  if (node.surprise) {
    const { kind, address } = node.surprise;
    const words = t(kind === 'userName' ? 'preview.userName' : 'preview.elsewhere', { address });
    element.append(' ', h('span', { class: 'true-address' }, words));
  }
  // Scrolls like wide code.
  return node.tag === 'table' ? h('div', { class: 'table-frame', attrs: { tabindex: '0' } }, element) : element;
}

function isBox(node: PreviewNode | string | undefined): boolean {
  return typeof node === 'object' && (node.kind === 'done' || node.kind === 'toDo');
}

function codeOf({ children, language }: PreviewNode, onLoaded: () => void): Node[] {
  const code = children.join('');
  if (!language) return [document.createTextNode(code)];
  return colourCode(code, language, onLoaded).map(([text, className]) =>
    className ? h('span', { class: className }, text) : document.createTextNode(text),
  );
}
