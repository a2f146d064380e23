import assert from 'node:assert/strict';
import { test } from 'node:test';
import { saverBench } from './saverBench';

test('a change is saved after a pause', () => {
  const { saver, sent, advance, type } = saverBench();
  assert.equal(saver.status, 'saved');
  type();
  assert.equal(saver.status, 'unsaved');
  advance(299);
  assert.equal(sent.length, 0);
  advance(1);
  assert.equal(sent.length, 1);
  assert.equal(saver.status, 'saving');
  saver.answered(true, 1);
  assert.equal(saver.status, 'saved');
});

test('continuous typing is saved every two seconds', () => {
  const { saver, sent, advance, type } = saverBench();
  for (let i = 0; i < 50; i++) {
    type();
    advance(100);
    const last = sent.at(-1);
    if (last) saver.answered(true, last.revision);
  }
  const times = sent.map(({ at }) => at);
  assert.equal(times[0], 2000);
  assert.equal(times.length, 2);
  times.slice(1).forEach((at, i) => {
    assert.ok(at - (times[i] ?? 0) <= 2100, times.join());
  });
});

test('saves go out one at a time, and the next one carries the latest text', () => {
  const { saver, sent, advance, type } = saverBench();
  type();
  advance(300);
  type();
  advance(400);
  type();
  saver.flush();
  assert.equal(sent.length, 1);
  saver.answered(true, 1);
  assert.deepEqual(
    sent.map(({ serialized }) => serialized),
    ['text 1', 'text 3'],
  );
  assert.equal(saver.status, 'saving');
  saver.answered(true, 2);
  assert.equal(saver.status, 'saved');
});

test('an answer does not cover what was typed after the save', () => {
  const { saver, advance, type } = saverBench();
  type();
  advance(300);
  type();
  saver.answered(true, 1);
  assert.equal(saver.status, 'unsaved');
});

test('flush saves immediately, and only if something is unsaved', () => {
  const { saver, sent, type } = saverBench();
  saver.flush();
  assert.equal(sent.length, 0);
  type();
  saver.flush();
  assert.equal(sent.length, 1);
});

test('failures are retried with increasing pauses', () => {
  const { saver, sent, advance, type } = saverBench();
  type();
  advance(300);
  const gaps: number[] = [];
  for (let i = 0; i < 8; i++) {
    const last = sent.at(-1);
    assert.ok(last);
    saver.answered(false, last.revision);
    assert.equal(saver.status, 'failed');
    const before = sent.length;
    let waited = 0;
    while (sent.length === before && waited < 90_000) {
      advance(500);
      waited += 500;
    }
    gaps.push(waited);
  }
  assert.deepEqual(gaps, [1000, 2000, 4000, 8000, 16_000, 32_000, 60_000, 60_000]);
  assert.equal(saver.status, 'failed');
  saver.answered(true, sent.at(-1)?.revision ?? 0);
  assert.equal(saver.status, 'saved');
});

test('after failures a change brings the next retry forward, but only a little', () => {
  const { saver, sent, advance, type } = saverBench();
  const fail = () => saver.answered(false, sent.at(-1)?.revision ?? 0);
  type();
  advance(300);
  for (let i = 0; i < 7; i++) {
    fail();
    const before = sent.length;
    while (sent.length === before) advance(1000);
  }
  fail();
  const before = sent.length;
  for (let i = 0; i < 49; i++) {
    type();
    advance(100);
  }
  assert.equal(sent.length, before);
  advance(100);
  assert.equal(sent.length, before + 1, 'five seconds after the last try');
  fail();
  type();
  saver.flush();
  assert.equal(sent.length, before + 2, 'a key that saves does not wait');
});

test('a document that cannot be serialised is a failure like any other', () => {
  const { saver, sent, statuses, advance, type, broken } = saverBench();
  broken.value = true;
  type();
  advance(300);
  assert.equal(sent.length, 0);
  assert.deepEqual(statuses, ['unsaved', 'failed']);
  broken.value = false;
  advance(1000);
  saver.answered(true, 1);
  assert.equal(saver.status, 'saved');
});

test('only an explicitly requested save goes out as soon as the previous one is answered', () => {
  const { saver, sent, advance, type, idle } = saverBench();
  idle.hold = true;
  type();
  advance(300);
  assert.equal(sent.length, 0, 'it waits for a quiet moment');
  type();
  advance(5000);
  assert.equal(saver.status, 'unsaved');
  idle.release();
  assert.equal(sent.length, 1);
  type();
  advance(300);
  idle.release();
  saver.answered(true, 1);
  assert.equal(sent.length, 1);
  advance(0);
  idle.release();
  assert.equal(sent.length, 2);
  type();
  saver.flush();
  saver.answered(true, 2);
  assert.equal(sent.length, 3, 'asked for');
});

test('no answer counts as a failure, and a late one still counts for what it covers', () => {
  const { saver, sent, advance, type } = saverBench();
  type();
  advance(300);
  advance(30_000);
  assert.equal(saver.status, 'failed');
  saver.answered(true, 1);
  assert.equal(saver.status, 'saved');
  const before = sent.length;
  advance(60_000);
  assert.equal(sent.length, before);
});

test('an answer for an older revision never marks newer text as saved', () => {
  const { saver, sent, advance, type } = saverBench();
  type();
  advance(300);
  advance(30_000);
  type();
  advance(2000);
  assert.equal(sent.length, 2);
  saver.answered(true, 1);
  assert.notEqual(saver.status, 'saved');
  saver.answered(false, 1);
  assert.notEqual(saver.status, 'saved');
  saver.answered(true, 2);
  assert.equal(saver.status, 'saved');
});

test('an answer for a higher revision covers the lower ones', () => {
  const { saver, advance, type } = saverBench();
  type();
  advance(300);
  saver.answered(true, 99);
  assert.equal(saver.status, 'saved');
});

test('unexpected answers change nothing', () => {
  const { saver, statuses } = saverBench();
  saver.answered(true, 5);
  saver.answered(false, 5);
  saver.answered(true, Number.NaN);
  assert.deepEqual(statuses, []);
});

test('after a slow save, the next one waits longer for a pause in typing, up to a limit', () => {
  for (const [cost, longest] of [
    [0, 1000],
    [30, 1300],
    [390, 4900],
    [3000, 5000],
  ] as const) {
    const { saver, sent, advance, type, idle } = saverBench();
    Object.assign(idle, { cost, hold: true });
    type();
    advance(300);
    assert.equal(idle.longest, 1000, 'nothing is known before the first');
    idle.release();
    saver.answered(true, sent.length);
    type();
    advance(300);
    assert.equal(idle.longest, longest);
  }
});
