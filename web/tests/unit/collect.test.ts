import assert from 'node:assert/strict';
import { test } from 'node:test';
import { collectLater } from '../../src/state/collect';

const resting = () => false;

/** Runs with an engine that never collects and refuses blocks from `limit` on; returns the blocks allocated. */
function blocksAfter(run: () => void, limit = Number.POSITIVE_INFINITY): number {
  const { setTimeout: realTimeout, ArrayBuffer: RealBuffer } = globalThis;
  const due: Array<() => void> = [];
  let blocks = 0;
  Object.assign(globalThis, {
    setTimeout: (task: () => void) => due.push(task),
    ArrayBuffer: class {
      constructor() {
        if (blocks === limit) throw new RangeError('Out of memory');
        blocks++;
      }
    },
  });
  try {
    run();
    for (let task = due.shift(); task; task = due.shift()) task();
  } finally {
    Object.assign(globalThis, { setTimeout: realTimeout, ArrayBuffer: RealBuffer });
  }
  return blocks;
}

test('saves make the engine collect at most once a minute, within bounds, and memory may be short', (context) => {
  let now = 1000;
  context.mock.method(performance, 'now', () => now);
  const first = blocksAfter(() => collectLater(resting));
  assert.ok(first > 0 && first <= 24, `${first} blocks`);
  now += 59_000;
  assert.equal(
    blocksAfter(() => collectLater(resting)),
    0,
  );
  now += 1000;
  assert.equal(
    blocksAfter(() => collectLater(resting), 2),
    2,
  );
});

test('nothing is collected while somebody types', (context) => {
  context.mock.method(performance, 'now', () => 1e9);
  let keys = 20;
  let before = -1;
  const blocks = blocksAfter(() => {
    collectLater(() => {
      if (keys > 0) before = keys--;
      return keys > 0;
    });
  }, 3);
  assert.equal(before, 1, 'it waits for the last key');
  assert.equal(blocks, 3, 'and comes then');
});
