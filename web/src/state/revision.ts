/** The host keeps revisions as signed 64-bit integers; a larger number saturates there. */
const CEILING = 2 ** 63;

/** A revision as it may stand in a document: anything unusable counts as none. */
export function readRevision(value: unknown): number {
  if (typeof value !== 'number' || Number.isNaN(value) || value < 0) return 0;
  return Math.min(Math.trunc(value), CEILING);
}

/**
 * The revision after `last`. It follows the clock, so that a page which had to start without its
 * document still supersedes the one on disk. Beyond the exact integers one added is lost in
 * rounding; then the next larger number is taken. At the ceiling nothing is larger, and an equal
 * revision is still written.
 */
export function nextRevision(last: number, now: number): number {
  const next = Math.max(last + 1, Math.trunc(now));
  if (next > last && Number.isSafeInteger(next)) return next;
  return Math.min(Math.max(last, 1) * (1 + Number.EPSILON), CEILING);
}
