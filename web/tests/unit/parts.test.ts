import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { emptyContents } from '../../src/state/model';
import { inParts } from '../../src/state/parts';
import { Workspace } from '../../src/state/workspace';
import { documentPieces, LONG_PIECE, prepareJson, serialize } from '../../src/state/write';
import { random } from './chance';

test('parts make up the whole, none much too long, none ending within a character', () => {
  const next = random(3);
  for (let round = 0; round < 200; round++) {
    const pieces = Array.from({ length: next(12) }, () => ['a', '😀', 'é', ''][next(4)]?.repeat(next(40)) ?? '');
    const parts = [...inParts(pieces, 16)];
    assert.equal(parts.join(''), pieces.join(''));
    for (const part of parts) {
      assert.ok(part.length > 0 && part.length <= 32, String(part.length));
      assert.doesNotMatch(part, /[\ud800-\udbff]$/);
    }
  }
});

test('a long document in parts is the document', () => {
  const workspace = new Workspace(
    { ...emptyContents, unreadable: ['7', '"x"'], unreadableBin: ['{}'] },
    false,
    () => 5,
  );
  const lines = (count: number) => Text.of(Array.from({ length: count }, (_, line) => `linha "${line}" 😀`));
  const ids = [1, 40_000, 3, 90_000, 200].map((count) => workspace.addNote({ text: lines(count) }).id);
  workspace.openTab(ids[3] ?? '');
  workspace.deleteNote(ids[1] ?? '');
  const check = () => {
    const parts = [...inParts(documentPieces(workspace.contents, 4), LONG_PIECE)];
    assert.equal(parts.join(''), serialize(workspace.contents, 4));
    assert.equal((JSON.parse(parts.join('')) as { notes: unknown[] }).notes.length, 6);
    for (const part of parts) assert.ok(part.length <= 2 * LONG_PIECE);
  };
  check();
  for (const _ of prepareJson(workspace.contents)) check();
  workspace.setText(ids[3] ?? '', lines(95_000));
  check();
});
