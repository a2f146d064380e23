/**
 * Long work in slices between which keys and frames get through. Work is an iterator: each step is
 * short, and its last one gives the result.
 */

export interface Slicing<Step, Result> {
  /** The longest a slice may take, in milliseconds; a step that has begun is finished. */
  readonly slice: number;
  /** How long the first slice waits, in milliseconds. Without it the work begins within this call. */
  readonly delay?: number;
  /** The pause between two slices, in milliseconds; none longer than it takes to let events through. */
  readonly pause?: number;
  /** Called before each pause with the last step. */
  readonly onPause?: (step: Step) => void;
  readonly onDone: (result: Result) => void;
}

/** Works until it is done or the slice is over, one step at least; gives the last step. */
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

/** Works in slices; gives the function that calls off what is left. */
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
