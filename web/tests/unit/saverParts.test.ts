import assert from 'node:assert/strict';
import { test } from 'node:test';
import { PART_MS, saverBench } from './saverBench';

/** A document on its way in ten parts, of which some have been posted. */
function onItsWay() {
  const bench = saverBench();
  bench.parts.count = 10;
  bench.type();
  bench.advance(300 + 5 * PART_MS);
  assert.equal(bench.sent.length, 0);
  assert.equal(bench.saver.status, 'saving');
  const texts = () => bench.sent.map(({ serialized }) => serialized);
  return { ...bench, texts, finish: () => bench.advance(10 * PART_MS) };
}

test('a document in parts is saved when its last part has been posted and the host answers', () => {
  const { saver, texts, finish } = onItsWay();
  finish();
  assert.deepEqual(texts(), ['text 1']);
  assert.equal(saver.status, 'saving');
  saver.answered(true, 1);
  assert.equal(saver.status, 'saved');
});

test('what is typed while the parts are on their way is in the next document', () => {
  const { saver, texts, finish, type, advance } = onItsWay();
  type();
  finish();
  saver.answered(true, 1);
  assert.notEqual(saver.status, 'saved');
  advance(5000);
  assert.deepEqual(texts(), ['text 1', 'text 2']);
  saver.answered(true, 2);
  assert.equal(saver.status, 'saved');
});

test('the next document follows although its time came while the parts were on their way', () => {
  const { saver, texts, type, advance, parts } = onItsWay();
  parts.count = 1000;
  saver.flush();
  saver.answered(true, 2);
  type();
  advance(300 + PART_MS);
  type();
  advance(5000);
  assert.equal(texts().length, 1);
  advance(1000 * PART_MS);
  saver.answered(true, 3);
  parts.count = 0;
  advance(1000);
  assert.deepEqual(texts(), ['text 1', 'text 2', 'text 3']);
});

test('a flush does not wait for the parts', () => {
  const { saver, texts, finish, type } = onItsWay();
  type();
  saver.flush();
  assert.deepEqual(texts(), ['text 2']);
  finish();
  assert.deepEqual(texts(), ['text 2'], 'the parts were given up');
  saver.answered(true, 2);
  assert.equal(saver.status, 'saved');
});

test('what is handed over does not wait for the parts either', () => {
  const { saver, texts, finish, type } = onItsWay();
  type();
  assert.equal(saver.handOver(), true);
  assert.deepEqual(texts(), ['text 2']);
  finish();
  assert.deepEqual(texts(), ['text 2']);
});

test('a part that cannot be posted is a failure, and the document is tried again as a whole', () => {
  const { saver, texts, broken, advance } = onItsWay();
  broken.part = true;
  advance(PART_MS);
  assert.equal(saver.status, 'failed');
  assert.deepEqual(texts(), []);
  advance(1000);
  assert.deepEqual(texts(), ['text 1']);
  saver.answered(true, 2);
  assert.equal(saver.status, 'saved');
});

test('a message that cannot be posted after its parts is a failure', () => {
  const { saver, texts, broken, finish, advance } = onItsWay();
  broken.post = true;
  finish();
  assert.equal(saver.status, 'failed');
  broken.post = false;
  advance(1000);
  assert.deepEqual(texts(), ['text 1']);
});

test('no answer after the parts is a failure', () => {
  const { saver, finish, advance } = onItsWay();
  finish();
  advance(30_000);
  assert.equal(saver.status, 'failed');
});

test('late answers for earlier documents do not concern the parts', () => {
  for (const success of [true, false]) {
    const { saver, texts, finish } = onItsWay();
    saver.answered(success, 0);
    assert.equal(saver.status, 'saving');
    finish();
    assert.deepEqual(texts(), ['text 1']);
    saver.answered(true, 1);
    assert.equal(saver.status, 'saved');
  }
});
