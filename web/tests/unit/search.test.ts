import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { emptyContents, type Note } from '../../src/state/model';
import { NoteText } from '../../src/state/noteText';
import { contextOf } from '../../src/state/searchContext';
import {
  allOf,
  type Candidate,
  foldNotes,
  forgetFolded,
  narrowed,
  type SearchMatch,
  searchNotes as search,
} from '../../src/state/search';
import { parseQuery } from '../../src/text/searchQuery';
import { titleOf } from '../../src/state/titleOf';
import { Workspace } from '../../src/state/workspace';
import { workspaceWith } from './workspaces';

const parsed = (query: string) => parseQuery(query, 0);
const searchNotes = (candidates: Iterable<Candidate>, query: string) => search(candidates, parsed(query));

test('the search ignores accents in titles and texts', () => {
  const { workspace } = workspaceWith('Reunião', 'Lista\npão e maçã', 'Outra');
  const found = (query: string) =>
    [...searchNotes(allOf(workspace.notesInOrder()), query)].flatMap((f) => (f ? [titleOf(f.note)] : []));
  assert.deepEqual(found('reuniao'), ['Reunião']);
  assert.deepEqual(found('MACA'), ['Lista']);
  assert.deepEqual(found('nada'), []);
});

test('the search finds a match across chunks of a long text, with its excerpt', () => {
  const text = `${'x'.repeat(299_998)}agulha ${'y'.repeat(100_000)}`;
  const { workspace } = workspaceWith(`Longa\n${text}`);
  const [found] = [...searchNotes(allOf(workspace.notesInOrder()), 'AGULHA')];
  assert.ok(found && !found.inTitle);
  assert.match(contextOf(found.note.text, ['agulha']), /^…x+agulha y/);
});

test('an excerpt is the original text around the match, on one line', () => {
  const text = NoteText.of(['Título', '', `${'palavra '.repeat(20)}pão`, '', 'e maçã', 'fim'].join('\n'));
  assert.equal(contextOf(text, ['maca']), '…pão e maçã fim');
  assert.equal(contextOf(text, ['nada', 'maca']), '…pão e maçã fim');
  assert.equal(contextOf(text, ['nada']), '');
  assert.equal(contextOf(text, []), '');
});

test('an excerpt is the same with and without knowing where the match is', () => {
  const texts = [
    'um\nmaçã',
    `${'palavra '.repeat(100)}MAÇÃ e mais`,
    // Combining marks and Hangul syllables shift the match's offset.
    `${'cafe\u0301 '.repeat(100)}maca\u0303o`,
    `${'한글 '.repeat(200)}maça`,
    `🎉 maçã`,
  ];
  for (const text of texts) {
    const { workspace } = workspaceWith(`Título\n${text}`);
    const [found] = [...searchNotes(allOf(workspace.notesInOrder()), 'maca')];
    assert.ok(found && !found.inTitle);
    const known = contextOf(found.note.text, ['maca'], found.near);
    assert.equal(known, contextOf(found.note.text, ['maca']));
    assert.match(known, /ma[cç]/i);
    assert.equal(contextOf(NoteText.of('outra'), ['maca'], found.near), '');
  }
});

test('a match does not span title and text', () => {
  const { workspace } = workspaceWith();
  workspace.addNote({ text: Text.of(['fim']), name: 'plano' });
  const found = (query: string) => [...searchNotes(allOf(workspace.notesInOrder()), query)].filter(Boolean).length;
  assert.deepEqual(['planofim', '"plano fim"', 'plano', 'fim'].map(found), [0, 0, 1, 1]);
});

test('the search pauses, however many matches there are', () => {
  const texts = Array.from({ length: 400 }, (_, i) => `nota ${i}\n${'x'.repeat(5000)}`);
  const { workspace } = workspaceWith(...texts);
  const notes = workspace.notesInOrder();
  const pauses = (query: string) => [...searchNotes(allOf(notes), query)].filter((one) => one === null).length;
  assert.equal(pauses('nada'), 400, 'each note has to be folded');
  for (const query of ['nada', 'nota']) {
    const count = pauses(query);
    assert.ok(count > 2 && count < 40, `${query}: ${count}`);
  }
});

test('a longer query only searches the matches of the shorter one, from where that matched', () => {
  const { workspace } = workspaceWith('ação um', 'acaso', 'outra', 'não é\nacolá e ação', 'ac', 'cação');
  const all = allOf(workspace.notesInOrder());
  const find = (among: typeof all, query: string) =>
    [...searchNotes(among, query)].filter((one): one is SearchMatch => one !== null);
  for (const [before, query] of [
    ['ac', 'acao'],
    ['AÇ', 'ação um'],
    ['ac', 'cac'],
    ['a', 'a'],
  ] as const) {
    const among = narrowed(parsed(query), parsed(before), find(all, before));
    assert.ok(among, `${query} after ${before}`);
    assert.deepEqual(find(among, query), find(all, query));
  }
  assert.deepEqual(
    narrowed(parsed('acao'), parsed('ac'), find(all, 'ac'))
      ?.map(({ from }) => from)
      .sort((a, b) => a - b),
    [0, 0, 0, 1, 12],
  );
  assert.equal(narrowed(parsed('ac'), parsed('ação'), find(all, 'ação')), null);
  assert.equal(narrowed(parsed('a'), parsed(''), find(all, '')), null, 'all notes are not finds');
});

test('folding ahead does not change the results, and pinned notes come first', () => {
  const { workspace, ids } = workspaceWith('um ção', 'dois cao', 'três');
  assert.equal([...foldNotes(workspace.notesInOrder())].length, 3);
  workspace.setPinned([ids[0] ?? ''], true);
  const found = [...searchNotes(allOf(workspace.notesInOrder()), 'CAO')].flatMap((f) => (f ? [titleOf(f.note)] : []));
  assert.deepEqual(found, ['um ção', 'dois cao']);
  workspace.setPinned([ids[0] ?? ''], false);
  assert.equal(titleOf(workspace.notesInOrder()[0] as Note), 'três');
});

test('a search finds the same after what was prepared for it is given up', () => {
  const workspace = new Workspace(emptyContents, false, () => 1000);
  for (let i = 0; i < 20; i++) workspace.addNote({ text: `nota ${i}\nação` });
  const all = () => [...searchNotes(allOf(workspace.notesInOrder()), 'acao')];
  const pauses = () => all().filter((found) => found === null).length;
  forgetFolded();
  assert.equal(pauses(), 20, 'nothing is prepared');
  assert.equal(pauses(), 0);
  forgetFolded();
  assert.equal(all().filter((found) => found !== null).length, 20);
  forgetFolded();
  assert.equal(pauses(), 20);
});
