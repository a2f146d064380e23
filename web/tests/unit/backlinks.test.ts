import assert from 'node:assert/strict';
import { test } from 'node:test';
import { linksHere, mentionsIn } from '../../src/commands/backlinks';
import type { Context } from '../../src/commands/context';
import { NoteIndex } from '../../src/state/noteIndex';
import { workspaceWith } from './workspaces';

function first(text: string) {
  const { workspace, ids } = workspaceWith(text);
  return workspace.note(ids[0] ?? '') ?? assert.fail();
}

test('mentions are whole words outside of links, in any case', () => {
  const words = (text: string, title: string) => mentionsIn(first(text), title).map((place) => place.words);
  assert.deepEqual(words('O plano, [[Plano]], [[x|o Plano]] aplano planos PLANO.', 'Plano'), ['plano', 'PLANO']);
  assert.deepEqual(words('Meu\nplano (a+b)', 'meu plano (a+b)'), ['Meu plano (a+b)']);
  assert.deepEqual(words('avó avô', 'avô'), ['avô']);
});

test('a place has its line without marks around it and can be found again', () => {
  const text = 'um\ndiz [[Plano]] e mais\ntrês';
  const { workspace, ids } = workspaceWith(text, 'Plano');
  const index = new NoteIndex(workspace, () => true);
  for (const _ of index.read());
  const [place, ...others] = linksHere({ workspace, index } as Context);
  assert.deepEqual(others, []);
  assert.equal(place?.id, ids[0]);
  assert.equal(text.slice(place?.from, place?.to), 'Plano');
  assert.deepEqual([place?.before, place?.words, place?.after], ['diz ', 'Plano', ' e mais']);
});
