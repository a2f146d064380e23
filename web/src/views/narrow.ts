/** Too narrow for list, text and preview side by side; the style sheet asks the same. */
const narrow = globalThis.matchMedia?.('(max-width: 700px)');

export function isNarrow(): boolean {
  return narrow?.matches === true;
}

export function onNarrowChange(listener: () => void): void {
  narrow?.addEventListener('change', listener);
}
