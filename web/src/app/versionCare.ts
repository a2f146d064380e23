import type { QuietTime } from '../state/quiet';
import { LONG_TEXT, tidyVersions } from '../state/tidyVersions';
import { INTERVAL_MS } from '../state/versions';
import type { Workspace } from '../state/workspace';
import type { Clock } from '../time/monotonicClock';

const FIRST_MS = 60_000;

/** Keeps the versions of notes small and few, between keys. */
export function careForVersions(workspace: Workspace, quiet: QuietTime, clock: Clock): void {
  if (workspace.readOnly) return;
  let long = '';
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
    if (!newest || newest.held.length < LONG_TEXT || long === `${id} ${newest.taken}`) return;
    long = `${id} ${newest.taken}`;
    // A long one does not wait. But two at a time would both drop what is too much.
    isLate = true;
    if (isTidying) return;
    clock.clearTimer(timer);
    timer = clock.setTimer(tidy, 0);
  });
}
