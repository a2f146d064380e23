import type { Key } from '../i18n/catalogue';
import { t } from '../i18n/language';

type Handlers = { [K in keyof HTMLElementEventMap]?: (event: HTMLElementEventMap[K]) => void };

export interface Props {
  readonly class?: string;
  /** Text that follows the interface language. */
  readonly t?: Key;
  /** Accessible name and tooltip that follow the interface language. */
  readonly tLabel?: Key;
  readonly tPlaceholder?: Key;
  readonly on?: Handlers;
  readonly attrs?: Readonly<Record<string, string>>;
}

/** Creates an element. Text is always inserted as text, never as markup. */
export function h<K extends keyof HTMLElementTagNameMap>(
  tag: K,
  props: Props = {},
  ...children: ReadonlyArray<Node | string>
): HTMLElementTagNameMap[K] {
  const element = document.createElement(tag);
  if (props.class) element.className = props.class;
  for (const [name, value] of Object.entries(props.attrs ?? {})) element.setAttribute(name, value);
  if (props.t) element.dataset.t = props.t;
  if (props.tLabel) element.dataset.tLabel = props.tLabel;
  if (props.tPlaceholder) element.dataset.tPlaceholder = props.tPlaceholder;
  for (const [type, handler] of Object.entries(props.on ?? {})) {
    element.addEventListener(type, handler as EventListener);
  }
  element.append(...children);
  label(element);
  return element;
}

/** Updates all texts below `root` to the current language. */
export function relabel(root: ParentNode): void {
  for (const element of root.querySelectorAll<HTMLElement>('[data-t],[data-t-label],[data-t-placeholder]')) {
    label(element);
  }
}

function label(element: HTMLElement): void {
  const { t: text, tLabel, tPlaceholder } = element.dataset;
  if (text) element.textContent = t(text as Key);
  if (tLabel) {
    element.setAttribute('aria-label', t(tLabel as Key));
    if (element instanceof HTMLButtonElement) element.title = t(tLabel as Key);
  }
  if (tPlaceholder) element.setAttribute('placeholder', t(tPlaceholder as Key));
}

/** An icon button, labelled from the catalogue. */
export function iconButton(icon: Icon, tLabel: Key, run: () => void): HTMLButtonElement {
  return h('button', { class: 'icon-button', tLabel, attrs: { type: 'button' }, on: { click: run } }, drawIcon(icon));
}

const icons = {
  plus: 'M8 3v10M3 8h10',
  close: 'M4 4l8 8M12 4l-8 8',
  sidebar: 'M2.5 3.5h11v9h-11zM6.5 3.5v9',
  grid: 'M3 3h4v4H3zM9 3h4v4H9zM3 9h4v4H3zM9 9h4v4H9z',
  pin: 'M6 2.5h4M6.6 2.5v4L4.5 9h7L9.4 6.5v-4M8 9v4.5',
  bin: 'M3 4.5h10M6.5 4.5v-2h3v2M4.5 4.5l.6 9h5.8l.6-9M6.8 7v4M9.2 7v4',
  more: 'M3.5 8h.01M8 8h.01M12.5 8h.01',
  help: 'M6 6a2 2 0 1 1 2.6 1.9c-.4.1-.6.5-.6.9v.7M8 11.8h.01',
  up: 'M8 13V3.5M4 7.5l4-4 4 4',
  down: 'M8 3v9.5M4 8.5l4 4 4-4',
  selectAll: 'M2.5 4.5v-2h2M11.5 2.5h2v2M13.5 11.5v2h-2M4.5 13.5h-2v-2M5 6h6M5 8h6M5 10h6',
  replace: 'M3 6h9M9.5 3.5 12 6 9.5 8.5M13 11H4M6.5 8.5 4 11l2.5 2.5',
  matchCase: 'M1.5 12 4.75 4 8 12M2.7 9.5h4.1M14.5 8.2V12M14.5 10.1a2.1 2.1 0 1 1-4.2 0 2.1 2.1 0 0 1 4.2 0z',
  wholeWord:
    'M1.5 11v2h13v-2M6.5 5.6v4.2M6.5 7.7a2 2 0 1 1-4 0 2 2 0 0 1 4 0zM9.5 3v6.8M13.5 7.7a2 2 0 1 1-4 0 2 2 0 0 1 4 0z',
  regexp: 'M3.5 12h.01M10 3.5v6.6M7.1 5.1l5.8 3.4M12.9 5.1 7.1 8.5',
  settings:
    'M2.5 4.5h5M11.5 4.5h2M2.5 11.5h2M8.5 11.5h5M11.5 4.5a2 2 0 1 1-4 0 2 2 0 0 1 4 0zM8.5 11.5a2 2 0 1 1-4 0 2 2 0 0 1 4 0z',
  tabs: 'M4 6l4 4 4-4',
  open: 'M2.5 12.5v-9h4l1.5 2h5.5v7z',
} as const;

export type Icon = keyof typeof icons;

export function drawIcon(icon: Icon): SVGSVGElement {
  const svg = document.createElementNS('http://www.w3.org/2000/svg', 'svg');
  svg.setAttribute('viewBox', '0 0 16 16');
  svg.setAttribute('aria-hidden', 'true');
  const path = document.createElementNS('http://www.w3.org/2000/svg', 'path');
  path.setAttribute('d', icons[icon]);
  svg.append(path);
  return svg;
}
