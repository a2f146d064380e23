import { Saver, type SaveStatus } from '../../src/state/saver';

/** The time between two parts of a document. */
export const PART_MS = 10;

/** A saver with a manual clock and a host that only records what it is sent. */
export function saverBench() {
  let now = 0;
  let text = 0;
  let revision = 0;
  const idle = { hold: false, release: () => {}, longest: 0, cost: 0 };
  const broken = { value: false, post: false, part: false };
  /** How many parts a document has; 0: it is posted whole. */
  const parts = { count: 0 };
  const timers: Array<{ at: number; run: () => void }> = [];
  const sent: Array<{ serialized: string; revision: number; at: number }> = [];
  const statuses: SaveStatus[] = [];
  const timeout = (run: () => void, delay: number) => {
    const timer = { at: now + delay, run };
    timers.push(timer);
    return timer;
  };
  const drop = (timer: unknown) => {
    const at = timers.indexOf(timer as (typeof timers)[number]);
    if (at >= 0) timers.splice(at, 1);
  };
  const saver = new Saver({
    clock: {
      now: () => now,
      setTimer: (run, delay) => timeout(run, delay),
      clearTimer: (timer) => drop(timer),
    },
    whenIdle: (run, longest) => {
      idle.longest = longest;
      // Asynchronous, as in the page.
      const timer = { at: now, run };
      if (idle.hold) idle.release = run;
      else timers.push(timer);
      return () => {
        idle.release = () => undefined;
        drop(timer);
      };
    },
    prepare: () => {
      if (broken.value) throw new RangeError('Invalid string length');
      return { serialized: `text ${text}`, revision: ++revision };
    },
    send: (serialized, sentRevision) => {
      if (broken.post) return false;
      sent.push({ serialized, revision: sentRevision, at: now });
      now += idle.cost;
      return true;
    },
    beginParts: () => {
      if (parts.count === 0) return null;
      const document = { serialized: `text ${text}`, revision: ++revision };
      function* work() {
        for (let i = 0; i < parts.count; i++) {
          if (broken.part) throw new Error('This part could not be posted.');
          yield;
        }
      }
      const post = () => {
        if (!broken.post) sent.push({ ...document, at: now });
        return !broken.post;
      };
      return { revision: document.revision, work: work(), post };
    },
    inTurns: (work, done) => {
      const turn = (): void => {
        if (work.next().done) done();
        else timer = timeout(turn, PART_MS);
      };
      let timer = timeout(turn, PART_MS);
      return () => drop(timer);
    },
    onStatus: (status) => statuses.push(status),
  });
  const advance = (ms: number) => {
    const until = now + ms;
    for (;;) {
      const due = timers.filter(({ at }) => at <= until).sort((a, b) => a.at - b.at)[0];
      if (!due) break;
      timers.splice(timers.indexOf(due), 1);
      now = Math.max(now, due.at);
      due.run();
    }
    now = Math.max(now, until);
  };
  const type = () => {
    text++;
    saver.changed();
  };
  return { saver, sent, statuses, advance, type, idle, broken, parts };
}
