import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { emptyContents } from '../../src/state/model';
import { readContents } from '../../src/state/read';
import { neighbour, tabsInScope } from '../../src/state/tabRow';
import { titleOf } from '../../src/state/titleOf';
import { Workspace } from '../../src/state/workspace';
import { serialize } from '../../src/state/write';
import { workspaceWith } from './workspaces';

test('a new tab opens next to the active one', () => {
  const { workspace, ids } = workspaceWith('a', 'b', 'c');
  assert.deepEqual(workspace.tabs.open, ids);
  workspace.openTab(ids[0] ?? '');
  const { id } = workspace.addNote({ text: Text.of(['d']) });
  workspace.openTab(id);
  assert.deepEqual(workspace.tabs.open, [ids[0], id, ids[1], ids[2]]);
});

test('closing the active tab activates its right neighbour, then its left one', () => {
  const { workspace, ids } = workspaceWith('a', 'b', 'c');
  const [a = '', b = '', c = ''] = ids;
  workspace.openTab(b);
  workspace.closeTabs([b]);
  assert.equal(workspace.tabs.active, c);
  workspace.closeTabs([c]);
  assert.equal(workspace.tabs.active, a);
  workspace.closeTabs([a]);
  assert.equal(workspace.tabs.active, null);
  assert.equal(workspace.noteCount, 3);
});

test('closed tabs reopen in reverse order at their old positions', () => {
  const { workspace, ids } = workspaceWith('a', 'b', 'c');
  const [a = '', b = '', c = ''] = ids;
  workspace.closeTabs([a]);
  workspace.closeTabs([c]);
  assert.equal(workspace.reopenTab(), c);
  assert.equal(workspace.reopenTab(), a);
  assert.deepEqual(workspace.tabs.open, [a, b, c]);
  assert.equal(workspace.reopenTab(), null);
});

test('tabs closed together reopen at their old positions, except those without a note', () => {
  const { workspace, ids } = workspaceWith('a', 'b', 'c');
  workspace.openTab(ids[1] ?? '');
  const { open, active } = workspace.tabs;
  const closed = open.map((id, index) => ({ id, index }));
  workspace.closeTabs(open);
  assert.deepEqual(workspace.tabs.open, []);
  workspace.reopenTabs([...closed, { id: 'gone', index: 0 }], active);
  assert.deepEqual(workspace.tabs, { open, active, closed: [], extra: [] });
});

test('scopes and neighbours', () => {
  const { workspace, ids } = workspaceWith('a', 'b', 'c');
  const [a = '', b = '', c = ''] = ids;
  workspace.openTab(b);
  assert.deepEqual(tabsInScope(workspace.tabs, 'others'), [a, c]);
  assert.deepEqual(tabsInScope(workspace.tabs, 'right'), [c]);
  assert.deepEqual(tabsInScope(workspace.tabs, 'all'), ids);
  assert.deepEqual(tabsInScope(workspace.tabs, 'others', a), [b, c], 'seen from another tab');
  assert.deepEqual(tabsInScope(workspace.tabs, 'right', a), [b, c]);
  assert.equal(neighbour(workspace.tabs, 1), c);
  workspace.openTab(c);
  assert.equal(neighbour(workspace.tabs, 1), a);
  workspace.openTab(a);
  assert.equal(neighbour(workspace.tabs, -1), c);
});

test('a tab moves within the row and stays active, at most to the ends', () => {
  const { workspace, ids } = workspaceWith('a', 'b', 'c');
  const [a = '', b = '', c = ''] = ids;
  workspace.openTab(a);
  workspace.moveTab(a, 1);
  assert.deepEqual(workspace.tabs.open, [b, a, c]);
  workspace.moveTab(a, 9);
  assert.deepEqual(workspace.tabs.open, [b, c, a]);
  workspace.moveTab(a, -9);
  assert.deepEqual(workspace.tabs.open, [a, b, c]);
  assert.equal(workspace.tabs.active, a);
  const { tabs } = workspace;
  workspace.moveTab(a, 0);
  workspace.moveTab(c, 9);
  workspace.moveTab('gone', 1);
  assert.equal(workspace.tabs, tabs, 'nothing to save');
});

test('a note that never had any text is removed with its tab', () => {
  const { workspace, ids } = workspaceWith('', 'texto');
  workspace.closeTabs(ids);
  assert.equal(workspace.noteCount, 1);
  assert.equal(workspace.reopenTab(), ids[1]);
  assert.equal(workspace.reopenTab(), null);
});

test('an emptied note stays, whatever the clock said', () => {
  for (const later of [0, 1000, -1000]) {
    let now = 5000;
    const workspace = new Workspace(emptyContents, false, () => now);
    const { id } = workspace.addNote({ text: Text.empty });
    workspace.openTab(id);
    now += later;
    workspace.setText(id, Text.of(['texto']));
    now = 5000;
    workspace.setText(id, Text.empty);
    workspace.closeTabs([id]);
    assert.equal(workspace.note(id)?.text.length, 0);
    assert.equal(workspace.reopenTab(), id);
  }
});

test('an emptied note stays even after a restart, one that never had text does not', () => {
  const { workspace, ids } = workspaceWith('', '', ' \n');
  const [untouched = '', emptied = '', spaces = ''] = ids;
  workspace.setText(emptied, Text.of(['texto']));
  workspace.setText(emptied, Text.empty);
  const stored: unknown = JSON.parse(serialize(workspace.contents, 1));
  const restarted = new Workspace(readContents(stored, 9999).contents, false, () => 9999);
  restarted.closeTabs(ids);
  assert.equal(restarted.note(untouched), null);
  assert.ok(restarted.note(emptied));
  assert.ok(restarted.note(spaces), 'blanks are something, too');
  assert.equal(restarted.reopenTab(), spaces);
  assert.equal(restarted.reopenTab(), emptied);
});

test('a deleted note is restored completely, from the bin or by reopening its tab', () => {
  const { workspace, ids } = workspaceWith('a', 'b');
  const [a = '', b = ''] = ids;
  workspace.deleteNote(a);
  assert.equal(workspace.note(a), null);
  assert.equal(workspace.tabs.open.includes(a), false);
  assert.equal(workspace.restoreNote(a), true);
  assert.equal(workspace.restoreNote(a), false);
  workspace.deleteNote(b);
  assert.equal(workspace.reopenTab(), b);
  assert.equal(workspace.note(b)?.text.toString(), 'b');
  assert.deepEqual(workspace.contents.bin, []);
});

test('a note deleted while it had no tab can be restored too', () => {
  const { workspace, ids } = workspaceWith('a');
  workspace.closeTabs(ids);
  workspace.deleteNote(ids[0] ?? '');
  assert.equal(workspace.reopenTab(), ids[0]);
});

test('listeners are notified once per change, and only of changes', () => {
  const { workspace, ids } = workspaceWith('a');
  const seen: string[] = [];
  workspace.onChange((change) => seen.push(change));
  const note = workspace.note(ids[0] ?? '');
  assert.ok(note);
  workspace.setText(note.id, note.text.tree);
  workspace.openTab(note.id);
  workspace.setCaptureDraft('');
  workspace.setText(note.id, Text.of(['x']));
  assert.ok(!seen.includes('notes'));
  assert.equal(seen.filter((change) => change === 'text').length, 1);
});

test('an imported note has its file name as title', () => {
  const { workspace } = workspaceWith();
  const note = workspace.addNote({ text: Text.of(['# Outro']), name: 'plano.md' });
  assert.equal(titleOf(note), 'plano.md');
});

test("a note's place is remembered until the note is deleted for good", () => {
  const { workspace, ids } = workspaceWith('a', 'b');
  const [a = '', b = ''] = ids;
  assert.equal(workspace.setPlace(a, { anchor: 1, head: 0, top: 0 }), true);
  assert.equal(workspace.setPlace(a, { anchor: 1, head: 0, top: 0 }), false);
  assert.equal(workspace.setPlace('gone', { anchor: 1, head: 0, top: 0 }), false);
  workspace.setPlace(b, { anchor: 0, head: 0, top: 0 });
  const again = readContents(JSON.parse(serialize(workspace.contents, 1)), 5).contents;
  assert.deepEqual([...again.places], [...workspace.contents.places]);
  workspace.deleteNote(a);
  assert.deepEqual(workspace.place(a), { anchor: 1, head: 0, top: 0 });
  workspace.emptyBin();
  assert.equal(workspace.place(a), null);
});

test('invalid places are dropped', () => {
  const places = { a: { anchor: -1, head: 'x', top: 1e300 }, b: 7, gone: { anchor: 1, head: 1, top: 1 } };
  const { contents } = readContents({ notes: [{ id: 'a', text: 'x' }], places }, 5);
  assert.deepEqual([...contents.places], [['a', { anchor: 0, head: 0, top: 0 }]]);
});

test('emptying the bin is permanent, including its closed tabs', () => {
  const { workspace, ids } = workspaceWith('a', 'b', 'c');
  workspace.closeTabs([ids[1] ?? '']);
  workspace.deleteNote(ids[0] ?? '');
  workspace.deleteNote(ids[2] ?? '');
  assert.deepEqual(
    workspace.bin.map(({ note }) => note.id),
    [ids[2], ids[0]],
    'the latest first',
  );
  workspace.emptyBin();
  assert.deepEqual(workspace.bin, []);
  assert.equal(workspace.restoreNote(ids[0] ?? ''), false);
  assert.equal(workspace.reopenTab(), ids[1]);
  assert.equal(workspace.reopenTab(), null);
});
