import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { libraryFiles, markShared, readLibrary } from '../../src/state/library';
import { mergeLibrary } from '../../src/state/mergeLibrary';
import { emptyContents } from '../../src/state/model';
import { NoteText } from '../../src/state/noteText';
import { readContents } from '../../src/state/read';
import { tidyVersions } from '../../src/state/tidyVersions';
import { titleOf } from '../../src/state/titleOf';
import { versionText } from '../../src/state/versions';
import { Workspace } from '../../src/state/workspace';
import { binnedAsJson, noteAsJson, serialize } from '../../src/state/write';
import { edited, inverse, tagEdits } from '../../src/text/renames';
import { random } from './chance';

const MINUTE = 60_000;
const LIMIT = 20_000_000;
const clock = { now: 1_700_000_000_000 };
const computer = (ahead = 0) => new Workspace(emptyContents, false, () => ++clock.now + ahead);

function out(workspace: Workspace): string {
  markShared(workspace);
  return libraryFiles(workspace.contents, true, LIMIT).parts[0] ?? '';
}

function bring(content: string, into: Workspace) {
  const library = readLibrary(content, clock.now);
  assert.ok(typeof library === 'object', String(library));
  const { notes, bin, ...counts } = mergeLibrary(into, library, (title) => `${title} (conflict)`);
  into.adopt(notes, bin);
  return counts;
}

const write = (workspace: Workspace, id: string, text: string) => workspace.setText(id, Text.of(text.split('\n')));
const textOf = (workspace: Workspace, id: string) => workspace.note(id)?.text.toString();
const texts = ({ contents }: Workspace) => contents.notes.map(({ text }) => text.toString()).sort();

function versionsOf(workspace: Workspace, id: string): string[] {
  const note = workspace.noteOrBinned(id);
  return note ? note.versions.map((_, at) => versionText(note, at).toString()) : [];
}

function retag(workspace: Workspace, id: string, from: string, to: string): void {
  const before = textOf(workspace, id) ?? '';
  const edits = tagEdits(before, from, to);
  if (edits.length) workspace.rewrite(new Map([[id, { text: edited(before, edits), back: inverse(before, edits) }]]));
}

/** Every text that can be had on a computer: of its notes, its bin and all versions. Nothing is none. */
function everyText(workspace: Workspace): Set<string> {
  const { notes, bin } = workspace.contents;
  const found = new Set<string>();
  for (const note of [...notes, ...bin.map((entry) => entry.note)]) {
    found.add(note.text.toString());
    for (const version of versionsOf(workspace, note.id)) found.add(version);
  }
  found.delete('');
  return found;
}

function again(workspace: Workspace): Workspace {
  const stored: unknown = JSON.parse(serialize(workspace.contents, 1));
  return new Workspace(readContents(stored, workspace.now()).contents, false, workspace.now);
}

test('a note that changed on both sides and was mended since is left alone by the same library', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'Plano' });
  bring(out(one), two);
  write(two, id, 'Plano B');
  write(one, id, 'Plano A');
  const theirs = out(two);
  assert.deepEqual(bring(theirs, one), { added: 0, updated: 0, both: 1 });
  const beside = one.contents.notes.find((note) => titleOf(note) === 'Plano B (conflict)');
  assert.ok(beside);
  write(one, beside.id, 'Plano B, revisto');
  write(one, id, 'Plano A, revisto');
  assert.deepEqual(bring(theirs, one), { added: 0, updated: 0, both: 0 });
  assert.deepEqual(texts(one), ['Plano A, revisto', 'Plano B, revisto']);
});

test('a note beside another is never overwritten, though nothing tells that it came from there', () => {
  const one = computer();
  const file = (...notes: object[]) => JSON.stringify({ quendoLibrary: 1, version: 2, notes });
  const mended = { id: `x~${(50).toString(36)}`, text: 'B, revisto' };
  bring(file({ id: 'x', text: 'A', created: 1, updated: 100 }, mended), one);
  bring(file({ id: 'x', text: 'B', created: 1, updated: 50 }), one);
  assert.deepEqual(texts(one), ['A', 'B, revisto']);
  assert.deepEqual(versionsOf(one, 'x'), ['B']);
});

test('after both sides changed, every computer goes on from the later text', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'Plano' });
  bring(out(one), two);
  write(one, id, 'Plano A');
  write(two, id, 'Plano B');
  const [first, second] = [out(one), out(two)];
  bring(second, one);
  bring(first, two);
  assert.deepEqual([textOf(one, id), textOf(two, id)], ['Plano B', 'Plano B']);
  for (const text of ['Plano C', 'Plano D', 'Plano E']) {
    write(one, id, text);
    assert.deepEqual(bring(out(one), two), { added: 0, updated: 1, both: 0 }, 'no further conflict');
    assert.deepEqual(bring(out(two), one), { added: 0, updated: 0, both: 0 });
  }
  assert.deepEqual(texts(one), texts(two));
  assert.equal(one.noteCount, 2);
});

test('the versions of both sides are kept', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'um' });
  clock.now += 20 * MINUTE;
  write(one, id, 'dois');
  clock.now += 20 * MINUTE;
  write(one, id, 'três');
  for (const _ of tidyVersions(one));
  // What came here does not have the versions, as from a note too long with them.
  const file = JSON.parse(out(one)) as { notes: Array<{ versions?: unknown }> };
  for (const note of file.notes) delete note.versions;
  bring(JSON.stringify(file), two);
  clock.now += 20 * MINUTE;
  write(two, id, 'quatro');
  assert.deepEqual(bring(out(two), one), { added: 0, updated: 1, both: 0 });
  assert.deepEqual(versionsOf(one, id), ['três', 'dois', 'um']);
  for (const _ of tidyVersions(one));
  assert.deepEqual(versionsOf(again(one), id), ['três', 'dois', 'um']);
});

test('a tag renamed here is a change like any other to another computer', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: '#a um' });
  const other = one.addNote({ text: '#a dois' });
  for (const note of [id, other.id]) write(one, note, `${textOf(one, note)}.`);
  bring(out(one), two);
  retag(one, id, 'a', 'z');
  retag(one, other.id, 'a', 'z');
  write(two, id, '#a um. E mais');
  assert.deepEqual(bring(out(two), one), { added: 0, updated: 0, both: 1 }, 'the renamed text is not overwritten');
  assert.deepEqual(texts(one), ['#a um. E mais', '#z dois.', '#z um.']);
  assert.deepEqual(bring(out(one), two), { added: 1, updated: 1, both: 0 });
  assert.deepEqual(texts(two), texts(one));
});

test('a note that was emptied comes in with its versions, where other empty notes are', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'importante' });
  write(one, id, '');
  two.openTab(two.addNote({ text: '' }).id);
  bring(out(one), two);
  assert.deepEqual(versionsOf(two, id), ['importante']);
});

test('a name given on one side stays when the text comes from the other', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'um', name: 'a.md' });
  bring(out(one), two);
  one.setName(id, 'Meu nome');
  write(two, id, 'dois');
  bring(out(two), one);
  bring(out(one), two);
  assert.deepEqual(
    [one, two].map((each) => each.note(id)?.name),
    ['Meu nome', 'a.md'],
  );
  write(one, id, 'três');
  bring(out(one), two);
  assert.equal(two.note(id)?.name, 'Meu nome');
});

test('whatever is written on three computers, bringing them together loses nothing and ends alike', () => {
  for (let seed = 1; seed <= 60; seed++) play(seed);
});

function play(seed: number): void {
  const chance = random(seed);
  const all = [0, -30 * MINUTE, 45 * MINUTE].map(computer);
  const one = (): number => chance(all.length);
  const files: string[] = [];
  for (let step = 0; step < 60; step++) {
    clock.now += chance(12 * MINUTE);
    const at = one();
    const workspace = all[at] as Workspace;
    const { notes } = workspace.contents;
    const note = notes[chance(Math.max(1, notes.length))];
    const act = chance(12);
    if (act === 0 || !note) workspace.addNote({ text: `#a nota ${seed} ${step}`, name: chance(2) ? null : 'x.md' });
    else if (act < 5) write(workspace, note.id, chance(8) ? `${note.text}\n#b ${step}` : '');
    else if (act === 5) retag(workspace, note.id, chance(2) ? 'a' : 'b', `t${chance(3)}`);
    else if (act === 6) for (const _ of tidyVersions(workspace));
    else if (act === 7) all[at] = again(workspace);
    else if (act === 8) files.push(out(workspace));
    else {
      const before = everyText(workspace);
      const file = files[chance(Math.max(1, files.length))] ?? out(all[one()] as Workspace);
      const theirs = bringTogether(workspace, file);
      const after = everyText(workspace);
      for (const text of before) assert.ok(after.has(text), `seed ${seed}, step ${step}: lost ${text}`);
      assert.ok(theirs, `seed ${seed}, step ${step}: not the same a second time`);
    }
  }
  for (let round = 0; round < 4; round++) {
    for (const to of all) for (const from of all) if (from !== to) bring(out(from), to);
  }
  const [first = [], ...others] = all.map(texts);
  for (const other of others) assert.deepEqual(other, first, `seed ${seed}`);
  const ids = all.map(({ contents }) => new Map(contents.notes.map(({ id, text }) => [id, text.toString()])));
  for (const [id, text] of ids[0] ?? []) for (const each of ids) if (each.has(id)) assert.equal(each.get(id), text);
}

test('thousands of notes of one length are not compared each with each', () => {
  const body = 'linha\n'.repeat(500);
  const notes = Array.from({ length: 3000 }, (_, i) => ({ id: `n${i}`, text: `${body}${10_000 + i}` }));
  const [one, library] = [computer(), JSON.stringify({ quendoLibrary: 1, version: 2, notes })];
  const { eq } = NoteText.prototype;
  let compared = 0;
  NoteText.prototype.eq = function (other) {
    compared++;
    return eq.call(this, other);
  };
  try {
    assert.deepEqual(bring(library, one), { added: 3000, updated: 0, both: 0 });
  } finally {
    NoteText.prototype.eq = eq;
  }
  assert.ok(compared < 3000, `${compared} comparisons`);
});

test('very many versions of one note neither stop the page nor come in all', () => {
  const [one, two] = [computer(), computer()];
  const { id } = one.addNote({ text: 'a' });
  const versions = Array.from({ length: 100_000 }, () => ({ taken: 1, change: [[1, 'b']] }));
  const notes = [{ id, text: 'b', versions: [{ taken: 1, text: 'a' }, ...versions] }];
  bring(JSON.stringify({ quendoLibrary: 1, version: 2, notes }), one);
  assert.equal(textOf(one, id), 'b');
  bring(out(one), two);
  assert.equal(two.note(id)?.versions.length, 5000);
});

test('what goes out is what comes in, to the last member', () => {
  const workspace = computer();
  const { id } = workspace.addNote({ text: '\ud83d "\\\u2028\n\n', name: 'a.md', lineBreak: '\r\n' });
  clock.now += 20 * MINUTE;
  write(workspace, id, 'dois');
  workspace.setFileName(id, 'b.md');
  workspace.deleteNote(workspace.addNote({ text: '__proto__' }).id);
  for (const _ of tidyVersions(workspace));
  const fresh = computer();
  bring(out(workspace), fresh);
  const stored = (one: Workspace) =>
    JSON.stringify([one.contents.notes.map(noteAsJson), one.contents.bin.map(binnedAsJson)]);
  assert.equal(stored(fresh), stored(workspace));
});

/** Whether bringing it in twice is the same as once. */
function bringTogether(workspace: Workspace, file: string): boolean {
  bring(file, workspace);
  const { added, updated, both } = bring(file, workspace);
  return added + updated + both === 0;
}
