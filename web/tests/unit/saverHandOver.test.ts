import assert from 'node:assert/strict';
import { test } from 'node:test';
import { saverBench } from './saverBench';

test('handing over does not wait for the answer to an earlier document', () => {
  const { saver, sent, advance, type } = saverBench();
  type();
  advance(300);
  type();
  saver.flush();
  assert.equal(sent.length, 1, 'a save as usual waits');
  assert.equal(saver.handOver(), true);
  assert.deepEqual(
    sent.map(({ serialized }) => serialized),
    ['text 1', 'text 2'],
  );
  saver.answered(true, 1);
  assert.equal(saver.status, 'saving');
  assert.equal(sent.length, 2, 'nothing is left that has not been sent');
  type();
  advance(300);
  saver.answered(true, 2);
  assert.equal(saver.status, 'unsaved');
  advance(0);
  assert.equal(sent.at(-1)?.serialized, 'text 3');
  saver.answered(true, 3);
  assert.equal(saver.status, 'saved');
  assert.equal(saver.handOver(), true, 'the host has everything');
  assert.equal(sent.length, 3);
});

test('the answer timeout restarts with the last document', () => {
  const { saver, advance, type } = saverBench();
  type();
  advance(300);
  advance(20_000);
  type();
  saver.handOver();
  advance(29_999);
  assert.equal(saver.status, 'saving');
  advance(1);
  assert.equal(saver.status, 'failed');
});

test('a document that was handed over and rejected is retried', () => {
  const { saver, sent, advance, type } = saverBench();
  type();
  advance(300);
  type();
  saver.handOver();
  saver.answered(false, 1);
  assert.equal(saver.status, 'saving', 'the later one covers it');
  saver.answered(false, 2);
  assert.equal(saver.status, 'failed');
  advance(1000);
  assert.equal(sent.length, 3);
  saver.answered(true, 3);
  assert.equal(saver.status, 'saved');
});

test('a document that cannot be posted fails immediately', () => {
  const { saver, sent, statuses, advance, type, broken } = saverBench();
  type();
  broken.post = true;
  assert.equal(saver.handOver(), false);
  assert.deepEqual(statuses, ['unsaved', 'saving', 'failed']);
  broken.post = false;
  broken.value = true;
  assert.equal(saver.handOver(), false);
  broken.value = false;
  advance(2000);
  assert.equal(sent.length, 1);
  saver.answered(true, sent[0]?.revision ?? 0);
  assert.equal(saver.status, 'saved');
});
