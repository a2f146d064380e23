import type { SearchQuery } from '@codemirror/search';
import type { EditorState } from '@codemirror/state';
import { inSlices } from '../time/slices';

const CHUNK = 100_000;
const SLICE_MS = 6;
const PAUSE_MS = 4;
/** More than anyone steps through; beyond this, matches are not worth storing. */
export const MOST_MATCHES = 100_000;

export interface Matches {
  /** The start of each match, in order. */
  readonly starts: ReadonlyArray<number>;
  readonly done: boolean;
}

/** Finds matches chunk by chunk, so a long text can be searched between key presses. */
export function* findMatches(state: EditorState, query: SearchQuery): Generator<Matches, Matches> {
  const starts: number[] = [];
  const { doc } = state;
  // Search a little past the end of each chunk for matches that cross it.
  const beyond = query.search.length + 1000;
  for (let from = 0; from <= doc.length && starts.length < MOST_MATCHES; ) {
    const end = from + CHUNK >= doc.length ? doc.length + 1 : doc.lineAt(from + CHUNK).to + 1;
    let next = end;
    const until = doc.lineAt(Math.min(doc.length, end + beyond)).to;
    const cursor = query.getCursor(state, from, until);
    for (let match = cursor.next(); !match.done; match = cursor.next()) {
      const { from: start, to } = match.value;
      if (start >= end || starts.length >= MOST_MATCHES) break;
      starts.push(start);
      next = Math.max(next, to);
    }
    from = next;
    yield { starts, done: false };
  }
  return { starts, done: true };
}

/** Counts in slices, with pauses in between; a new count replaces the one in progress. */
export class MatchCount {
  #cancel = (): void => undefined;

  start(state: EditorState, query: SearchQuery, delay: number, show: (matches: Matches) => void): void {
    this.stop();
    const search = findMatches(state, query);
    this.#cancel = inSlices(search, { slice: SLICE_MS, delay, pause: PAUSE_MS, onPause: show, onDone: show });
  }

  stop(): void {
    this.#cancel();
  }
}

/** The 1-based index of the match starting at `at`; zero if there is none. */
export function placeOf(starts: ReadonlyArray<number>, at: number): number {
  let low = 0;
  let high = starts.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if ((starts[middle] ?? 0) < at) low = middle + 1;
    else high = middle;
  }
  return starts[low] === at ? low + 1 : 0;
}
