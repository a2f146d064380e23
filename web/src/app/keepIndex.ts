import type { Context } from '../commands/context';
import { inSlices } from '../time/slices';

/** After the start, when the first keys and frames are through. */
const START_MS = 1500;
/** Longer than between words. */
const PAUSE_MS = 700;
const SLICE_MS = 5;

/** Reads the tags and links of all notes after the start, and those of changed notes after a pause. */
export function keepIndex(context: Context): void {
  const { index, workspace } = context;
  let cancel = (): void => undefined;
  const readLater = (delay: number) => {
    cancel();
    cancel = inSlices(index.read(), { slice: SLICE_MS, delay, onDone: () => undefined });
  };
  workspace.onChange((change) => {
    if (change !== 'text' && change !== 'notes') return;
    index.changed();
    readLater(PAUSE_MS);
  });
  readLater(START_MS);
}
