import assert from 'node:assert/strict';
import { test } from 'node:test';
import { highlightTree } from '@lezer/highlight';
import { SearchQuery } from '@codemirror/search';
import { EditorState, Text } from '@codemirror/state';
import { runsLeftwards } from '../../src/editor/direction';
import { classNames } from '../../src/editor/highlight';
import { languageNamed, languageOfFence, syntaxOf } from '../../src/editor/languages';
import { joinLines } from '../../src/editor/lines';
import { indentItems, toggleMark } from '../../src/editor/markdownKeys';
import { findMatches, placeOf } from '../../src/editor/matches';
import { toggleTasks } from '../../src/editor/tasks';
import { countString, countText } from '../../src/text/count';
import { run } from './runCommand';

test('tasks are checked, unchecked and created', () => {
  assert.equal(run(toggleTasks, '- [ ] a|'), '- [x] a|');
  assert.equal(run(toggleTasks, '- [X] a|'), '- [ ] a|');
  assert.equal(run(toggleTasks, '1. a|'), '1. [ ] a|');
  assert.equal(run(toggleTasks, '> - [ ] a|'), '> - [x] a|');
  assert.equal(run(toggleTasks, '‹- [ ] a\n- [x] b›'), '‹- [x] a\n- [ ] b›');
  assert.equal(run(toggleTasks, 'a|'), 'a|');
  assert.equal(run(toggleTasks, '```\n- [ ] a|\n```'), '```\n- [ ] a|\n```');
});

test('marks are toggled around the selection', () => {
  assert.equal(run(toggleMark('**'), 'a ‹bc› d'), 'a **‹bc›** d');
  assert.equal(run(toggleMark('**'), 'a **‹bc›** d'), 'a ‹bc› d');
  assert.equal(run(toggleMark('*'), 'a **‹bc›** d'), 'a ***‹bc›*** d');
  assert.equal(run(toggleMark('*'), 'a ***‹bc›*** d'), 'a **‹bc›** d');
  assert.equal(run(toggleMark('*'), 'uma pal|avra'), 'uma *pal|avra*');
  assert.equal(run(toggleMark('*'), '‹a› ‹b›'), '*‹a›* *‹b›*');
});

test('list items indent and outdent', () => {
  const [inwards, outwards] = [indentItems(false), indentItems(true)];
  assert.equal(run(inwards, '- a\n- b|'), '- a\n  - b|');
  assert.equal(run(inwards, '1. a\n2. b|'), '1. a\n   1. b|');
  assert.equal(run(inwards, '- a\n  - b|'), '- a\n  - b|');
  assert.equal(run(inwards, '- a|'), '- a|');
  assert.equal(run(outwards, '1. a\n   - b|'), '1. a\n- b|');
  assert.equal(run(outwards, '- a|'), '- a|');
  assert.equal(run(inwards, '1. a\n   1. b\n2. c|'), '1. a\n   1. b\n   2. c|');
  assert.equal(run(inwards, '- 7 a\n12. b|'), '- 7 a\n  1. b|');
  assert.equal(run(outwards, '1. a\n   1. b\n   2. c|'), '1. a\n   1. b\n2. c|');
  assert.equal(run(outwards, 'x\n\n   4. c|'), 'x\n\n1. c|');
  assert.equal(run(inwards, '- a\n‹- b\n- c›'), '- a\n  ‹- b\n  - c›');
});

test('lines are joined with one space', () => {
  assert.equal(run(joinLines, 'a|\n  b'), 'a| b');
  assert.equal(run(joinLines, '‹a  \nb\n\nc›'), 'a b| c');
  assert.equal(run(joinLines, 'a|'), 'a|');
});

test('every file type has its language', async () => {
  const samples: Record<string, readonly [code: string, text: string]> = {
    csv: ['a,"b, c",d', '"b, c"'],
    json: ['{"a": true}', 'true'],
    html: ['<p class="a">b</p>', '"a"'],
    css: ['a { color: red }', 'color'],
    js: ['const a = "b"', 'const'],
    ts: ['interface A {}', 'interface'],
    py: ['def a(): pass', 'def'],
    sql: ['select a from b', 'select'],
    yaml: ['a: "b"', '"b"'],
    xml: ['<a b="c"/>', '"c"'],
    sh: ['if true; then echo a; fi', 'if'],
    c: ['int a = 1;', '1'],
    cpp: ['class A {};', 'class'],
    cs: ['public class A {}', 'public'],
    java: ['public class A {}', 'public'],
    go: ['func a() {}', 'func'],
    rs: ['fn a() {}', 'fn'],
    swift: ['let a = 1', 'let'],
    kt: ['fun a() {}', 'fun'],
    php: ['<?php echo "a";', 'echo'],
    rb: ['def a; end', 'def'],
  };
  assert.equal(Object.keys(samples).length + 2, 23);
  for (const [extension, [code, text]] of Object.entries(samples)) {
    const note = { fileName: `a.${extension}`, source: null, format: 'markdown' } as const;
    assert.equal(syntaxOf(note), extension);
    const support = await languageNamed(extension)?.load();
    assert.ok(support, extension);
    const marked: string[] = [];
    highlightTree(support.language.parser.parse(code), classNames, (from, to) => marked.push(code.slice(from, to)));
    assert.ok(
      marked.some((part) => part.trim() === text),
      `${extension}: ${JSON.stringify(marked)}`,
    );
  }
});

test("the file name decides on the syntax, then the note's format", () => {
  const plain = { fileName: null, source: null, format: 'plain' } as const;
  assert.equal(syntaxOf(plain), 'plain');
  assert.equal(syntaxOf({ ...plain, source: 'a.MD' }), 'markdown');
  assert.equal(syntaxOf({ ...plain, source: 'a.md', fileName: 'b.py' }), 'py');
  assert.equal(syntaxOf({ ...plain, format: 'markdown', fileName: 'a.txt' }), 'markdown');
  assert.equal(languageOfFence('Python {1,2}')?.name, 'py');
  assert.equal(languageOfFence('nada'), null);
});

test('matches are counted across chunks, each once', () => {
  const count = (doc: string, query: SearchQuery) => {
    const state = EditorState.create({ doc });
    const search = findMatches(state, query);
    let step = search.next();
    while (!step.done) step = search.next();
    return step.value.starts;
  };
  const line = 'Ação e ação, reação\n';
  const doc = line.repeat(20_000);
  assert.equal(count(doc, new SearchQuery({ search: 'ação' })).length, 60_000);
  assert.equal(count(doc, new SearchQuery({ search: 'ação', caseSensitive: true })).length, 40_000);
  assert.equal(count(doc, new SearchQuery({ search: 'ação', wholeWord: true })).length, 40_000);
  assert.equal(count(doc, new SearchQuery({ search: '^a', regexp: true })).length, 20_000);
  assert.deepEqual(count('a\nb', new SearchQuery({ search: 'x' })), []);
  assert.deepEqual(count('', new SearchQuery({ search: 'x' })), []);
  assert.equal(placeOf([2, 5, 9], 5), 2);
  assert.equal(placeOf([2, 5, 9], 6), 0);
});

test('words and characters are counted the way readers do', () => {
  assert.deepEqual(countString('Olá, mundo! d’água 3.14 🎉'), { words: 4, characters: 25 });
  assert.equal(countString('日本語 text').words, 4);
  assert.equal(countString('').words, 0);
  const lines = Array.from({ length: 5000 }, (_, i) => `linha ${i}`);
  const counting = countText(Text.of(lines));
  let result = counting.next();
  while (!result.done) result = counting.next();
  assert.deepEqual(result.value, countString(lines.join('\n')));
});

test("a line's first letter decides its direction", () => {
  assert.ok(runsLeftwards('שלום world'));
  assert.ok(runsLeftwards('- 12 مرحبا'));
  assert.ok(!runsLeftwards('hello שלום'));
  assert.ok(!runsLeftwards('123'));
});
