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
