import assert from 'node:assert/strict';
import { test } from 'node:test';
import { moveInTable } from '../../src/editor/tableKeys';
import { columnAt, readTable, writeTable } from '../../src/text/tableText';
import { run } from './runCommand';

const written = (...lines: string[]) => {
  const table = readTable(lines);
  return table && writeTable(table).lines;
};
const press = (step: 1 | -1, lines: ReadonlyArray<string>) => run(moveInTable(step), lines.join('\n'), '¦').split('\n');

test('a table is written with aligned columns', () => {
  assert.deepEqual(written('|Nome|Preço|', '|:--|--:|', '|maçã|5|', '|pão de queijo|12,50|'), [
    '| Nome          | Preço |',
    '| :------------ | ----: |',
    '| maçã          |     5 |',
    '| pão de queijo | 12,50 |',
  ]);
  assert.deepEqual(written('a | b | c', '-|:-:|-', '1 | 22222 | 3 | 4', 'x'), [
    '| a   |   b   | c   |     |',
    '| --- | :---: | --- | --- |',
    '| 1   | 22222 | 3   | 4   |',
    '| x   |       |     |     |',
  ]);
});

test('wide characters, escaped bars and very long cells keep columns aligned', () => {
  const lines = written('|a|b|', '|-|-|', '|日本|x\\|y|', '|👨‍👩‍👧|\\\\|', `|${'l'.repeat(80)}|z|`);
  assert.equal(lines?.[2]?.indexOf('x\\|y'), 60 - 4 + 2 + 5);
  assert.match(lines?.[3] ?? '', /^\| 👨‍👩‍👧 {58} \| \\\\ {3}\|$/u);
  assert.equal(lines?.[4], `| ${'l'.repeat(80)} | z    |`);
  const again = written(...(lines ?? []));
  assert.deepEqual(again, lines, 'what is in order stays as it is');
});

test('other lines are not parsed as a table', () => {
  for (const lines of [['a'], ['a|b', 'c|d'], ['|a|', ''], []]) assert.equal(readTable(lines), null);
});

test('the column at an offset is found by counting bars', () => {
  assert.deepEqual(
    [0, 1, 2, 3, 4, 7].map((at) => columnAt('|a|b\\||', at)),
    [0, 0, 0, 1, 1, 2],
  );
  assert.deepEqual(
    [0, 1, 2].map((at) => columnAt('a|b', at)),
    [0, 0, 1],
  );
});

test('Tab goes to the next cell, skips the delimiter row and adds a row at the end', () => {
  const table = ['|a¦|b|', '|-|-|', '|c|d|'];
  assert.deepEqual(press(1, table), ['| a   | ‹b›   |', '| --- | --- |', '| c   | d   |']);
  assert.deepEqual(press(1, ['|a|b¦|', '|-|-|', '|c|d|'])[2], '| ‹c›   | d   |');
  assert.deepEqual(press(1, ['|a|b|', '|-|¦-|', '|c|d|'])[2], '| ‹c›   | d   |');
  assert.deepEqual(press(1, ['|a|b|', '|-|-|', '|c|d¦|']).slice(2), ['| c   | d   |', '| ¦    |     |']);
});

test('Shift+Tab goes back, and stays in the first cell', () => {
  assert.deepEqual(press(-1, ['|a|b|', '|-|-|', '|¦c|d|'])[0], '| a   | ‹b›   |');
  assert.deepEqual(press(-1, ['|¦a|b|', '|-|-|'])[0], '| ‹a›   | b   |');
});

test('text around a table, and tables nested in other blocks, stay unchanged', () => {
  const around = ['texto', '', '|a¦|b|', '|-|-|', '', 'fim'];
  assert.deepEqual(press(1, around), ['texto', '', '| a   | ‹b›   |', '| --- | --- |', '', 'fim']);
  for (const lines of [['> |a¦|', '> |-|'], ['a¦|b'], ['```', '|a¦|', '|-|', '```']]) {
    assert.deepEqual(press(1, lines), lines);
  }
});
