import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ChangeSet, Text } from '@codemirror/state';
import { tableChanges } from '../../src/editor/tableChanges';
import { readTable, writeTable } from '../../src/text/tableText';
import { random } from './chance';

const CELLS = ['', 'a', 'um - dois', 'x\\|y', '--:', '日本', 'ção  com espaços', '🎉', 'longa '.repeat(15).trim()];

test('a table is aligned and gets a row by changes to the padding alone', () => {
  for (let seed = 1; seed <= 300; seed++) {
    const chance = random(seed);
    const columns = 1 + chance(4);
    const row = () => {
      const cells = Array.from(
        { length: columns },
        () => `${' '.repeat(chance(3))}${CELLS[chance(CELLS.length)]}${' '.repeat(chance(3))}`,
      );
      return chance(4) ? `|${cells.join('|')}|` : ` ${cells.join(' | ')}`;
    };
    const lines = [
      row(),
      `|${Array.from({ length: columns }, () => [':-', '-:', '---', ':-:'][chance(4)]).join('|')}|`,
    ];
    for (let rows = chance(5); rows > 0; rows--) lines.push(row());
    const table = readTable(lines);
    assert.ok(table);
    const at = 1 + chance(table.rows.length);
    const empty = table.alignments.map(() => '');
    const rows = chance(2) ? table.rows : [...table.rows.slice(0, at), empty, ...table.rows.slice(at)];
    const after = writeTable({ ...table, rows }).lines;
    const text = lines.join('\n');
    const changes = ChangeSet.of(tableChanges(lines, after, 0, at + 1), text.length);
    assert.equal(changes.apply(Text.of(lines)).toString(), after.join('\n'), `seed ${seed}`);
    changes.iterChanges((from, to) => assert.match(text.slice(from, to), /^[-:| ]*$/, `seed ${seed}`));
  }
});

test('a table that is in order does not change', () => {
  const lines = ['| a   | b   |', '| --- | --- |', '| c   | d   |'];
  assert.deepEqual(tableChanges(lines, lines, 7, 2), []);
});
