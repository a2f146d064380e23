import assert from 'node:assert/strict';
import { afterEach, test } from 'node:test';
import { aliases } from '../../src/commands/aliases';
import type { CommandTable } from '../../src/commands/command';
import type { Context } from '../../src/commands/context';
import { paletteEntries } from '../../src/commands/palette';
import { commands } from '../../src/commands/table';
import { setLanguage } from '../../src/i18n/language';
import { wordMatch } from '../../src/text/fuzzy';

afterEach(() => setLanguage('pt'));

const table: CommandTable = commands;
const note = { pinned: false, format: 'markdown', fileName: null, name: null };
const context = (active: object = note, readOnly = false) =>
  ({
    port: { native: true },
    workspace: { activeNote: active, readOnly },
    share: { busy: false },
  }) as unknown as Context;
const entries = (query: string, here = context()) => paletteEntries(here, table, query);

test('commands are found by the words that people use, in every language', () => {
  const wanted: Readonly<Record<string, string>> = {
    'dark mode': 'themeDark',
    night: 'themeDark',
    'modo escuro': 'themeDark',
    noche: 'themeDark',
    preferences: 'settings',
    settings: 'settings',
    language: 'settings',
    idioma: 'settings',
    history: 'versions',
    historial: 'versions',
    backup: 'exportLibrary',
    respaldo: 'exportLibrary',
    exportar: 'exportMarkdown',
    outline: 'outline',
    índice: 'outline',
    toc: 'outline',
    tags: 'renameTag',
    etiquetas: 'renameTag',
    bold: 'bold',
    backlinks: 'backlinks',
    alphabetical: 'sortTitle',
    trash: 'bin',
    excluidas: 'bin',
    papelera: 'bin',
    strong: 'bold',
    font: 'zoomIn',
    fonte: 'zoomIn',
    ajuda: 'guide',
    favorite: 'pin',
    'to-do': 'task',
    viñetas: 'list',
    zen: 'focusMode',
  };
  for (const [query, name] of Object.entries(wanted)) {
    setLanguage(query === 'papelera' ? 'es' : 'pt');
    const found = entries(query);
    assert.ok(
      found.slice(0, 2).some((entry) => entry.name === name),
      `${query}: ${found[0]?.name}`,
    );
  }
});

test('the word that matched is shown, but not where the name matches better', () => {
  setLanguage('en');
  const [night] = entries('night');
  assert.deepEqual(night?.alias, { text: 'night', marked: [0, 1, 2, 3, 4] });
  assert.deepEqual(night?.marked, []);
  assert.equal(entries('bold')[0]?.alias, undefined);
  assert.equal(entries('')[0]?.alias, undefined);
});

test('another word matches from the start of one of its words only', () => {
  assert.deepEqual(wordMatch('mo', 'dark mode')?.at, [5, 6]);
  assert.deepEqual(wordMatch('ENFA', 'ênfase')?.at, [0, 1, 2, 3]);
  assert.equal(wordMatch('ode', 'dark mode'), null);
  assert.equal(wordMatch('dm', 'dark mode'), null);
});

test('every other word belongs to a command', () => {
  for (const name of Object.keys(aliases)) assert.ok(table[name], name);
});

test('Markdown is offered only in a note that is written in it', () => {
  const names = (here: Context) => entries('', here).map(({ name }) => name);
  assert.ok(names(context()).includes('bold'));
  assert.ok(!names(context({ ...note, format: 'plain' })).includes('bold'));
  assert.ok(!names(context({ ...note, fileName: 'a.py' })).includes('heading1'));
  assert.ok(!names(context(note, true)).includes('list'));
});

test('the name counts more than another word, and the own language more than the others', () => {
  setLanguage('en');
  const names = entries('co').map(({ name }) => name);
  assert.ok(names.indexOf('copyPlain') < names.indexOf('focusMode'), 'a name before “concentrate”');
  assert.ok(names.indexOf('focusMode') < names.indexOf('share'), 'a word of this language before “correo”');
  assert.equal(entries('settings')[0]?.name, 'settings');
  setLanguage('es');
  assert.deepEqual(entries('settings')[0]?.alias?.text, 'Settings');
});
