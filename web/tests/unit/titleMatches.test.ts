import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Note } from '../../src/state/model';
import { isTitled, matchTitles } from '../../src/state/titleMatches';
import { titleOf } from '../../src/state/titleOf';
import { workspaceWith } from './workspaces';

function match(titles: ReadonlyArray<string>, query: string) {
  const { workspace } = workspaceWith(...titles);
  const work = matchTitles(workspace.notesInOrder(), query, new Map<Note, string>());
  let [step, pauses] = [work.next(), 0];
  for (; !step.done; step = work.next()) pauses++;
  return { found: step.value.map(({ note }) => titleOf(note)), marked: step.value[0]?.marked, pauses };
}

test('titles that begin with the query come first, then words, parts of words, and letters in order', () => {
  const titles = ['Mato', 'Maio ótimo', 'O mato', 'Somatório', 'Mato Grosso', 'Nada'];
  const { found, marked } = match(titles, 'MÁTO');
  assert.deepEqual(found, ['Mato', 'Mato Grosso', 'O mato', 'Somatório', 'Maio ótimo']);
  assert.deepEqual(marked, [0, 1, 2, 3]);
});

test('of titles that fit equally well, and without a query, the latest comes first', () => {
  assert.deepEqual(match(['sol um', 'sol dois'], 'sol').found, ['sol dois', 'sol um']);
  assert.deepEqual(match(['sol um', 'sol dois'], ' ').found, ['sol dois', 'sol um']);
});

test('ten thousand titles are matched with pauses, and only some of them are shown', () => {
  const titles = Array.from({ length: 10_000 }, (_, i) => `nota ${i}`);
  const { found, pauses } = match(titles, 'nota');
  assert.ok(found.length < 100 && pauses >= 99, `${found.length} ${pauses}`);
  assert.equal(match(titles, 'nota 7777').found[0], 'nota 7777');
  assert.equal(match(titles, 'n7777').found[0], 'nota 7777');
});

test('a title is the same in other letters of the same name', () => {
  const { workspace } = workspaceWith('Ação');
  const [note] = workspace.notesInOrder();
  assert.ok(note && isTitled(note, ' acao ') && !isTitled(note, 'aca'));
});
