/**
 * Long work done in slices, so key presses and frames get through in between. Work is an iterator: each step
 * is short, and the iterator's return value is the result.
 */

/** The longest a search, or what it prepares, runs before it lets a key press or a frame through. */
export const SEARCH_SLICE_MS = 24;

export interface Slicing<Step, Result> {
  /** The longest a slice may take, in milliseconds; a step in progress is finished. */
  readonly slice: number;
  /** Delay before the first slice, in milliseconds. Without it, work starts within this call. */
  readonly delay?: number;
  /** Pause between slices, in milliseconds; without it, just long enough to let events through. */
  readonly pause?: number;
  /** Called before each pause with the latest step's value. */
  readonly onPause?: (step: Step) => void;
  readonly onDone: (result: Result) => void;
}

/** Works until done or until the slice is over, at least one step; returns the last result. */
export function workSlice<Step, Result>(
  work: Iterator<Step, Result>,
  slice: number,
  now: () => number = () => performance.now(),
): IteratorResult<Step, Result> {
  const until = now() + slice;
  let step = work.next();
  while (!step.done && now() < until) step = work.next();
  return step;
}

/** Works in slices; returns a cancel function. */
export function inSlices<Step, Result>(
  work: Iterator<Step, Result>,
  { slice, delay, pause = 0, onPause, onDone }: Slicing<Step, Result>,
): () => void {
  let timer: ReturnType<typeof setTimeout> | undefined;
  let cancelled = false;
  const turn = () => {
    const step = workSlice(work, slice);
    if (step.done) {
      onDone(step.value);
      return;
    }
    onPause?.(step.value);
    if (!cancelled) timer = setTimeout(turn, pause);
  };
  if (delay === undefined) turn();
  else timer = setTimeout(turn, delay);
  return () => {
    cancelled = true;
    clearTimeout(timer);
  };
}
