import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ensureSyntaxTree, syntaxTree } from '@codemirror/language';
import { EditorState, Text } from '@codemirror/state';
import type { ViewUpdate } from '@codemirror/view';
import type { Tree } from '@lezer/common';
import { highlightTree } from '@lezer/highlight';
import { changedNodes, changedSyntax } from '../../src/editor/changedSyntax';
import { classNames } from '../../src/editor/highlight';
import { loadSyntax, syntaxExtensions } from '../../src/editor/syntax';
import { random } from './chance';

const texts: Record<string, readonly string[]> = {
  markdown: [
    '# Um *título*',
    'Um parágrafo com **força**,\nem duas linhas.',
    '- um\n- [ ] dois\n  - três\n- quatro',
    '```js\nlet a = `x`;\n\nif (a) b();\n```',
    '> dito\n> - por alguém',
    '| a | b |\n| - | - |\n| 1 | 2 |',
  ],
  js: ['function a(b) {\n  return [`b`, 1];\n}', '/* um\n   dois */', 'const c = { d: "e", f };', 'class G { h() {} }'],
  css: ['a { color: red; }', '/* um\n dois */', '@media print {\n  b { margin: 0 }\n}'],
};
const pieces = [
  'a',
  ' ',
  '\n',
  '\n\n',
  '`',
  '```\n',
  '*',
  '- ',
  '> ',
  '#',
  '    ',
  '"',
  '/*',
  '*/',
  '{',
  '}',
  '|',
  ';',
];

function parsed(state: EditorState): Tree {
  const tree = ensureSyntaxTree(state, state.doc.length, 60_000);
  assert.ok(tree);
  return tree;
}

/** The style of each character, and the kinds of the nodes around it. */
function looks(tree: Tree, length: number): string[] {
  const looks = new Array<string>(length).fill('');
  highlightTree(tree, classNames, (from, to, style) => looks.fill(style, from, to));
  tree.iterate({
    enter: ({ name, from, to }) => {
      for (let at = from; at < to; at++) looks[at] += ` ${name}`;
    },
  });
  return looks;
}

for (const [syntax, blocks] of Object.entries(texts)) {
  test(`${syntax} looks as before wherever an edit has changed neither text nor syntax`, async () => {
    await loadSyntax(syntax);
    const next = random(11);
    // Other parsers take over large nodes only.
    const [rounds, count, share] = syntax === 'markdown' ? [8, 40, 0.3] : [2, 600, 0.02];
    let skipped = 0;
    let whole = 0;
    for (let round = 0; round < rounds; round++) {
      const doc = Array.from({ length: count }, () => blocks[next(blocks.length)]).join('\n\n');
      let state = EditorState.create({ doc, extensions: syntaxExtensions(syntax, Text.of(doc.split('\n'))) });
      for (let i = 0; i < 25; i++) {
        const before = parsed(state);
        const from = next(state.doc.length);
        const change = { from, to: from + (next(3) ? 0 : next(Math.min(30, state.doc.length - from))) };
        const update = state.update({ changes: { ...change, insert: pieces[next(pieces.length)] ?? '' } });
        const [was, length] = [looks(before, state.doc.length), update.state.doc.length];
        state = update.state;
        const after = parsed(state);
        const stale = changedNodes(before, after, update.changes, { from: 0, to: length });
        update.changes.iterChangedRanges((_from, _to, start, end) => stale.push({ from: start, to: end }));
        const lines = stale.map((one) => [state.doc.lineAt(one.from).from, state.doc.lineAt(one.to).to] as const);
        const is = looks(after, length);
        for (let at = 0; at < length; at++) {
          whole += 1;
          if (lines.some(([start, end]) => start <= at && at <= end)) continue;
          skipped += 1;
          const text = `${round}/${i}: ${at} of ${JSON.stringify(state.doc.toString())}`;
          assert.equal(is[at], was[update.changes.invertedDesc.mapPos(at, 1)], text);
        }
      }
    }
    assert.ok(skipped > whole * share, `${skipped} of ${whole} are left alone`);
  });
}

test('an edit in one item of a long list leaves the others alone', () => {
  const doc = Array.from({ length: 100 }, (_, index) => `- item ${index}`).join('\n');
  const state = EditorState.create({ doc, extensions: syntaxExtensions('markdown', Text.of(doc.split('\n'))) });
  const before = parsed(state);
  const at = doc.indexOf('item 50') + 2;
  const update = state.update({ changes: { from: at, insert: 'x' } });
  const after = parsed(update.state);
  const spans = changedNodes(before, after, update.changes, { from: 0, to: update.state.doc.length });
  const size = spans.reduce((sum, { from, to }) => sum + to - from, 0);
  assert.ok(size < 100, JSON.stringify(spans));
});

test('as long as the parser is behind, nothing is known to have changed; then all is', async () => {
  await loadSyntax('js');
  const doc = 'const a = [{ b: `c` }, function () {}];\n'.repeat(60_000);
  const state = EditorState.create({ doc: 'a;', extensions: syntaxExtensions('js', Text.of(['a;'])) });
  parsed(state);
  const changed = (transaction: ReturnType<EditorState['update']>) =>
    changedSyntax(transaction as unknown as ViewUpdate, { from: 0, to: transaction.state.doc.length });
  const pasted = state.update({ changes: { from: 0, insert: doc } });
  const isBehind = ({ state }: { readonly state: EditorState }) => syntaxTree(state).length < state.doc.length;
  assert.ok(isBehind(pasted), 'the parser is behind');
  assert.equal(changed(pasted), undefined);
  let typed = pasted;
  // On a busy machine, the parser may need more than the time it has for one key.
  for (let keys = 0; isBehind(typed) && keys < 100; keys++) {
    parsed(typed.state);
    typed = typed.state.update({ changes: { from: doc.length, insert: 'x' } });
  }
  assert.deepEqual(changed(typed), [{ from: 0, to: typed.state.doc.length }]);
});
