import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { lineRunsLeftwards } from '../../src/editor/direction';

const directions = (...lines: string[]) => lines.map((_, index) => lineRunsLeftwards(Text.of(lines), index + 1));

test('an item runs as the one above until it has a letter', () => {
  assert.deepEqual(directions('- שלום', '- '), [true, true]);
  assert.deepEqual(directions('1. שלום', '2. ', '3. a', '4. '), [true, true, false, false]);
  assert.deepEqual(directions('> مرحبا', '> - [ ] '), [true, true]);
  assert.deepEqual(directions('- '), [false]);
});

test('other lines run by themselves', () => {
  assert.deepEqual(directions('שלום', '', '- '), [true, false, false]);
  assert.deepEqual(directions('שלום', '123'), [true, false]);
});

test('a ticked item runs by its text, not by the letter in its box', () => {
  assert.deepEqual(directions('- [x] שלום', '- [X] a', '1. [x] שלום'), [true, false, true]);
  assert.deepEqual(directions('- שלום', '- [x] '), [true, true]);
  assert.deepEqual(directions('[x] שלום'), [false]);
});

test('a row of a table without letters runs as the one above', () => {
  assert.deepEqual(directions('| א | ב |', '| --- | --- |', '| 1 | 2 |'), [true, true, true]);
  assert.deepEqual(directions('| a | b |', '| --- | --- |'), [false, false]);
});
