import assert from 'node:assert/strict';
import { test } from 'node:test';
import { collect, collectLater } from '../../src/state/collect';

const resting = () => false;

/** Runs with an engine that never collects and refuses blocks from `limit` on; returns the blocks allocated. */
function blocksAfter(run: () => void, limit = Number.POSITIVE_INFINITY): number {
  return collected(run, limit).blocks;
}

/** Also when the first of them came, in milliseconds. */
function collected(run: () => void, limit = Number.POSITIVE_INFINITY): { blocks: number; start: number } {
  const { setTimeout: realTimeout, ArrayBuffer: RealBuffer } = globalThis;
  const due: Array<() => void> = [];
  let blocks = 0;
  let start = 0;
  Object.assign(globalThis, {
    setTimeout: (task: () => void, delay: number) => {
      if (blocks === 0) start += delay;
      due.push(task);
    },
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
  return { blocks, start };
}

test('saves make the engine collect twice a minute at most, within bounds, and the last one counts', (context) => {
  let now = 1000;
  context.mock.method(performance, 'now', () => now);
  const first = collected(() => collectLater(resting));
  assert.ok(first.blocks > 0 && first.blocks <= 24, `${first.blocks} blocks`);
  assert.ok(first.start < 5000);
  now += 10_000;
  const second = collected(() => {
    collectLater(resting);
    collectLater(resting);
  });
  assert.equal(second.blocks, first.blocks);
  assert.ok(second.start >= 20_000 && second.start < 21_000, `after ${second.start} ms`);
});

test('where memory is short, collecting ends with the first block that is refused', () => {
  assert.equal(
    blocksAfter(() => collect(resting), 2),
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
