import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { emptyContents } from '../../src/state/model';
import { Workspace } from '../../src/state/workspace';
import { prepareJson, serialize } from '../../src/state/write';

/** A workspace with this many notes, and some of their ids. */
function manyNotes(count: number) {
  let now = 1000;
  const workspace = new Workspace(emptyContents, false, () => now++);
  const ids = Array.from({ length: count }, (_, i) => workspace.addNote({ text: Text.of([`nota ${i}`, 'ação']) }).id);
  return { workspace, ids };
}

/** Counts how many texts are escaped while `run` runs; serialising a note costs at least one. */
function countTexts(run: () => void): number {
  const original = JSON.stringify;
  let count = 0;
  JSON.stringify = ((value: unknown, ...rest: []) => {
    if (typeof value === 'string' && value.startsWith('nota ')) count++;
    return original(value, ...rest);
  }) as typeof JSON.stringify;
  try {
    run();
  } finally {
    JSON.stringify = original;
  }
  return count;
}

test('only notes that changed are serialised', () => {
  const { workspace, ids } = manyNotes(1000);
  const save = () => countTexts(() => serialize(workspace.contents, 1));
  assert.equal(save(), 1000);
  assert.equal(save(), 0);
  workspace.setText(ids[500] ?? '', Text.of(['nota changed']));
  assert.equal(save(), 1);
  workspace.openTab(ids[3] ?? '');
  workspace.setPlace(ids[3] ?? '', { anchor: 1, head: 1, top: 0 });
  workspace.setSettings({ zoom: 1.5 });
  assert.equal(save(), 0);
  workspace.setPinned([ids[7] ?? ''], true);
  assert.equal(save(), 0, 'the text of a note that is pinned is the same');
  workspace.deleteNote(ids[0] ?? '');
  assert.equal(save(), 0, 'all neighbours move up by one');
  workspace.addNote({ text: Text.of(['nota new']) });
  assert.equal(save(), 1);
});

test('saving does not repeat work done ahead', () => {
  const { workspace, ids } = manyNotes(300);
  workspace.deleteNote(ids[9] ?? '');
  assert.equal(
    countTexts(() => [...prepareJson(workspace.contents)]),
    300,
  );
  assert.equal(
    countTexts(() => serialize(workspace.contents, 1)),
    0,
  );
});

test('grouping does not change the output', () => {
  for (const count of [0, 1, 63, 64, 65, 200]) {
    const { workspace, ids } = manyNotes(count);
    serialize(workspace.contents, 1);
    workspace.setText(ids[Math.floor(count / 2)] ?? '', Text.of(['outra']));
    const { notes } = JSON.parse(serialize(workspace.contents, 2)) as { notes: Array<{ id: string; text: string }> };
    assert.deepEqual(
      notes.map(({ id, text }) => [id, text]),
      workspace.contents.notes.map(({ id, text }) => [id, text.toString()]),
    );
  }
});
