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

test('open tabs keep their state, however many there are', () => {
  const ids = names(KEPT_WITHOUT_TAB * 3);
  const sessions = sessionsOf(ids);
  sessions.release(ids, exists);
  for (const id of ids) assert.equal(sessions.take(id), `state of ${id}`);
});

test('of notes without a tab the last few dozen keep theirs', () => {
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

test('few notes are all kept', () => {
  const ids = names(KEPT_WITHOUT_TAB);
  const sessions = sessionsOf(ids);
  sessions.release([], exists);
  assert.ok(ids.every((id) => sessions.take(id) !== null));
});

test('nothing is kept of a deleted note, not even while its tab is still there', () => {
  const sessions = sessionsOf(['stays', 'deleted']);
  sessions.release(['stays', 'deleted'], (id) => id !== 'deleted');
  assert.equal(sessions.take('deleted'), null);
  assert.equal(sessions.take('stays'), 'state of stays');
});

test('a note on show is kept in one place only', () => {
  const sessions = sessionsOf(['a']);
  sessions.take('a');
  assert.equal(sessions.take('a'), null);
});
