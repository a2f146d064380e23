import assert from 'node:assert/strict';
import { test } from 'node:test';
import { headingsOf } from '../../src/text/headings';

const outline = (text: string): string =>
  headingsOf(text.split('\n'))
    .map(({ level, title, from }) => `${level} ${title} @${from}`)
    .join(', ');

test('headings of both kinds have their levels and places', () => {
  assert.equal(outline('# Um\n\ntexto\n### *Três* ###'), '1 Um @0, 3 Três @12');
  assert.equal(outline('Um\n===\nDois\n---\n'), '1 Um @0, 2 Dois @7');
});

test('what only looks like one is none', () => {
  assert.equal(outline('#tag\n####### sete\n#\n```\n# código\n```\n    # recuado'), '');
  assert.equal(outline('- item\n---\n> dito\n---\n\n---\n| a |\n---'), '');
});
