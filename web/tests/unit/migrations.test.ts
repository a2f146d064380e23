import assert from 'node:assert/strict';
import { test } from 'node:test';
import { migrate, migrations } from '../../src/state/migrations';
import { DOCUMENT_VERSION } from '../../src/state/model';
import { readContents } from '../../src/state/read';
import { keepAsIs } from '../../src/state/untouched';
import { serialize } from '../../src/state/write';

const NOW = 1_700_000_000_000;

test('every version has a migration', () => {
  assert.equal(migrations.length, DOCUMENT_VERSION);
});

test('a document is migrated step by step from its own version', () => {
  const steps = ['a', 'b', 'c'].map((name) => (document: Record<string, unknown>) => ({
    ...document,
    trail: `${document.trail ?? ''}${name}`,
  }));
  assert.deepEqual(migrate({}, steps), { trail: 'abc', version: 3 });
  assert.deepEqual(migrate({ version: 1 }, steps), { trail: 'bc', version: 3 });
  assert.deepEqual(migrate({ version: 2.5 }, steps), { trail: 'c', version: 3 });
  for (const version of ['2', null, -4, {}, Number.NaN]) {
    assert.equal(migrate({ version }, steps).trail, 'abc', String(version));
  }
  const current = { version: 3, kept: true };
  assert.equal(migrate(current, steps), current);
});

test('migrations modify neither their argument nor unknown members', () => {
  const before = { notes: { x: { text: '1' }, y: { text: '2', id: 'z' }, odd: 7 }, future: [1] };
  const copy = structuredClone(before);
  const after = migrate(before);
  assert.deepEqual(before, copy);
  assert.deepEqual(after, {
    version: 2,
    notes: [{ text: '1', id: 'x' }, { text: '2', id: 'z' }, 7],
    future: [1],
  });
  for (const notes of [undefined, null, 'x', [{ text: 'a' }]]) {
    assert.deepEqual(migrate({ notes }).notes, notes);
  }
});

test('notes keyed by id keep their ids and tabs', () => {
  const { contents } = readContents({ notes: { x: { text: '1' }, y: { text: '2' } }, tabs: { open: ['y'] } }, NOW);
  assert.deepEqual(
    contents.notes.map((note) => note.id),
    ['x', 'y'],
  );
  assert.equal(contents.tabs.active, 'y');
});

test('a newer document is not migrated', () => {
  const { contents, newer } = readContents({ version: 99, notes: [{ id: 'a', text: 't' }] }, NOW);
  assert.equal(newer, true);
  assert.equal(contents.notes[0]?.text.toString(), 't');
});

test('damaged members are set aside, and the rest survives', () => {
  const notes = [{ id: 'a', text: 'vive' }];
  for (const member of ['bin', 'tabs', 'places', 'settings'] as const) {
    const stored = { version: 1, notes, [member]: 'broken' };
    const first = JSON.parse(serialize(readContents(stored, NOW).contents, 1));
    assert.equal(first.notes[0].text, 'vive', member);
    assert.deepEqual(first.setAside, [{ member, held: 'broken' }], member);
    const second = JSON.parse(serialize(readContents(first, NOW).contents, 2));
    assert.deepEqual(second.setAside, first.setAside, 'kept from then on');
  }
  const broken = readContents({ notes: 'all my text', setAside: 5 }, NOW).contents;
  assert.deepEqual(JSON.parse(serialize(broken, 1)).setAside, [5, { member: 'notes', held: 'all my text' }]);
});

/**
 * The store's rule: the revision passed with the document if it is 1 or more, otherwise the document's own.
 */
function wouldWrite({ serialized, revision }: { serialized: string; revision: number }, latest: number) {
  const own = Math.trunc(Number((JSON.parse(serialized) as { revision?: unknown }).revision)) || 0;
  return !((revision >= 1 ? revision : own) < latest);
}

test('a newer document is never replaced by what this version leaves on quitting', () => {
  for (const revision of [undefined, null, '7', -3, 0, 0.5, 1, 1.9, 2, 5e12, 2 ** 60, 1e30]) {
    const loaded = { version: 9, revision, notes: [{ text: 'futuro' }], unknown: { deep: [1] } };
    const latest = Math.max(0, typeof revision === 'number' ? Math.trunc(revision) : 0);
    const answer = keepAsIs(loaded);
    assert.equal(wouldWrite(answer, latest), false, String(revision));
    const { notes, unknown, version } = JSON.parse(answer.serialized);
    assert.deepEqual({ notes, unknown, version }, { notes: loaded.notes, unknown: loaded.unknown, version: 9 });
    if (latest > 1) assert.equal(answer.serialized, JSON.stringify(loaded), 'exactly as it was loaded');
  }
});

test('a newer document that cannot be serialised still lets the program quit', () => {
  let deep: unknown = [];
  for (let i = 0; i < 50_000; i++) deep = [deep];
  for (const loaded of [{ version: 9, revision: 50, deep }, { version: 9, deep }, undefined]) {
    const answer = keepAsIs(loaded);
    assert.equal(wouldWrite(answer, 0), false);
  }
});
