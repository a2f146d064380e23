import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { emptyContents } from '../../src/state/model';
import { readContents } from '../../src/state/read';
import { nextRevision, readRevision } from '../../src/state/revision';
import { Workspace } from '../../src/state/workspace';
import { serialize } from '../../src/state/write';

const NOW = 1_700_000_000_000;
const DAY = 24 * 60 * 60 * 1000;
const again = (value: unknown) => {
  const { contents } = readContents(value, NOW);
  return JSON.parse(serialize(contents, 7)) as Record<string, unknown>;
};

test('documents of any shape can be opened', () => {
  const hostile: unknown[] = [
    undefined,
    null,
    0,
    'text',
    [],
    [1, 2],
    {},
    { notes: null },
    { notes: 'x', tabs: 7, settings: [], bin: 'no' },
    { notes: [null, 1, 'x', [], {}, { text: 5 }, { text: 'ok', id: {} }] },
    { notes: [{ id: 'a', text: 'x', created: 'never', updated: -1 }], tabs: { open: [1, 'a'] } },
    { revision: Infinity, version: {} },
    JSON.parse('{"__proto__":{"x":1},"notes":[{"text":"t","__proto__":{"y":2}}]}'),
  ];
  for (const value of hostile) assert.doesNotThrow(() => again(value), JSON.stringify(value));
});

test('nesting too deep to serialise does not prevent startup', () => {
  let deep: unknown = [];
  for (let i = 0; i < 50_000; i++) deep = [deep];
  assert.doesNotThrow(() => again({ notes: [{ text: 'kept', deep }], deep }));
});

test('no text is lost', () => {
  const texts = ['a\u0000b', 'x\u2028y\u2029', '"\\\'</script>', '🎉\ud83d', '\ude00\n\ud83d', '', '\n'];
  const notes = texts.map((text, i) => ({ id: `n${i}`, text }));
  const { contents } = readContents({ notes }, NOW);
  const json = serialize(contents, 1);
  assert.doesNotMatch(json, /[\ud800-\udbff](?![\udc00-\udfff])/);
  const back = JSON.parse(json) as { notes: Array<{ text: string }> };
  assert.deepEqual(
    back.notes.map((note) => note.text),
    texts,
  );
});

test('unknown members and unreadable entries are written back unchanged', () => {
  const result = again({
    version: 1,
    future: { a: [1, null, 'x'] },
    notes: [{ id: 'a', text: 't', colour: 'red' }, { strange: 1 }],
    bin: [{ id: 'b', text: 'u', deleted: NOW, colour: 'blue' }, { stranger: 2 }],
    tabs: { open: ['a'], groups: { a: 1 } },
    settings: { theme: 'sepia', sidebarMode: 'tomorrow' },
  });
  assert.deepEqual(result.future, { a: [1, null, 'x'] });
  const [note, stray] = result.notes as Array<Record<string, unknown>>;
  assert.equal(note?.colour, 'red');
  assert.deepEqual(stray, { strange: 1 });
  const [binned, strayBinned] = result.bin as Array<Record<string, unknown>>;
  assert.equal(binned?.colour, 'blue');
  assert.deepEqual(strayBinned, { stranger: 2 });
  assert.deepEqual((result.tabs as Record<string, unknown>).groups, { a: 1 });
  assert.equal((result.settings as Record<string, unknown>).theme, 'sepia');
  assert.equal((result.settings as Record<string, unknown>).sidebarMode, 'tomorrow');
});

test('a member named __proto__ is data like any other', () => {
  const source = '{"notes":[],"__proto__":{"polluted":1}}';
  const json = serialize(readContents(JSON.parse(source), NOW).contents, 1);
  assert.match(json, /"__proto__":\{"polluted":1\}/);
  assert.equal(({} as Record<string, unknown>).polluted, undefined);
});

test('notes with the same id become separate notes', () => {
  const { contents } = readContents(
    {
      notes: [
        { id: 'a', text: '1' },
        { id: 'a', text: '2' },
      ],
    },
    NOW,
  );
  assert.equal(new Set(contents.notes.map((note) => note.id)).size, 2);
});

test('notes in an object are read too', () => {
  const { contents } = readContents({ notes: { x: { text: '1' }, y: { text: '2' } } }, NOW);
  assert.equal(contents.notes.length, 2);
});

test('tabs only refer to existing notes', () => {
  const notes = [
    { id: 'a', text: '' },
    { id: 'b', text: '' },
  ];
  const tabs = { open: ['b', 'x', 'b', 'a'], active: 'x', closed: [{ id: 'a' }, { id: 'gone' }] };
  const { contents } = readContents({ notes, tabs }, NOW);
  assert.deepEqual(contents.tabs, { open: ['b', 'a'], active: 'b', closed: [], extra: [] });
});

test('the bin drops notes after thirty days', () => {
  const bin = [
    { id: 'old', text: '1', deleted: NOW - 31 * DAY },
    { id: 'new', text: '2', deleted: NOW - DAY },
  ];
  const { contents } = readContents({ bin }, NOW);
  assert.deepEqual(
    contents.bin.map(({ note }) => note.id),
    ['new'],
  );
});

test('a newer version is reported; an invalid version does not count as newer', () => {
  assert.equal(readContents({ version: 3 }, NOW).newer, true);
  assert.equal(readContents({ version: 2.5 }, NOW).newer, true);
  assert.equal(readContents({ version: 2 }, NOW).newer, false);
  assert.equal(readContents({ version: '9' }, NOW).newer, false);
  assert.equal(readContents({}, NOW).newer, false);
});

test('what is written reads back the same', () => {
  const workspace = new Workspace(emptyContents, false, () => NOW);
  const note = workspace.addNote({ text: Text.of(['um', 'dois']), name: 'x.txt', format: 'plain', lineBreak: '\r\n' });
  workspace.openTab(note.id);
  workspace.setFileName(note.id, 'y.txt');
  workspace.setCaptureDraft('rascunho');
  const { contents } = readContents(JSON.parse(serialize(workspace.contents, 9)), NOW + 5);
  assert.equal(contents.revision, 9);
  assert.equal(serialize(contents, 9), serialize(workspace.contents, 9));
});

test('changing one note does not serialise the others again', () => {
  const workspace = new Workspace(emptyContents, false, () => NOW);
  const big = Text.of(Array.from({ length: 200_000 }, (_, i) => `linha número ${i}`));
  const notes = Array.from({ length: 5 }, () => workspace.addNote({ text: big }));
  serialize(workspace.contents, 1);
  const first = notes[0];
  assert.ok(first);
  const costs = [1, 2, 3].map((i) => {
    workspace.setText(first.id, big.replace(50, 51, Text.of([`X${i}`])));
    const started = performance.now();
    serialize(workspace.contents, 2);
    return performance.now() - started;
  });
  // A generous limit, because machines differ: only a frozen page should fail here.
  assert.ok(Math.min(...costs) < 500, `${costs.join()} ms`);
  const json = serialize(workspace.contents, 2);
  assert.ok(json.length > 15_000_000);
  assert.equal((JSON.parse(json) as { notes: unknown[] }).notes.length, 5);
});

test('revisions strictly increase, whatever the document contains', () => {
  assert.equal(nextRevision(0, NOW), NOW);
  assert.equal(nextRevision(NOW + 5, NOW), NOW + 6);
  for (const start of [2 ** 53 - 1, 2 ** 53, 1e18, 9.1e18]) {
    assert.ok(nextRevision(start, NOW) > start, String(start));
  }
  assert.equal(nextRevision(2 ** 63, NOW), 2 ** 63);
  assert.equal(readRevision(Infinity), 2 ** 63);
  for (const bad of [Number.NaN, -1, '5', null, undefined, {}]) assert.equal(readRevision(bad), 0);
  assert.equal(readRevision(12.9), 12);
});
