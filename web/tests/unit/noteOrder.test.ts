import assert from 'node:assert/strict';
import { test } from 'node:test';
import { setLanguage } from '../../src/i18n/language';
import { shortDate } from '../../src/i18n/shortDate';
import type { Note } from '../../src/state/model';
import { inOrder } from '../../src/state/noteOrder';
import { readSettings, readSort, type Sort } from '../../src/state/settings';
import { titleOf } from '../../src/state/titleOf';
import { ListHeadings } from '../../src/views/listHeadings';
import { ListSelection } from '../../src/views/listSelection';
import { sectionsBy } from '../../src/views/listSections';
import { workspaceWith } from './workspaces';

const NOW = new Date(2026, 10, 22, 12).getTime();
const at = (month: number, day: number, year = 2026) => new Date(year, month - 1, day, 9, 5).getTime();

function ordered(notes: ReadonlyArray<Note>, sort: Sort) {
  const work = inOrder(notes, sort);
  let step = work.next();
  while (!step.done) step = work.next();
  return step.value;
}

test('notes are ordered by edit, creation or title, pinned ones first and untitled ones last', () => {
  const { workspace, ids } = workspaceWith('água', 'Zebra', '', 'Arara', 'boi');
  workspace.setPinned([ids[4] ?? ''], true);
  const [first] = workspace.notesInOrder();
  const edited = workspace.notesInOrder().map((note) => (titleOf(note) === 'água' ? { ...note, updated: NOW } : note));
  const titles = (sort: Sort) => ordered(edited, sort).map(titleOf);
  assert.equal(first && titleOf(first), 'boi');
  assert.deepEqual(titles('edited'), ['boi', 'Arara', '', 'Zebra', 'água']);
  assert.deepEqual(titles('created'), ['boi', 'Arara', '', 'Zebra', 'água']);
  assert.deepEqual(titles('title'), ['boi', 'água', 'Arara', 'Zebra', '']);
});

test('an unknown order is kept in the document and means the last edit', () => {
  assert.equal(readSettings({ sort: 'colour' }).sort, 'colour');
  assert.equal(readSettings({ sort: 3 }).sort, 'edited');
  assert.deepEqual([readSort('colour'), readSort('title')], ['edited', 'title']);
});

test('sections are days, a week, months and years, or initial letters', () => {
  setLanguage('en');
  const [note] = workspaceWith('Água').workspace.notesInOrder() as [Note];
  const section = (updated: number) => sectionsBy('edited', NOW)({ ...note, updated });
  assert.deepEqual(
    [at(11, 23), at(11, 22), at(11, 21), at(11, 15), at(11, 14), at(10, 31), at(1, 1), at(12, 31, 2025)].map(section),
    ['Today', 'Today', 'Yesterday', 'Last 7 days', 'November', 'October', 'January', '2025'],
  );
  assert.equal(sectionsBy('created', NOW)({ ...note, updated: NOW, created: at(3, 1) }), 'March');
  assert.equal(sectionsBy('title', NOW)(note), 'A');
  assert.equal(sectionsBy('title', NOW)({ ...note, name: '7.txt' }), '#');
  assert.equal(sectionsBy('title', NOW)({ ...note, pinned: true }), 'Pinned');
  setLanguage('pt');
  assert.equal(sectionsBy('edited', NOW)({ ...note, updated: at(3, 1) }), 'Março');
});

test('a date is as short as it can be told', () => {
  setLanguage('en');
  assert.match(shortDate(at(11, 22), NOW), /^9:05/);
  assert.equal(shortDate(at(3, 1), NOW), 'Mar 1');
  assert.equal(shortDate(at(3, 1, 2025), NOW), '3/1/25');
  setLanguage('pt');
  assert.equal(shortDate(at(3, 1, 2025), NOW), '01/03/2025');
});

test('headings stand where the text changes, and take their place between the rows', () => {
  const headings = new ListHeadings(['a', 'a', 'b', 'c', 'c']);
  assert.deepEqual(
    [0, 1, 2, 3, 4].map((index) => headings.above(index)),
    [1, 1, 2, 3, 3],
  );
  assert.deepEqual(
    [0, 1, 2, 3, 4].map((index) => headings.textAt(index)),
    ['a', '', 'b', 'c', ''],
  );
  // Rows of 10 below headings of 5 begin at 5, 15, 30, 45 and 55.
  assert.deepEqual(
    [0, 14, 15, 29, 30, 54, 55, 999].map((y) => headings.itemAt(y, 5, 10, 5)),
    [0, 0, 1, 1, 2, 3, 4, 4],
  );
  assert.equal(new ListHeadings().itemAt(25, 5, 10, 5), 2);
});

test('a selection grows from the row that stands out, and loses what leaves the list', () => {
  const counts: number[] = [];
  const selection = new ListSelection((count) => counts.push(count));
  selection.toggle('b', 'a');
  assert.ok(selection.has('a') && selection.has('b') && selection.anchor === 'b');
  selection.toggle('a', 'a');
  assert.ok(!selection.has('a') && selection.size === 1);
  selection.set(['a', 'b', 'c'], 'c');
  selection.keep(() => ['c', 'd']);
  assert.ok(selection.has('c') && selection.size === 1);
  selection.clear();
  selection.clear();
  assert.deepEqual(counts, [2, 1, 3, 1, 0]);
});

test('several notes are deleted, restored and pinned in one step each', () => {
  const { workspace, ids } = workspaceWith('um', 'dois', 'três');
  workspace.closeTabs([ids[0] ?? '']);
  const changes: string[] = [];
  workspace.onChange((change) => changes.push(change));
  const two = ids.slice(0, 2);
  workspace.deleteNotes(two);
  assert.deepEqual(changes, ['notes', 'tabs']);
  assert.deepEqual([workspace.noteCount, workspace.bin.length], [1, 2]);
  assert.deepEqual(workspace.tabs.open, [ids[2]]);
  assert.deepEqual(workspace.tabs.closed.map(({ id }) => id).sort(), [...two].sort());
  assert.ok(workspace.restoreNotes(two) && !workspace.restoreNotes(two));
  assert.deepEqual([workspace.noteCount, workspace.bin.length], [3, 0]);
  workspace.setPinned(ids, true);
  workspace.setPinned(ids, true);
  assert.ok(workspace.notesInOrder().every(({ pinned }) => pinned));
  assert.deepEqual(changes, ['notes', 'tabs', 'notes', 'notes']);
});
