import assert from 'node:assert/strict';
import { test } from 'node:test';
import { inSlices, workSlice } from '../../src/time/slices';

function* steps(count: number, each: () => void = () => undefined): Generator<number, string> {
  for (let step = 1; step <= count; step++) {
    each();
    yield step;
  }
  return 'whole';
}

test('a slice ends when its time is up, after at least one step', () => {
  let now = 0;
  const work = steps(10, () => {
    now += 2;
  });
  assert.deepEqual(
    workSlice(work, 5, () => now),
    { done: false, value: 3 },
  );
  assert.deepEqual(
    workSlice(work, 0, () => now),
    { done: false, value: 4 },
  );
  assert.deepEqual(
    workSlice(work, 100, () => now),
    { done: true, value: 'whole' },
  );
});

test('work without a delay starts immediately, and short work also ends immediately', () => {
  let result = '';
  inSlices(steps(3), {
    slice: 1000,
    onDone: (value) => {
      result = value;
    },
  });
  assert.equal(result, 'whole');
});

test('long work pauses, reports progress and finishes', async () => {
  const pauses: number[] = [];
  const result = await new Promise((onDone) => {
    inSlices(steps(3), { slice: 0, delay: 0, onPause: (step) => pauses.push(step), onDone });
    assert.deepEqual(pauses, []);
  });
  assert.equal(result, 'whole');
  assert.deepEqual(pauses, [1, 2, 3]);
});

test('cancelled work stops, even when cancelled during a pause', async () => {
  let done = 0;
  const count = () => done++;
  const ended = () => assert.fail('called off');
  const cancelWaiting = inSlices(steps(3, count), { slice: 0, delay: 0, onDone: ended });
  cancelWaiting();
  const cancel: () => void = inSlices(steps(3, count), {
    slice: 0,
    delay: 0,
    onPause: () => cancel(),
    onDone: ended,
  });
  await new Promise((resolve) => setTimeout(resolve, 50));
  assert.equal(done, 1);
});
