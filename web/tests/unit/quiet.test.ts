import assert from 'node:assert/strict';
import { test } from 'node:test';
import { QuietTime } from '../../src/state/quiet';

/** QuietTime on a fake clock, where each step of work takes one millisecond. */
function bench(pieces: number) {
  let now = 0;
  let left = pieces;
  let timers: Array<{ at: number; run: () => void }> = [];
  const turns: number[] = [];
  const quiet = new QuietTime({
    now: () => now,
    setTimer: (run, delay) => {
      const timer = { at: now + delay, run };
      timers.push(timer);
      return timer;
    },
    clearTimer: (timer) => {
      timers = timers.filter((one) => one !== timer);
    },
  });
  const work = { next: () => ({ done: left-- <= 0, value: now++ }) };
  const advance = (until: number) => {
    for (;;) {
      const due = timers.find(({ at }) => at <= until);
      if (!due) break;
      timers = timers.filter((one) => one !== due);
      now = Math.max(now, due.at);
      const started = now;
      due.run();
      turns.push(now - started);
    }
    now = Math.max(now, until);
  };
  return { quiet, work, advance, turns, at: () => now };
}

test('work is sliced so that no key has to wait', () => {
  const { quiet, work, advance, turns } = bench(40);
  let ran = 0;
  quiet.after(work, 1000, () => ran++);
  advance(100);
  assert.equal(ran, 1);
  assert.ok(turns.length >= 8 && turns.every((length) => length <= 5), turns.join());
});

test('the callback runs once typing pauses, or after a second of typing', () => {
  const { quiet, work, advance, at } = bench(0);
  let ranAt = -1;
  const start = () => quiet.after(work, 1000, () => (ranAt = at()));
  quiet.keyPressed();
  start();
  advance(119);
  assert.equal(ranAt, -1);
  advance(130);
  assert.equal(ranAt, 120);
  ranAt = -1;
  start();
  const from = at();
  while (ranAt < 0 && at() < from + 3000) {
    quiet.keyPressed();
    advance(at() + 50);
  }
  assert.ok(ranAt - from <= 1050 && ranAt - from >= 950, String(ranAt - from));
});

test('a cancelled callback does not run', () => {
  const { quiet, work, advance } = bench(10);
  let ran = 0;
  quiet.after(work, 1000, () => ran++)();
  advance(5000);
  assert.equal(ran, 0);
});

test('work that keeps the host busy leaves it a frame after each step while somebody types', () => {
  const { quiet, work, advance, turns, at } = bench(10);
  let ranAt = -1;
  quiet.keyPressed();
  quiet.spread(work, () => {
    ranAt = at();
  });
  advance(500);
  assert.deepEqual(turns, Array(11).fill(1));
  assert.equal(ranAt, 11 + 10 * 16);
});

test('such work is fast when nobody types, and can be given up', () => {
  const { quiet, work, advance, turns, at } = bench(100);
  let ranAt = -1;
  const cancel = quiet.spread(work, () => {
    ranAt = at();
  });
  advance(20);
  assert.ok(turns.length > 1 && turns.every((length) => length === 5), turns.join());
  cancel();
  advance(1000);
  assert.equal(ranAt, -1);
  quiet.spread(work, () => {
    ranAt = at();
  });
  advance(2000);
  assert.ok(ranAt > 0 && ranAt < 1100, String(ranAt));
});
