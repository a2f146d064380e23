import assert from 'node:assert/strict';
import { test } from 'node:test';
import { isTagName, marksIn, partsOfLink } from '../../src/text/noteMarks';
import { blocksOf, type PreviewNode, previewGrammar } from '../../src/text/previewBlocks';

/** Marks as "#name" and "[title]"; each must stand where it says. */
function found(text: string): string[] {
  return [...marksIn(text)].map(({ kind, name, from, to }) => {
    assert.equal(text.slice(from, to), name);
    return kind === 'tag' ? `#${name}` : `[${name}]`;
  });
}

/** The same, as the grammar of editor and preview sees it. */
function parsed(text: string): string[] {
  const marks: string[] = [];
  previewGrammar.parse(text).iterate({
    enter: ({ name, from, to }) => {
      if (name === 'NoteTag') marks.push(text.slice(from, to));
      else if (name === 'NoteLink') marks.push(`[${partsOfLink(text.slice(from, to)).title}]`);
    },
  });
  return marks;
}

const samples: ReadonlyArray<readonly [text: string, marks: string]> = [
  ['#casa e #trabalho/projeto-1, #ação_2.', '#casa #trabalho/projeto-1 #ação_2'],
  ['# Título\n## Outro\n### #tag', '#tag'],
  ['#1 #123 #2024/05 #-_ #1a', '#1a'],
  ['a#b a/#c &#231; ##d \\#e (#f) [#g] "#h"', '#f #g #h'],
  ['#a#b #c//d #e/', '#a #c #e'],
  ['`#a` ``#b ` #c`` `#d\n#e` #f', '#f'],
  ['um `aberto #a', '#a'],
  ['```\n#a [[b]]\n```\n#c', '#c'],
  ['~~~js\n#a\n\n#b\n~~~\n#c', '#c'],
  ['texto\n\n    #a\n\n#b', '#b'],
  ['- item\n\n    #a', '#a'],
  ['> #a\n> [[b]]', '#a [b]'],
  ['[um](#a) [dois](https://b.c/#d "e #f") <https://g.h/#i> https://j.k/#l www.m.n/#o', ''],
  ['[r]: https://a.b/#c\n\n#d', '#d'],
  ['<b title="#a">#b</b>', '#b'],
  ['[[Um]] e [[Dois|o outro]], [[ Três ]]', '[Um] [Dois] [Três]'],
  ['`[[a]]` \\[[b]] [[c\nd]] [[]] [[ ]x', ''],
  ['**[[a]]** *#b* ~~#c~~', '[a] #b #c'],
  ['| a | b |\n|---|---|\n| #c | [[d]] |', '#c [d]'],
  ['日本 #日本語 #été', '#日本語 #été'],
];

for (const [text, marks] of samples) {
  test(`tags and links in ${JSON.stringify(text)}`, () => {
    assert.equal(found(text).join(' '), marks);
    assert.equal(parsed(text).join(' '), marks, 'in the grammar');
  });
}

test('a name of a tag has a letter and no empty level', () => {
  for (const name of ['a', 'a/b', '1a', 'ação', 'a-b_c']) assert.ok(isTagName(name), name);
  for (const name of ['', '1', '1/2', 'a/', '/a', 'a b', 'a#b', 'x'.repeat(101)]) assert.ok(!isTagName(name), name);
});

test('many opening marks take no long time', () => {
  const started = performance.now();
  for (const part of ['[[', '`` ` ', '#', '](', '<a ', '#a']) assert.ok([...marksIn(part.repeat(16_000))].length >= 0);
  assert.ok(performance.now() - started < 4000);
});

test('the preview has links to notes and tags', () => {
  const [block] = blocksOf('[[Um|dois]] #três', previewGrammar.parse('[[Um|dois]] #três')).map(({ make }) => make());
  const [link, , tag] = (block?.children ?? []) as PreviewNode[];
  assert.deepEqual(link, { tag: 'a', kind: 'note', target: 'Um', children: ['dois'] });
  assert.deepEqual(tag, { tag: 'a', kind: 'tag', target: 'três', children: ['#três'] });
});
