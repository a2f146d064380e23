import { h } from '../dom/elements';
import { readSidebarWidth, sidebarWidths } from '../state/settings';
import { rootPixels } from './rootStyle';

export interface SplitterActions {
  /** Keeps a width, in pixels at the normal text size. */
  keep(width: number): void;
  leave(): void;
}

/** How far an arrow key moves it, in pixels. */
const STEP = 16;

/** The edge between the sidebar and the note, moved by mouse or by arrow keys; a double click puts it back. */
export class Splitter {
  readonly element: HTMLElement;
  readonly #sidebar: HTMLElement;
  readonly #actions: SplitterActions;
  #width: number = sidebarWidths.usual;
  /** Its width when a drag began. */
  #before: number = sidebarWidths.usual;

  constructor(sidebar: HTMLElement, actions: SplitterActions) {
    this.#sidebar = sidebar;
    this.#actions = actions;
    this.element = h('div', {
      class: 'splitter',
      tLabel: 'sidebar.width',
      attrs: {
        role: 'separator',
        tabindex: '0',
        'aria-orientation': 'vertical',
        'aria-controls': sidebar.id,
        'aria-valuemin': String(sidebarWidths.least),
        'aria-valuemax': String(sidebarWidths.most),
      },
      on: {
        pointerdown: (event) => this.#begin(event),
        pointermove: ({ clientX }) => {
          if (this.element.classList.contains('is-dragged')) this.show(this.#widthAt(clientX));
        },
        // Else it would select text.
        mousedown: (event) => event.preventDefault(),
        pointerup: () => this.#end(),
        pointercancel: () => this.#end(),
        dblclick: () => actions.keep(sidebarWidths.usual),
        keydown: (event) => this.#onKey(event),
      },
    });
  }

  show(width: number): void {
    this.#width = width;
    // In rem, so that it follows the text size.
    this.#sidebar.style.setProperty('--sidebar-width', `${width / 16}rem`);
    this.element.setAttribute('aria-valuenow', String(width));
  }

  #begin({ button, pointerId }: PointerEvent): void {
    if (button !== 0) return;
    this.#before = this.#width;
    this.element.setPointerCapture(pointerId);
    this.element.classList.add('is-dragged');
  }

  #end(): void {
    if (!this.element.classList.contains('is-dragged')) return;
    this.element.classList.remove('is-dragged');
    if (this.#width !== this.#before) this.#actions.keep(this.#width);
  }

  #widthAt(x: number): number {
    return readSidebarWidth(((x - this.#sidebar.getBoundingClientRect().left) * 16) / rootPixels(1));
  }

  #onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const { least, usual, most } = sidebarWidths;
    const width = {
      ArrowLeft: this.#width - STEP,
      ArrowRight: this.#width + STEP,
      Home: least,
      End: most,
      Enter: usual,
    }[event.key];
    if (width !== undefined) this.#actions.keep(readSidebarWidth(width));
    else if (event.key === 'Escape') this.#actions.leave();
    else return;
    event.preventDefault();
  }
}
