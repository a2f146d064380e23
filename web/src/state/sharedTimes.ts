/** How often a note may go out until a computer that missed all of it sees two notes. */
const MOST_TIMES = 50;

/** Each time once, and the latest of too many. */
export function lastTimes(times: ReadonlyArray<number>): number[] {
  return [...new Set([...times].reverse())].slice(0, MOST_TIMES).reverse();
}
