/** Events that begin something. Those that end it, such as a key's release, are let through. */
const INPUT = [
  ...['keydown', 'keypress', 'beforeinput', 'cut', 'paste', 'cancel'],
  ...['pointerdown', 'mousedown', 'touchstart', 'click', 'auxclick', 'dblclick', 'contextmenu'],
  ...['dragstart', 'dragover', 'drop'],
];

/**
 * The time from a quit's final state to its end or its cancel. What a user does meanwhile would not be
 * in that state, so no input reaches the page; what was open, typed and focused stays as it was.
 * Construct it before anything else listens on the window, because its listeners must run first.
 */
export class Closing {
  #begun = false;
  #waiting: Array<() => void> = [];
  #refocus: () => void = () => undefined;
  #menus: ReadonlyArray<HTMLElement> = [];

  constructor() {
    for (const type of INPUT) {
      window.addEventListener(type, (event) => this.#refuse(event), { capture: true, passive: false });
    }
  }

  get begun(): boolean {
    return this.#begun;
  }

  /** Runs this at once, or as soon as the quit has been cancelled. */
  after(run: () => void): void {
    if (this.#begun) this.#waiting.push(run);
    else run();
  }

  begin(): void {
    if (this.#begun) return;
    this.#begun = true;
    this.#menus = [...document.querySelectorAll<HTMLElement>('[popover=auto]:popover-open')];
    setInert(true);
    this.#refocus = takeFocus();
  }

  end(): void {
    if (!this.#begun) return;
    this.#begun = false;
    setInert(false);
    // A press outside closes a menu, which no page can prevent.
    for (const menu of this.#menus) if (!menu.matches(':popover-open')) menu.showPopover();
    this.#refocus();
    for (const run of this.#waiting.splice(0)) run();
  }

  #refuse(event: Event): void {
    if (!this.#begun) return;
    event.preventDefault();
    event.stopImmediatePropagation();
  }
}

/** Toasts stay readable: screen readers skip what is inert. */
function setInert(inert: boolean): void {
  for (const element of document.querySelectorAll<HTMLElement>('.app, dialog')) element.inert = inert;
}

/**
 * WebKit sends keys on to a focused element that has become inert, so it loses the focus. Returns a
 * function that restores the focus, and the selection in a field.
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
