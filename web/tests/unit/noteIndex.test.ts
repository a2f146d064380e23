import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { NoteIndex } from '../../src/state/noteIndex';
import { titleOf } from '../../src/state/titleOf';
import { bestMatches, findable } from '../../src/text/nameMatches';
import { workspaceWith } from './workspaces';

function indexed(...texts: string[]) {
  const { workspace, ids } = workspaceWith(...texts);
  const index = new NoteIndex(workspace, ({ format }) => format === 'markdown');
  const read = () => {
    index.changed();
    let steps = 0;
    for (const _ of index.read()) steps++;
    return steps;
  };
  read();
  const write = (at: number, text: string) => workspace.setText(ids[at] ?? '', Text.of(text.split('\n')));
  const note = (at: number) => workspace.note(ids[at] ?? '') ?? assert.fail();
  return { workspace, index, read, write, note };
}

const counts = (index: NoteIndex) => index.tags.map(({ name, count }) => `${name} ${count}`).join(', ');

test('tags are counted by note, also for the levels above', () => {
  const { index } = indexed('#casa/cozinha #casa/sala', 'um\n#Casa #zebra #zebra', 'nada');
  assert.equal(counts(index), 'Casa 2, casa/cozinha 1, casa/sala 1, zebra 1');
});

test('tags below another one follow it at once, and numbers count by their values', () => {
  const { index } = indexed('#casa/v10 #casa/v2 #casa-nova #casa #ação/x #acao/y #acao #ação');
  const names = index.tags.map(({ name }) => name).join(' ');
  assert.equal(names, 'acao acao/y ação ação/x casa casa/v2 casa/v10 casa-nova');
});

test('a long note is read in several steps', () => {
  const { read, write } = indexed('um');
  write(0, 'linha #tag\n\n'.repeat(50_000));
  assert.ok(read() > 5);
});

test('what waits for the index runs once all notes are read, at once if they are few', () => {
  const { workspace, index, write } = indexed('#um', '#dois');
  write(1, '#quatro');
  let seen = '';
  index.whenRead(() => {
    seen = counts(index);
  });
  assert.equal(seen, 'quatro 1, um 1');
  assert.ok(index.isWhole);
  for (let n = 0; n < 60; n++) workspace.addNote({ text: `nota ${n}` });
  assert.ok(!index.isWhole);
});

test('only the note that changed is read again', () => {
  const { index, read, write } = indexed('#um', '#dois', '#três');
  assert.equal(read(), 0);
  write(1, '#quatro');
  assert.equal(read(), 1);
  assert.equal(counts(index), 'quatro 1, três 1, um 1');
});

test('a note that was not read yet has no tags', () => {
  const { index, write } = indexed('#um');
  write(0, '#dois');
  index.changed();
  assert.equal(counts(index), '');
});

test('notes that are not Markdown have none', () => {
  const { workspace, index, read } = indexed('#um');
  workspace.addNote({ text: '#define x [[um]]', format: 'plain', name: 'a.c' });
  read();
  assert.equal(counts(index), 'um 1');
});

test('a link leads to the note edited last, whatever the case', () => {
  const { index, write, note } = indexed('# Plano\num', '# plano\ndois', 'Avó');
  assert.equal(index.noteTitled('PLANO')?.id, note(1).id);
  write(0, '# Plano\num!');
  index.changed();
  assert.equal(index.noteTitled('plano')?.id, note(0).id);
  assert.equal(index.noteTitled('Avô'), null);
});

test('an imported note is found by its file name, with and without the extension', () => {
  const { workspace, index, note } = indexed('nada');
  const { id } = workspace.addNote({ text: 'x', name: 'Plano [a].md' });
  index.changed();
  assert.equal(index.noteTitled('plano a .md')?.id, id);
  assert.equal(index.noteTitled('Plano a')?.id, id);
  const titlesBut = (own: string) => index.titlesBut(own).map(({ name }) => name);
  assert.deepEqual([titlesBut(note(0).id), titlesBut(id)], [['Plano a'], ['nada']]);
});

test('links back come only from other notes, to the one that the title means', () => {
  const { index, note } = indexed('Plano\n[[Plano]]', 'a\n[[plano|x]]', 'b\n`[[plano]]`');
  assert.deepEqual(index.linkingTo(note(0)).map(titleOf), ['a']);
  assert.deepEqual(index.tagged('nada'), []);
});

test('names are found at their start first, then in words, then letter by letter', () => {
  const names = ['Meu plano', 'aplanar', 'Plano', 'p l a n', 'outro'].map(findable);
  assert.deepEqual(bestMatches('plan', names, 9), ['Plano', 'Meu plano', 'aplanar', 'p l a n']);
  assert.deepEqual(bestMatches('', names, 2), ['Meu plano', 'aplanar']);
  assert.deepEqual(bestMatches('plan', names, 1), ['Plano']);
});
