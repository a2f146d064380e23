/** The host stores revisions as signed 64-bit integers, so larger numbers saturate. */
const CEILING = 2 ** 63;

/** A revision read from a document; anything unusable counts as none. */
export function readRevision(value: unknown): number {
  if (typeof value !== 'number' || Number.isNaN(value) || value < 0) return 0;
  return Math.min(Math.trunc(value), CEILING);
}

/**
 * The revision after `last`. It follows the clock, so a page that had to start without its document still
 * supersedes the one on disk. Beyond the exact integers, adding one is lost in rounding, so the next
 * representable number is used. At the ceiling there is none, and writing an equal revision still works.
 */
export function nextRevision(last: number, now: number): number {
  const next = Math.max(last + 1, Math.trunc(now));
  if (next > last && Number.isSafeInteger(next)) return next;
  return Math.min(Math.max(last, 1) * (1 + Number.EPSILON), CEILING);
}
