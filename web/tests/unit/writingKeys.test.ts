import assert from 'node:assert/strict';
import { test } from 'node:test';
import { moveLineDown, moveLineUp } from '@codemirror/commands';
import { EditorState } from '@codemirror/state';
import type { Command } from '@codemirror/view';
import { endQuote, indentItems } from '../../src/editor/markdownKeys';
import { addRow } from '../../src/editor/tableKeys';
import { wrap } from '../../src/editor/wrapping';
import { run } from './runCommand';

/** Types a character as the editor does. */
const type =
  (text: string): Command =>
  (view) => {
    const change = wrap(view.state, text);
    if (change) view.dispatch(change);
    return change !== null;
  };

/** As the editor's own, which needs a window. */
const deleteLine: Command = ({ state, dispatch }) => {
  const { from, to } = state.doc.lineAt(state.selection.main.head);
  dispatch({ changes: { from, to: Math.min(to + 1, state.doc.length) }, userEvent: 'delete.line' });
  return true;
};

test('a mark typed over selected text goes around it, and so does the next', () => {
  assert.equal(run(type('*'), 'a ‹bc› d'), 'a *‹bc›* d');
  assert.equal(run(type('*'), 'a *‹bc›* d'), 'a **‹bc›** d');
  assert.equal(run(type('('), '‹a› ‹b›'), '(‹a›) (‹b›)');
  for (const [open, close] of ['[]', '{}', '""', '__', '``', '~~']) {
    assert.equal(run(type(open ?? ''), '‹a›'), `${open}‹a›${close}`);
  }
  assert.equal(run(type('*'), 'a|'), 'a|', 'there must be a selection');
  assert.equal(run(type('x'), '‹a›'), '‹a›', 'and a mark');
  assert.equal(run(type('*'), '```\n‹a›\n```'), '```\n‹a›\n```', 'code has no marks');
  assert.equal(run(type('('), '```\n‹a›\n```'), '```\n(‹a›)\n```');
});

test('only brackets and quotes go around text that is not Markdown', () => {
  const state = EditorState.create({ doc: 'a', selection: { anchor: 0, head: 1 } });
  assert.equal(wrap(state, '*'), null);
  for (const quote of ['"', "'", '“', '«']) assert.notEqual(wrap(state, quote), null, quote);
});

test('Enter on an empty line of a quote ends the quote', () => {
  assert.equal(run(endQuote, '> a\n> |'), '> a\n\n|');
  assert.equal(run(endQuote, '> a\n>\n> |'), '> a\n>\n|');
  assert.equal(run(endQuote, '> > a\n> > |'), '> > a\n>\n> |');
  assert.equal(run(endQuote, '> a|'), '> a|');
  assert.equal(run(endQuote, '```\n> |\n```'), '```\n> |\n```');
});

test('Enter in a table adds a row, and ends the table in an empty last one', () => {
  const table = '| a   | b   |\n| --- | --- |\n| 1   | 2   |';
  assert.equal(run(addRow, table.replace('2', '2^'), '^'), `${table}\n| ^    |     |`);
  assert.equal(
    run(addRow, table.replace('a', 'a^'), '^'),
    '| a   | b   |\n| --- | --- |\n| ^    |     |\n| 1   | 2   |',
  );
  assert.equal(run(addRow, `${table}\n| ^    |     |`, '^'), `${table}\n^`);
  assert.equal(run(addRow, `^${table}`, '^'), `^${table}`, 'before the table, it is an ordinary line break');
});

test('ordered lists count on around an item that is moved, deleted or indented', () => {
  assert.equal(run(moveLineDown, '1. a|\n2. b\n3. c'), '1. b\n2. a|\n3. c');
  assert.equal(run(moveLineUp, '4. a\n5. b|'), '4. b|\n5. a');
  assert.equal(run(deleteLine, '1. a|\n2. b\n3. c'), '|1. b\n2. c');
  assert.equal(run(deleteLine, '1. a\n2. b|\n3. c\n   1. d\n4. e'), '1. a\n|2. c\n   1. d\n3. e');
  assert.equal(run(indentItems(false), '1. a\n2. b|\n3. c'), '1. a\n   1. b|\n2. c');
  assert.equal(run(indentItems(true), '1. a\n   1. b|\n   2. c\n2. d'), '1. a\n2. b|\n   1. c\n3. d');
  assert.equal(run(deleteLine, '1. a|\n1. b\n1. c'), '|1. b\n1. c', 'unless it does not count');
  assert.equal(run(deleteLine, 'x\n\n- a|\n\ny\n\n3. b\n5. c'), 'x\n\n|\ny\n\n3. b\n5. c', 'others stay');
  assert.equal(run(deleteLine, '1. a\n2. b|\n3. c\n\n1. d\n2. e'), '1. a\n|2. c\n\n1. d\n2. e', 'the next list, too');
  assert.equal(run(deleteLine, '1. a\n   - b\n2. c|\n   - d\n3. e'), '1. a\n   - b\n|   - d\n2. e');
  assert.equal(run(deleteLine, '1. a\n   7. b\n   9. c\n2. d\n3. e|\n4. f'), '1. a\n   7. b\n   9. c\n2. d\n|3. f');
  assert.equal(run(deleteLine, '```\n1. a|\n5. b\n```'), '```\n|5. b\n```', 'code, too');
});
