import type { Key } from '../i18n/catalogue';
import { h } from '../dom/elements';
import { floatAbove } from './dialog';

export interface ToastAction {
  readonly label: Key;
  readonly run: () => void;
  /** Whether there is nothing left for the action to do; its toast then goes. */
  readonly isMoot?: () => boolean;
}

interface Shown {
  readonly element: HTMLElement;
  readonly subject: string;
  readonly action: ToastAction | undefined;
}

const SHORTEST_MS = 4000;
const MS_PER_CHARACTER = 60;
const LONGEST_MS = 12_000;
const MOST = 3;

/** Short messages at the bottom, in a polite live region. */
export class Toasts {
  readonly element = h('div', {
    class: 'toasts',
    attrs: { role: 'status', 'aria-live': 'polite' },
  });

  readonly #isHeld: () => boolean;
  #shown: ReadonlyArray<Shown> = [];

  /** No toast expires while `isHeld` returns true. */
  constructor(isHeld: () => boolean) {
    this.#isHeld = isHeld;
  }

  /** Shows the empty region, because screen readers only announce changes to a region they already know. */
  start(): void {
    floatAbove(this.element);
  }

  /** A message takes the place of an equal one, and of what was said about the same `subject` before. */
  show(message: string, action?: ToastAction, subject = message): void {
    // One with an action is about something of its own, even if it reads the same.
    const former = action ? undefined : this.#shown.find((one) => one.subject === subject && !one.action);
    if (former) this.#remove(former);
    // A paragraph: the text of a mere span is not among what WebKitGTK shows to screen readers.
    const toast: Shown = { element: h('div', { class: 'toast' }, h('p', {}, message)), subject, action };
    if (action) {
      const run = () => {
        this.#remove(toast);
        action.run();
      };
      toast.element.append(h('button', { t: action.label, attrs: { type: 'button' }, on: { click: run } }));
    }
    this.#shown = [...this.#shown, toast];
    this.element.append(toast.element);
    if (this.#shown.length > MOST) {
      const before = this.#shown.slice(0, -1);
      const first = before.find((one) => !isUsed(one)) ?? before[0];
      if (first) this.#remove(first);
    }
    this.#expire(toast, action ? LONGEST_MS : readingTime(message));
  }

  /** Call when something changed: what was undone another way no longer offers to be. */
  refresh(): void {
    for (const toast of this.#shown) if (toast.action?.isMoot?.()) this.#remove(toast);
  }

  #remove(toast: Shown): void {
    toast.element.remove();
    this.#shown = this.#shown.filter((one) => one !== toast);
  }

  /** A toast stays while it is hovered or its button has the focus. */
  #expire(toast: Shown, delay: number): void {
    setTimeout(() => {
      if (!this.#shown.includes(toast)) return;
      if (this.#isHeld() || isUsed(toast)) this.#expire(toast, SHORTEST_MS);
      else this.#remove(toast);
    }, delay);
  }
}

function isUsed({ element }: Shown): boolean {
  return element.matches(':hover, :focus-within');
}

function readingTime(message: string): number {
  return Math.min(Math.max(SHORTEST_MS, message.length * MS_PER_CHARACTER), LONGEST_MS);
}
