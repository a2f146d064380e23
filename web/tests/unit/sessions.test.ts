import assert from 'node:assert/strict';
import { test } from 'node:test';
import { KEPT_WITHOUT_TAB, Sessions } from '../../src/editor/sessions';

const exists = () => true;
const names = (count: number) => Array.from({ length: count }, (_, at) => `note ${at}`);

function sessionsOf(ids: ReadonlyArray<string>): Sessions<string> {
  const sessions = new Sessions<string>();
  for (const id of ids) sessions.keep(id, `state of ${id}`);
  return sessions;
}

test('open tabs keep their sessions, however many there are', () => {
  const ids = names(KEPT_WITHOUT_TAB * 3);
  const sessions = sessionsOf(ids);
  sessions.release(ids, exists);
  for (const id of ids) assert.equal(sessions.take(id), `state of ${id}`);
});

test('the last few dozen notes without a tab keep their sessions', () => {
  const ids = names(KEPT_WITHOUT_TAB + 3);
  const sessions = sessionsOf(ids);
  sessions.keep('note 0', 'left again');
  sessions.release(['note 1'], exists);
  const kept = ids.filter((id) => sessions.take(id) !== null);
  assert.deepEqual(
    kept,
    ids.filter((id) => id !== 'note 2' && id !== 'note 3'),
  );
});

test('a few notes all keep their sessions', () => {
  const ids = names(KEPT_WITHOUT_TAB);
  const sessions = sessionsOf(ids);
  sessions.release([], exists);
  assert.ok(ids.every((id) => sessions.take(id) !== null));
});

test("a deleted note's session is dropped, even while its tab is still open", () => {
  const sessions = sessionsOf(['stays', 'deleted']);
  sessions.release(['stays', 'deleted'], (id) => id !== 'deleted');
  assert.equal(sessions.take('deleted'), null);
  assert.equal(sessions.take('stays'), 'state of stays');
});

test("a shown note's session is not stored", () => {
  const sessions = sessionsOf(['a']);
  sessions.take('a');
  assert.equal(sessions.take('a'), null);
});
