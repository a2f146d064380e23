import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ensureSyntaxTree, foldable, Language } from '@codemirror/language';
import { markdownLanguage } from '@codemirror/lang-markdown';
import { EditorState, type StateField, Text } from '@codemirror/state';
import type { Tree } from '@lezer/common';
import { syntaxExtensions } from '../../src/editor/syntax';
import { fenceAfterLine, fenceAt } from '../../src/text/fences';
import { random } from './chance';

const blocks = [
  '# Título *um*',
  '## Outro `código`',
  'Um parágrafo com **força** e [ponte](https://example.org),\nem duas linhas.',
  '- um\n- [ ] dois\n  - três\n- quatro',
  '```js\n# não é título\n\nlet a = 1;\n```',
  '~~~\n```\nainda código\n\n- código\n~~~',
  '> dito\n> por alguém',
  '| a | b |\n| - | - |\n| 1 | 2 |',
  '1. um\n2. dois',
];

function longText(seed: number, length: number): string {
  const next = random(seed);
  const out: string[] = [];
  for (let size = 0; size < length; ) {
    const block = blocks[next(blocks.length)] ?? '';
    out.push(block);
    size += block.length + 2;
  }
  return out.join('\n\n');
}

function stateWith(doc: string): EditorState {
  return EditorState.create({ doc, extensions: syntaxExtensions('markdown', Text.of(doc.split('\n'))) });
}

/** What the library keeps for itself of a parse. */
interface Context {
  readonly tree: Tree;
  updateViewport(screen: { from: number; to: number }): void;
  work(milliseconds: number): boolean;
}

/** What the editor does when its screen shows a range. */
function parsedOnScreen(state: EditorState, screen: { from: number; to: number }): Tree {
  const { context } = state.field((Language as unknown as { state: StateField<{ context: Context }> }).state);
  context.updateViewport(screen);
  assert.ok(context.work(60_000));
  return context.tree;
}

/** All nodes in a range of a tree, except the root and the contents of code blocks; `clipped` to the range. */
function nodes(tree: Tree, from: number, to: number, clipped = false): string[] {
  const found: string[] = [];
  tree.iterate({
    from,
    to,
    enter: (node) => {
      const [start, end] = clipped ? [Math.max(node.from, from), Math.min(node.to, to)] : [node.from, node.to];
      if (node.name !== 'Document') found.push(`${node.name} ${start} ${end}`);
      return node.name !== 'FencedCode';
    },
  });
  return found;
}

test('the open fence is known at every line', () => {
  for (const seed of [1, 2, 3]) {
    const lines = longText(seed, 30_000).split('\n');
    const text = Text.of(lines);
    let fence = '';
    let at = 0;
    for (const line of lines) {
      assert.equal(fenceAt(text, at), fence, `${seed}: ${at}`);
      fence = fenceAfterLine(fence, line);
      at += line.length + 1;
    }
  }
});

test('what opens and closes a code block', () => {
  const after = (...lines: string[]) => lines.reduce(fenceAfterLine, '');
  assert.equal(after('```js'), '```');
  assert.equal(after('````', '```', 'a'), '````');
  assert.equal(after('```', '````'), '');
  assert.equal(after('```', '``` js'), '```');
  assert.equal(after('~~~ `a`', '```'), '~~~');
  assert.equal(after('``` a`b'), '');
  assert.equal(after('    ```'), '');
  assert.equal(after('   ~~~', '~~~   '), '');
});

test('a long text is parsed around the screen just as it would be as a whole', () => {
  for (const seed of [4, 5]) {
    const doc = longText(seed, 400_000);
    const whole = markdownLanguage.parser.parse(doc);
    const next = random(seed);
    const state = stateWith(doc);
    for (let i = 0; i < 15; i++) {
      const to = 3000 + next(doc.length - 3000);
      const tree = ensureSyntaxTree(state, to, 60_000);
      assert.ok(tree);
      assert.equal(tree.length, doc.length);
      assert.deepEqual(nodes(tree, to - 3000, to), nodes(whole, to - 3000, to), `${seed}: ${to}`);
      const [first, last] = [tree.topNode.firstChild?.from ?? 0, tree.topNode.lastChild?.to ?? 0];
      assert.ok(last - first < 110_000, 'only a part is parsed');
    }
  }
});

test('edits in a long text are followed', () => {
  const doc = longText(6, 300_000);
  let state = stateWith(doc);
  const at = doc.indexOf('\n\n# ', 2000) + 2;
  state = state.update({ changes: { from: 0, to: at, insert: '```\n' } }).state;
  assert.deepEqual(nodes(ensureSyntaxTree(state, 2000, 60_000) as Tree, 0, 10)[0]?.split(' ')[0], 'FencedCode');
  state = state.update({ changes: { from: 0, to: 4, insert: '' } }).state;
  assert.equal(nodes(ensureSyntaxTree(state, 2000, 60_000) as Tree, 0, 1)[0]?.split(' ')[0], 'ATXHeading1');
});

test('edits in the middle of a long text take over what is parsed and end as a parse of the whole would', () => {
  for (const seed of [8, 9, 10]) {
    const next = random(seed);
    let state = stateWith(longText(seed, 200_000));
    let at = 100_000;
    for (let i = 0; i < 60; i++) {
      const pieces = ['a', ' ', '\n', '\n\n', '```\n', '- ', '> ', '# ', '    ', 'x'.repeat(next(300))];
      const from = Math.max(0, at - next(3000));
      const to = from + (next(3) ? 0 : next(20));
      state = state.update({ changes: { from, to, insert: pieces[next(pieces.length)] ?? '' } }).state;
      const tree = parsedOnScreen(state, { from: at - 3000, to: at });
      const whole = markdownLanguage.parser.parse(state.doc.toString());
      assert.deepEqual(nodes(tree, at - 3000, at, true), nodes(whole, at - 3000, at, true), `${seed}: edit ${i}`);
      // Scrolled: by less than what is parsed around the screen, or by more.
      if (next(3) === 0) at += next(10_000) - 5000;
    }
  }
});

test('a text that grows long and short again is parsed as a whole once it is short', () => {
  const doc = longText(7, 110_000);
  let state = stateWith(doc);
  for (const length of [60_000, 110_000, 60_000]) {
    const before = state.doc.toString();
    const insert = doc.slice(before.length, length);
    state = state.update({ changes: { from: Math.min(length, before.length), to: before.length, insert } }).state;
    const text = state.doc.toString();
    // Accessing the long one would parse other parts of it.
    if (length > 100_000) continue;
    const tree = ensureSyntaxTree(state, text.length, 60_000) as Tree;
    const whole = markdownLanguage.parser.parse(text);
    assert.deepEqual(nodes(tree, 0, text.length), nodes(whole, 0, text.length));
  }
});

test('a text inside an unclosed code block is code', () => {
  const doc = `# a\n\n\`\`\`\n${'- linha\n\n'.repeat(30_000)}`;
  const tree = ensureSyntaxTree(stateWith(doc), 20_000, 60_000) as Tree;
  assert.ok(nodes(tree, 19_000, 20_000)[0]?.startsWith('FencedCode'));
});

test('sections of a long text fold to the next heading of their level, even far below the screen', () => {
  const section = `## b\n\n${'texto\n\n'.repeat(40_000)}\n\`\`\`\n# código\n\`\`\`\n`;
  const doc = `# a\n\n${section}\n# c\n\nfim\n`;
  const state = stateWith(doc);
  const folded = (heading: string) => {
    const from = doc.indexOf(`${heading}\n`);
    const { to } = state.doc.lineAt(from);
    const range = foldable(state, from, to);
    return range && [range.from - to, doc.slice(range.to).trimStart().slice(0, 3)];
  };
  assert.deepEqual(folded('# a'), [0, '# c']);
  assert.deepEqual(folded('## b'), [0, '# c']);
  assert.deepEqual(folded('# c'), [0, '']);
  assert.equal(folded('# código'), null);
});
