import type { QuietTime } from '../state/quiet';
import { tidyVersions } from '../state/tidyVersions';
import type { Version } from '../state/version';
import { INTERVAL_MS } from '../state/versions';
import type { Workspace } from '../state/workspace';
import type { Clock } from '../time/monotonicClock';

const FIRST_MS = 60_000;
/** A version of so long a text takes much of what there is for all of them, so this does not wait. */
const LONG_TEXT = 1_000_000;

/** Keeps the versions of notes small and few, between keys. */
export function careForVersions(workspace: Workspace, quiet: QuietTime, clock: Clock): void {
  if (workspace.readOnly) return;
  let long: Version | undefined;
  let timer: unknown = clock.setTimer(tidy, FIRST_MS);
  let isTidying = false;
  let isLate = false;
  function tidy(): void {
    isTidying = true;
    isLate = false;
    quiet.spread(tidyVersions(workspace), () => {
      isTidying = false;
      timer = clock.setTimer(tidy, isLate ? 0 : INTERVAL_MS);
    });
  }
  workspace.onChange((change, id) => {
    if (change !== 'text' || id === undefined) return;
    const newest = workspace.note(id)?.versions[0];
    if (!newest || newest === long || newest.held.length < LONG_TEXT) return;
    long = newest;
    // Two at a time would both drop what is too much.
    isLate = true;
    if (isTidying) return;
    clock.clearTimer(timer);
    timer = clock.setTimer(tidy, 0);
  });
}
