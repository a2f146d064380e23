import { Saver, type SaveStatus } from '../../src/state/saver';

/** A saver with a manual clock and a host that only records what it is sent. */
export function saverBench() {
  let now = 0;
  let text = 0;
  let revision = 0;
  const idle = { hold: false, release: () => {}, longest: 0, cost: 0 };
  const broken = { value: false, post: false };
  const timers: Array<{ at: number; run: () => void }> = [];
  const sent: Array<{ serialized: string; revision: number; at: number }> = [];
  const statuses: SaveStatus[] = [];
  const saver = new Saver({
    clock: {
      now: () => now,
      setTimer: (run, delay) => {
        const timer = { at: now + delay, run };
        timers.push(timer);
        return timer;
      },
      clearTimer: (timer) => {
        const at = timers.indexOf(timer as (typeof timers)[number]);
        if (at >= 0) timers.splice(at, 1);
      },
    },
    whenIdle: (run, longest) => {
      idle.longest = longest;
      // Asynchronous, as in the page.
      const timer = { at: now, run };
      if (idle.hold) idle.release = run;
      else timers.push(timer);
      return () => {
        idle.release = () => undefined;
        if (timers.includes(timer)) timers.splice(timers.indexOf(timer), 1);
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
  return { saver, sent, statuses, advance, type, idle, broken };
}
