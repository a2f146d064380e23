import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import path from 'node:path';
import { test } from 'node:test';
import { migrations } from '../../src/state/migrations';
import { DOCUMENT_VERSION } from '../../src/state/model';
import { readContents } from '../../src/state/read';
import { defaultSettings } from '../../src/state/settings';
import { serialize } from '../../src/state/write';

const DOCUMENT = readFileSync(path.resolve('STATE.md'), 'utf8');

/** The rows of the first table after some words, without its head, each without marks. */
function tableAfter(words: string): string[][] {
  const at = DOCUMENT.indexOf(words);
  assert.ok(at >= 0, words);
  const lines = DOCUMENT.slice(at + words.length).split('\n');
  const first = lines.findIndex((line) => line.startsWith('|'));
  const rest = lines.slice(first + 2);
  const rows = rest.slice(
    0,
    rest.findIndex((line) => !line.startsWith('|')),
  );
  return rows.map((row) =>
    row
      .split('|')
      .slice(1, -1)
      .map((cell) => cell.trim()),
  );
}

const members = (words: string): string[] =>
  tableAfter(words).flatMap(([first]) => [...(first ?? '').matchAll(/`(\w+)`/g)].map(([, name]) => name ?? ''));

const NOTE = {
  id: 'a',
  text: 'text',
  format: 'markdown',
  name: 'Name',
  source: 'name.md',
  fileName: 'name.md',
  lineBreak: '\n',
  pinned: true,
  created: 1,
  updated: 2,
  versions: [{ taken: 1, text: 'before' }],
  shared: [1],
  damagedVersions: [{ taken: 1 }],
};
const WHOLE = {
  version: DOCUMENT_VERSION,
  revision: 1,
  notes: [NOTE],
  bin: [{ ...NOTE, id: 'b', deleted: 3 }],
  tabs: { open: ['a'], active: 'a', closed: [{ id: 'a', index: 0 }] },
  places: { a: { anchor: 0, head: 0, top: 0 } },
  settings: {},
  captureDraft: 'draft',
  handedOver: ['a'],
  setAside: [{ member: 'odd', held: 1 }],
};
const written = JSON.parse(serialize(readContents(WHOLE, 5).contents, 2)) as typeof WHOLE;

test("the document's table has the members that are written", () => {
  assert.deepEqual(members('## Members\n').sort(), Object.keys(written).sort());
});

test("a note's table has the members that are written", () => {
  assert.deepEqual(members('**A note**\n').sort(), Object.keys(written.bin[0] ?? {}).sort());
});

test("the settings' table has the settings that there are", () => {
  const names = Object.keys(defaultSettings).filter((name) => name !== 'extra');
  assert.deepEqual(members('**Settings**\n').sort(), names.sort());
});

test('the version of the document and its migrations are those of the page', () => {
  assert.match(DOCUMENT, new RegExp(`\\| \`version\` \\| number, now ${DOCUMENT_VERSION} \\|`));
  const versions = tableAfter('needs no new version: they preserve it.').map(([first]) => Number(first));
  assert.deepEqual(
    versions,
    migrations.map((_, at) => at + 1),
  );
});
