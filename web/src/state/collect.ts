const AFTER_SAVE_MS = 3000;
const EVERY_MS = 60_000;
const BLOCK_BYTES = 64 * 1024 * 1024;
const BLOCKS = 24;
const PAUSE_MS = 50;
/** It may take the engine a fifth of a second. */
const TYPING_PAUSE_MS = 500;

let next = 0;

/**
 * Call after a save: makes the engine look for what nobody holds any more. It does that by itself only when much has
 * been allocated since the last time, and after the start, with the document read and written once, that may be
 * never: the page would keep several times its notes. Waits while somebody types.
 */
export function collectLater(isTyping: () => boolean): void {
  const now = performance.now();
  if (now < next) return;
  next = now + EVERY_MS;
  setTimeout(() => collect(isTyping), AFTER_SAVE_MS);
}

/** Blocks that nobody writes to count as allocated, but take no memory. */
function collect(isTyping: () => boolean): void {
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
