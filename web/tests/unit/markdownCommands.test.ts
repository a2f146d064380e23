import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { insertLink, makeTasks, toggleHeading, toggleList, toggleQuote } from '../../src/editor/markdownCommands';
import { paragraphAt } from '../../src/editor/writingModes';
import { run } from './runCommand';

test('lines become headings, another level, and text again', () => {
  assert.equal(run(toggleHeading(2), 'a|'), '## a|');
  assert.equal(run(toggleHeading(1), '## a|'), '# a|');
  assert.equal(run(toggleHeading(1), '# a|'), 'a|');
  assert.equal(run(toggleHeading(1), '|'), '# |');
});

test('lines become quotes and lists, and text again', () => {
  assert.equal(run(toggleQuote, '‹a\n\nb›'), '> ‹a\n\n> b›');
  assert.equal(run(toggleQuote, '> a|'), 'a|');
  assert.equal(run(toggleList, '‹a\n- b›'), '- ‹a\n- b›');
  assert.equal(run(toggleList, '  2. a|'), '  - a|');
  assert.equal(run(toggleList, '- a|'), 'a|');
  assert.equal(run(toggleList, '- [ ] a|'), '- a|');
});

test('lines become tasks, and tasks are ticked', () => {
  assert.equal(run(makeTasks, 'a|'), '- [ ] a|');
  assert.equal(run(makeTasks, '- a|'), '- [ ] a|');
  assert.equal(run(makeTasks, '- [ ] a|'), '- [x] a|');
  assert.equal(run(makeTasks, '‹a\n- [x] b›'), '- [ ] ‹a\n- [x] b›');
});

test('a link is made of its text or of its address', () => {
  assert.equal(run(insertLink, 'a ‹b›'), 'a [b](|)');
  assert.equal(run(insertLink, '‹https://a.example›'), '[|](https://a.example)');
  assert.equal(run(insertLink, '|'), '[|]()');
});

test('a paragraph reaches to the empty lines around it', () => {
  const text = Text.of(['a', '', 'b', 'c', ' ', 'd']);
  assert.deepEqual(paragraphAt(text, 4, 1, 6), [3, 4]);
  assert.deepEqual(paragraphAt(text, 2, 1, 6), [2, 2]);
  assert.deepEqual(paragraphAt(text, 4, 4, 6), [4, 4], 'as far as it is visible');
});
