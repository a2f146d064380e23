import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { isLibrary, type Library, libraryFiles, markShared, readLibrary } from '../../src/state/library';
import { mergeLibrary } from '../../src/state/mergeLibrary';
import { emptyContents } from '../../src/state/model';
import { versionText } from '../../src/state/versions';
import { titleOf } from '../../src/state/titleOf';
import { Workspace } from '../../src/state/workspace';
import { serialize } from '../../src/state/write';
import { utf8Length } from '../../src/text/names';

const clock = { now: 1_700_000_000_000 };
const computer = () => new Workspace(emptyContents, false, () => ++clock.now);
const LIMIT = 20_000_000;

function out(workspace: Workspace, withBin = true): string {
  markShared(workspace);
  const [file = ''] = libraryFiles(workspace.contents, withBin, LIMIT).parts;
  return file;
}

function read(content: string): Library {
  const library = readLibrary(content, clock.now);
  assert.ok(typeof library === 'object', String(library));
  return library;
}

function bring(content: string, into: Workspace) {
  const { notes, bin, ...counts } = mergeLibrary(into, read(content), (title) => `${title} (conflict)`);
  into.adopt(notes, bin);
  return counts;
}

const write = (workspace: Workspace, id: string, text: string) => workspace.setText(id, Text.of(text.split('\n')));
const texts = ({ contents }: Workspace) => contents.notes.map(({ text }) => text.toString()).sort();
const state = (workspace: Workspace) => JSON.parse(serialize(workspace.contents, 1)) as unknown;

test('what goes out comes in as the same notes, with bin, pins, dates and versions', () => {
  const one = computer();
  const { id } = one.addNote({ text: '# Ata\n🎉', name: 'ata.md', lineBreak: '\r\n' });
  write(one, id, 'reescrita');
  one.setPinned([id], true);
  one.deleteNote(one.addNote({ text: 'apagada' }).id);
  const two = computer();
  assert.deepEqual(bring(out(one), two), { added: 2, updated: 0, both: 0 });
  const [mine, theirs] = [one.note(id), two.note(id)];
  assert.ok(mine && theirs);
  assert.deepEqual({ ...theirs, text: '', versions: [] }, { ...mine, text: '', versions: [] });
  assert.equal(versionText(theirs, 0).toString(), '# Ata\n🎉');
  assert.equal(two.bin[0]?.note.text.toString(), 'apagada');
  assert.equal(read(out(one, false)).bin.length, 0);
});

test('bringing in the same library again changes nothing', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'um' });
  two.addNote({ text: 'dois' });
  bring(out(one), two);
  write(one, id, 'um, aqui');
  write(two, id, 'um, lá');
  bring(out(one), two);
  const before = state(two);
  assert.deepEqual(bring(out(one), two), { added: 0, updated: 0, both: 0 });
  assert.deepEqual(state(two), before);
  const own = out(two);
  const marked = state(two);
  bring(own, two);
  assert.deepEqual(state(two), marked, 'its own, too');
});

test('a note that changed on one side gets that text everywhere, with the other as a version', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'um' });
  bring(out(one), two);
  for (const [from, to, text] of [
    [two, one, 'dois'],
    [one, two, 'três'],
    [one, two, 'quatro'],
    [two, one, 'cinco'],
  ] as const) {
    const before = to.note(id)?.text.toString();
    write(from, id, text);
    assert.deepEqual(bring(out(to), from), { added: 0, updated: 0, both: 0 }, 'the older text changes nothing');
    assert.deepEqual(bring(out(from), to), { added: 0, updated: 1, both: 0 });
    assert.deepEqual(texts(to), [text]);
    const note = to.note(id);
    assert.equal(note && versionText(note, 0).toString(), before);
  }
});

test('a note that changed on both sides is there twice, on both sides alike', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'Plano' });
  bring(out(one), two);
  write(one, id, 'Plano A');
  write(two, id, 'Plano B');
  const [first, second] = [out(one), out(two)];
  assert.deepEqual(bring(second, one), { added: 0, updated: 0, both: 1 });
  assert.deepEqual(bring(first, two), { added: 0, updated: 0, both: 1 });
  assert.deepEqual(
    [one.note(id)?.text.toString(), two.note(id)?.text.toString()],
    ['Plano B', 'Plano B'],
    'the later text keeps its place on both',
  );
  assert.ok(one.contents.notes.some((note) => titleOf(note) === 'Plano A (conflict)'));
  for (let i = 0; i < 2; i++) {
    assert.deepEqual(bring(out(two), one), { added: 0, updated: 0, both: 0 });
    assert.deepEqual(bring(out(one), two), { added: 0, updated: 0, both: 0 });
  }
  assert.deepEqual(
    [texts(one), texts(two)],
    [
      ['Plano A', 'Plano B'],
      ['Plano A', 'Plano B'],
    ],
  );
});

test('the same text with the same title is not there twice', () => {
  const [one, two] = [computer(), computer()];
  for (const workspace of [one, two]) workspace.addNote({ text: 'igual', name: 'a.md' });
  two.addNote({ text: 'igual', name: 'outro.md' });
  assert.deepEqual(bring(out(two), one), { added: 1, updated: 0, both: 0 });
});

test('a note in the bin on one side is not deleted on the other', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'fica' });
  bring(out(one), two);
  two.deleteNote(id);
  bring(out(two), one);
  assert.deepEqual(texts(one), ['fica']);
  bring(out(one), two);
  assert.deepEqual(texts(two), [], 'nor brought back unless it changed');
  write(one, id, 'mudou');
  bring(out(one), two);
  assert.deepEqual(texts(two), ['mudou']);
  assert.equal(two.bin.length, 0);
});

test('a long library goes out in files that can each be brought in', () => {
  const one = computer();
  for (let i = 0; i < 30; i++) one.addNote({ text: `nota ${i} ${'ção '.repeat(50)}` });
  one.addNote({ text: 'x'.repeat(3000) });
  const { parts, leftOut } = libraryFiles(one.contents, true, 2000);
  assert.equal(leftOut, 1);
  assert.ok(parts.length > 3 && parts.every((part) => utf8Length(part) <= 2000));
  const two = computer();
  for (const part of parts) bring(part, two);
  assert.equal(two.noteCount, 30);
});

test('a note that is too long with its versions goes out with the newest of them', () => {
  const one = computer();
  const { id } = one.addNote({ text: 'y'.repeat(1500) });
  write(one, id, 'curta');
  write(one, id, '');
  const versionsIn = (limit: number) => {
    const { parts, leftOut } = libraryFiles(one.contents, true, limit);
    assert.equal(leftOut, 0);
    return read(parts[0] ?? '').notes[0]?.versions.map(({ held }) => held.toString());
  };
  assert.deepEqual(versionsIn(3000), ['curta', 'y'.repeat(1500)]);
  assert.deepEqual(versionsIn(1000), ['curta']);
  assert.deepEqual(versionsIn(280), []);
});

test('only a file that says so is a library', () => {
  assert.ok(isLibrary(out(computer())));
  assert.ok(isLibrary('\n { "quendoLibrary" : 1 }'));
  for (const other of ['', '{}', '[]', '{"notes":[]}', 'texto "quendoLibrary":1', '{"a":{"quendoLibrary":1}}']) {
    assert.ok(!isLibrary(other), other);
  }
});

test('a library that is damaged or hostile is refused as a whole', () => {
  const file = (notes: unknown, more: object = {}) => JSON.stringify({ quendoLibrary: 1, version: 2, notes, ...more });
  const deep = `${'['.repeat(50_000)}${']'.repeat(50_000)}`;
  const good = { id: 'a', text: 't' };
  const damaged = [
    '{"quendoLibrary":1',
    '{"quendoLibrary":1,"version":2,"notes":[{"id":"a","text":"t"}]',
    `{"quendoLibrary":1,"version":2,"notes":[{"id":"a","text":"t","deep":${deep}}]}`,
    file({}),
    file([good, good]),
    file([good], { bin: [good] }),
    file([good], { bin: {} }),
    file([good, null]),
    file([{ id: 'a' }]),
    file([{ text: 't' }]),
    file([{ id: '', text: 't' }]),
    file([{ id: 'x'.repeat(61), text: 't' }]),
    file([{ id: 7, text: 't' }]),
    file([good], { version: 'x' }),
    JSON.stringify({ quendoLibrary: {}, version: 2, notes: [] }),
  ];
  for (const content of damaged) assert.equal(readLibrary(content, 1), 'damaged', content.slice(0, 100));
  assert.equal(readLibrary(file([good], { version: 3 }), 1), 'newer');
  assert.equal(readLibrary(JSON.stringify({ quendoLibrary: 2, version: 2, notes: [] }), 1), 'newer');
});

test('names of prototypes are names like any other', () => {
  const workspace = computer();
  const note = '{"id":"__proto__","text":"t","__proto__":{"polluted":1},"constructor":2}';
  bring(`{"quendoLibrary":1,"version":2,"__proto__":{"notes":[]},"notes":[${note}]}`, workspace);
  assert.equal(workspace.note('__proto__')?.text.toString(), 't');
  assert.equal(({} as Record<string, unknown>).polluted, undefined);
  assert.match(serialize(workspace.contents, 1), /"__proto__":\{"polluted":1\}/, 'and preserved');
});
