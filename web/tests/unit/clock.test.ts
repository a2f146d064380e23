import assert from 'node:assert/strict';
import { mock, test } from 'node:test';
import { pageClock } from '../../src/time/monotonicClock';
import { QuietTime } from '../../src/state/quiet';
import { Saver } from '../../src/state/saver';

const HOUR = 3_600_000;
const nothing = { next: () => ({ done: true as const, value: undefined }) };

/** The engine's timers and clocks, advanced manually. The wall clock can also be set. */
function engine() {
  let elapsed = 10_000;
  let wall = 1_700_000_000_000;
  let timers: Array<{ at: number; run: () => void }> = [];
  mock.method(Date, 'now', () => wall + elapsed);
  mock.method(performance, 'now', () => elapsed);
  mock.method(globalThis, 'setTimeout', (run: () => void, delay = 0) => {
    const timer = { at: elapsed + delay, run };
    timers.push(timer);
    return timer;
  });
  mock.method(globalThis, 'clearTimeout', (timer: unknown) => {
    timers = timers.filter((one) => one !== timer);
  });
  return {
    setWallClock: (by: number) => {
      wall += by;
    },
    elapsed: () => elapsed,
    advance: (ms: number) => {
      const until = elapsed + ms;
      for (;;) {
        const due = timers.filter(({ at }) => at <= until).sort((a, b) => a.at - b.at)[0];
        if (!due) break;
        timers = timers.filter((one) => one !== due);
        elapsed = Math.max(elapsed, due.at);
        due.run();
      }
      elapsed = until;
    },
  };
}

/** A saver on the page's own clock, answered by the test. */
function saverOn(elapsed: () => number) {
  const sent: Array<{ revision: number; at: number }> = [];
  const saver: Saver = new Saver({
    clock: pageClock,
    whenIdle: (run, longest) => new QuietTime(pageClock).after(nothing, longest, run),
    prepare: () => ({ serialized: '{}', revision: sent.length + 1 }),
    send: (_, revision) => {
      sent.push({ revision, at: elapsed() });
      return true;
    },
    beginParts: () => null,
    inTurns: () => () => undefined,
    onStatus: () => undefined,
  });
  return { saver, sent };
}

/** Runs each test with the wall clock set back halfway through, and with it set forward. */
function testWithSteps(name: string, run: (step: number) => void): void {
  for (const step of [-HOUR, HOUR]) {
    test(`${name}, with the wall clock set ${step < 0 ? 'back' : 'forward'}`, () => {
      try {
        run(step);
      } finally {
        mock.restoreAll();
      }
    });
  }
}

testWithSteps('typing on is saved every two seconds', (step) => {
  const { advance, setWallClock, elapsed } = engine();
  const { saver, sent } = saverOn(elapsed);
  const began = elapsed();
  for (let i = 0; i < 45; i++) {
    if (i === 15) setWallClock(step);
    saver.changed();
    advance(100);
    const last = sent.at(-1);
    if (last) saver.answered(true, last.revision);
  }
  assert.deepEqual(
    sent.map(({ at }) => at - began),
    [2000, 4000],
  );
});

testWithSteps('after a failure a change waits five seconds', (step) => {
  const { advance, setWallClock, elapsed } = engine();
  const { saver, sent } = saverOn(elapsed);
  saver.changed();
  advance(300);
  for (let i = 0; i < 6; i++) {
    const { length } = sent;
    saver.answered(false, sent.at(-1)?.revision ?? 0);
    while (sent.length === length) advance(1000);
  }
  saver.answered(false, sent.at(-1)?.revision ?? 0);
  const { length } = sent;
  setWallClock(step);
  saver.changed();
  advance(4999);
  assert.equal(sent.length, length, 'it was not hurried');
  advance(1);
  assert.equal(sent.length, length + 1);
});

testWithSteps('a quiet moment comes when the keys are still', (step) => {
  const { advance, setWallClock, elapsed } = engine();
  const quiet = new QuietTime(pageClock);
  let ranAt = -1;
  quiet.after(nothing, 1000, () => {
    ranAt = elapsed();
  });
  quiet.keyPressed();
  const last = elapsed();
  setWallClock(step);
  advance(1500);
  assert.equal(ranAt - last, 120);
});
