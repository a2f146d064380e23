import assert from 'node:assert/strict';
import { existsSync, readFileSync } from 'node:fs';
import path from 'node:path';
import { test } from 'node:test';
import type { Command, CommandTable } from '../../src/commands/command';
import type { Context } from '../../src/commands/context';

// The modules look at the platform when they are loaded.
Object.defineProperty(globalThis, 'navigator', {
  value: { platform: 'MacIntel', userAgent: '', vendor: '', languages: [] },
});
const { keyOf, shownKey } = await import('../../src/commands/command');
const { guideSections } = await import('../../src/commands/guide');
const { paletteEntries } = await import('../../src/commands/palette');
const { commands, menuOnlyKeys, noteCommands } = await import('../../src/commands/table');
const { catalogue } = await import('../../src/i18n/catalogue');
const { languages, setLanguage, t } = await import('../../src/i18n/language');
const { hasMod, isComposing, isDelete, keyLabel, matchesKey } = await import('../../src/keyboard/keys');

const table: CommandTable = commands;
const host = {
  port: { native: true },
  workspace: { activeNote: { pinned: false } },
  share: { busy: false },
} as unknown as Context;

const press = (key: string, code: string, held: Partial<KeyboardEvent> = {}) =>
  ({ key, code, ctrlKey: false, metaKey: false, altKey: false, shiftKey: false, ...held }) as KeyboardEvent;

test("keys are shown as in a Mac's menus", () => {
  assert.equal(keyLabel('Mod-k'), '⌘K');
  assert.equal(keyLabel('Mod-Shift-z'), '⇧⌘Z');
  assert.equal(keyLabel('Mod-Alt-Shift-w'), '⌥⇧⌘W');
  assert.equal(keyLabel('Mod-enter'), '⌘↩');
  assert.equal(keyLabel('Shift-tab'), '⇧⇥');
  assert.equal(keyLabel('escape'), '⎋');
  assert.equal(keyLabel('Alt-up'), '⌥↑');
  assert.equal(keyLabel('Mod-plus'), '⌘+');
});

test('Command gives commands, Control edits text', () => {
  assert.ok(matchesKey(press('p', 'KeyP', { metaKey: true, shiftKey: true }), 'Mod-Shift-p'));
  assert.ok(!matchesKey(press('p', 'KeyP', { ctrlKey: true, shiftKey: true }), 'Mod-Shift-p'));
  assert.ok(!matchesKey(press('p', 'KeyP', { ctrlKey: true, metaKey: true, shiftKey: true }), 'Mod-Shift-p'));
  assert.ok(matchesKey(press('ƒ', 'KeyF', { metaKey: true, altKey: true }), 'Mod-Alt-f'), 'Option changes the letter');
  assert.ok(hasMod(press('Enter', 'Enter', { metaKey: true })) && !hasMod(press('Enter', 'Enter', { ctrlKey: true })));
});

test("the keys of a Mac's keyboard and input methods are known", () => {
  assert.ok(isDelete(press('Backspace', 'Backspace')) && isDelete(press('Delete', 'Delete')));
  assert.ok(isComposing(press('Enter', 'Enter', { isComposing: false, keyCode: 229 })));
  assert.ok(!isComposing(press('Enter', 'Enter', { isComposing: false, keyCode: 13 })));
});

test('in a browser, no command takes a key that types a letter', () => {
  for (const command of Object.values(table)) assert.doesNotMatch(keyOf(command, false) ?? '', /^(?:Alt|Shift)-/);
});

const protocol = path.resolve('../docs/page-protocol.md');
const skip = existsSync(protocol) ? false : 'the document is not here';

test("guide and palette show the keys of the host's menu", { skip }, () => {
  const text = readFileSync(protocol, 'utf8').match(/<!-- menu -->\n([\s\S]*?)<!-- end of menu -->/)?.[1] ?? '';
  const rows = guideSections(host, table, noteCommands).flatMap((section) => section.rows);
  const entries = paletteEntries(host, table, '');
  const signs: ReadonlyArray<readonly [string, string]> = [
    ['Option', '⌥'],
    ['Shift', '⇧'],
    ['Command', '⌘'],
  ];
  let compared = 0;
  for (const [name, command] of Object.entries<Command>(table)) {
    if (!command.menu || !command.key || command.listens) continue;
    const line = text.split('\n').find((one) => one.includes(`| \`${command.menu}\` |`)) ?? '';
    const key = /Command[^ `|]*/.exec(line)?.[0] ?? '';
    const held = signs.filter(([modifier]) => key.includes(modifier)).map(([, sign]) => sign);
    const shown = held.join('') + (key.split('+').pop() ?? '').toUpperCase();
    assert.equal(shownKey(command, host), shown, name);
    assert.deepEqual(
      rows.find(({ label }) => label === command.label),
      { label: command.label, keys: shown },
    );
    assert.equal(entries.find((entry) => entry.name === name)?.keys, shown);
    compared++;
  }
  assert.ok(compared > 10);
});

test('Command+H hides the program, and text is replaced with the key of a Mac', () => {
  assert.equal(shownKey(commands.replace, host), '⌥⌘F');
  for (const key of ['Mod-h', 'Mod-Alt-h']) {
    assert.ok(menuOnlyKeys.includes(key));
    assert.ok(Object.values(table).every((command) => command.key !== key));
  }
});

test('no text names a key as other keyboards do', () => {
  // Delete is also what notes are; its Spanish name stands for all three.
  const foreign = /\b(?:Ctrl|Control|Alt|Shift|Enter|Intro|Esc|Tab|Supr)\b/;
  for (const language of languages) {
    setLanguage(language);
    for (const key of Object.keys(catalogue).filter((name) => !name.startsWith('key.'))) {
      assert.doesNotMatch(t(key as keyof typeof catalogue), foreign, key);
    }
    for (const row of guideSections(host, table, noteCommands).flatMap((section) => section.rows)) {
      if ('keys' in row) assert.doesNotMatch(row.keys, /Ctrl|Alt|Shift|Enter|Tab|Esc|\w\+|\+\w/, row.label);
    }
  }
  setLanguage('pt');
  assert.equal(t('overview.hint'), 'Setas para escolher, ↩ para abrir, ⌫ para fechar a aba');
});
