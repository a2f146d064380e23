import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ChangeSet, Text } from '@codemirror/state';
import { passagesBetween } from '../../src/state/passages';
import { random } from './chance';

const tree = (text: string) => Text.of(text.split('\n'));

test('passages show the lines that differ, and what in them does', () => {
  const version = tree('igual\numa casa um\nigual\nsempre\nigual\nfora');
  const current = tree('igual\numa casa dez\nigual\nsempre\nigual');
  const [first, second] = passagesBetween(version, current);
  assert.equal(first?.line, 2);
  assert.deepEqual(first?.before, [
    { text: 'uma casa ', differs: false },
    { text: 'um', differs: true },
  ]);
  assert.equal(first?.now.map(({ text }) => text).join(''), 'uma casa dez');
  assert.match(second?.before.map(({ text, differs }) => (differs ? text : '')).join('') ?? '', /fora/);
  assert.doesNotMatch(second?.now.map(({ text }) => text).join('') ?? '', /fora/);
});

test('all passages together bring the version back, and so does one after the other', () => {
  const LINES = ['', 'a', 'b', 'uma linha', 'outra linha', '🎉'];
  for (let seed = 1; seed <= 300; seed++) {
    const chance = random(seed);
    const some = () => Array.from({ length: chance(9) }, () => LINES[chance(LINES.length)] ?? '').join('\n');
    const [version, current] = [tree(some()), tree(some())];
    const passages = passagesBetween(version, current);
    const texts = `${JSON.stringify(version.toString())} from ${JSON.stringify(current.toString())}`;
    const all = passages.map(({ change: { from, to, insert } }) => ({ from, to, insert: tree(insert) }));
    assert.equal(ChangeSet.of(all, current.length).apply(current).toString(), version.toString(), texts);
    let text = current;
    for (let i = 0; i < 30 && !text.eq(version); i++) {
      const { from, to, insert } = passagesBetween(version, text)[0]?.change ?? { from: 0, to: 0, insert: '' };
      text = text.replace(from, to, tree(insert));
    }
    assert.equal(text.toString(), version.toString(), texts);
  }
});
