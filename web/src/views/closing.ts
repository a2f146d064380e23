/** Events that start an interaction. Those that end one, such as keyup, are let through. */
const INPUT = [
  ...['keydown', 'keypress', 'beforeinput', 'cut', 'paste', 'cancel'],
  ...['pointerdown', 'mousedown', 'touchstart', 'click', 'auxclick', 'dblclick', 'contextmenu'],
  ...['dragstart', 'dragover', 'drop'],
];

/**
 * The time between a quit's final state and either the end of the page or the quit's cancellation. Anything
 * the user did then would be missing from that state, so the page gets no input; open dialogs, typed text and
 * the focus are preserved. Construct this before anything else listens on the window, because its listeners
 * must run first.
 */
export class Closing {
  #begun = false;
  #waiting: Array<() => void> = [];
  #refocus: () => void = () => undefined;

  constructor() {
    for (const type of INPUT) {
      window.addEventListener(type, (event) => this.#refuse(event), { capture: true, passive: false });
    }
  }

  get begun(): boolean {
    return this.#begun;
  }

  /** Runs this immediately, or once the quit has been cancelled. */
  after(run: () => void): void {
    if (this.#begun) this.#waiting.push(run);
    else run();
  }

  begin(): void {
    if (this.#begun) return;
    this.#begun = true;
    setInert(true);
    this.#refocus = takeFocus();
  }

  end(): void {
    if (!this.#begun) return;
    this.#begun = false;
    setInert(false);
    this.#refocus();
    for (const run of this.#waiting.splice(0)) run();
  }

  #refuse(event: Event): void {
    if (!this.#begun) return;
    event.preventDefault();
    event.stopImmediatePropagation();
  }
}

/** Toasts are not made inert, not even in a dialog: screen readers skip inert content. */
function setInert(inert: boolean): void {
  for (const element of document.querySelectorAll<HTMLElement>('.app, dialog > :not(.toasts)')) element.inert = inert;
}

/**
 * WebKit still sends keys to a focused element that became inert, so blur it. Returns a function that
 * restores the focus and, in a field, the selection.
 */
function takeFocus(): () => void {
  const focused = document.activeElement;
  if (!(focused instanceof HTMLElement)) return () => undefined;
  const isField = focused instanceof HTMLInputElement || focused instanceof HTMLTextAreaElement;
  const [from, to] = isField ? [focused.selectionStart, focused.selectionEnd] : [null, null];
  focused.blur();
  return () => {
    focused.focus();
    if (isField && from !== null) focused.setSelectionRange(from, to);
  };
}
