const AFTER_SAVE_MS = 3000;
const EVERY_MS = 30_000;
const BLOCK_BYTES = 64 * 1024 * 1024;
const BLOCKS = 24;
const PAUSE_MS = 50;
/** It may take the engine a fifth of a second. */
const TYPING_PAUSE_MS = 500;

let last = Number.NEGATIVE_INFINITY;
let isDue = false;

/**
 * Call after a save: makes the engine look for what nobody holds any more. It does that by itself only when much has
 * been allocated since the last time, and after the start, with the document read and written once, that may be
 * never: the page would keep several times its notes. Waits while somebody types.
 */
export function collectLater(isTyping: () => boolean): void {
  if (isDue) return;
  isDue = true;
  const now = performance.now();
  const run = () => {
    isDue = false;
    last = performance.now();
    collect(isTyping);
  };
  setTimeout(run, Math.max(AFTER_SAVE_MS, last + EVERY_MS - now));
}

/** The same as soon as nobody types. Blocks that nobody writes to count as allocated, but take no memory. */
export function collect(isTyping: () => boolean): void {
  const sign = new WeakRef({});
  let blocks = 0;
  const turn = () => {
    if (isTyping()) {
      setTimeout(turn, TYPING_PAUSE_MS);
      return;
    }
    if (blocks++ === BLOCKS || !sign.deref()) return;
    try {
      new ArrayBuffer(BLOCK_BYTES);
    } catch {
      // No memory for it: the engine has looked by then.
      return;
    }
    setTimeout(turn, PAUSE_MS);
  };
  // A reference is weak only from the next task on.
  setTimeout(turn, PAUSE_MS);
}
