import type { Key } from '../i18n/catalogue';
import { h } from '../dom/elements';
import { floatAbove } from './dialog';

export interface ToastAction {
  readonly label: Key;
  readonly run: () => void;
}

const SHOWN_MS = 4000;
const SHOWN_WITH_ACTION_MS = 12_000;
const MOST = 3;

/** Short messages at the bottom, in a polite live region. */
export class Toasts {
  readonly element = h('div', {
    class: 'toasts',
    attrs: { role: 'status', 'aria-live': 'polite' },
  });

  readonly #isHeld: () => boolean;

  /** No toast expires while `isHeld` returns true. */
  constructor(isHeld: () => boolean) {
    this.#isHeld = isHeld;
  }

  /** Shows the empty region, because screen readers only announce changes to a region they already know. */
  start(): void {
    floatAbove(this.element);
  }

  show(message: string, action?: ToastAction): void {
    const toast = h('div', { class: 'toast' }, h('span', {}, message));
    if (action) {
      const run = () => {
        toast.remove();
        action.run();
      };
      toast.append(h('button', { t: action.label, attrs: { type: 'button' }, on: { click: run } }));
    }
    this.element.append(toast);
    while (this.element.children.length > MOST) this.element.firstElementChild?.remove();
    this.#expire(toast, action ? SHOWN_WITH_ACTION_MS : SHOWN_MS);
  }

  /** A toast stays while it is hovered or its button has the focus. */
  #expire(toast: HTMLElement, delay: number): void {
    setTimeout(() => {
      if (this.#isHeld() || toast.matches(':hover, :focus-within')) this.#expire(toast, SHOWN_MS);
      else toast.remove();
    }, delay);
  }
}
