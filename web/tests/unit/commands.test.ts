import assert from 'node:assert/strict';
import { test } from 'node:test';
import {
  type Command,
  type CommandTable,
  keyOf,
  menuFunctions,
  pressedCommand,
  shownKey,
} from '../../src/commands/command';
import type { Context } from '../../src/commands/context';
import { guideSections } from '../../src/commands/guide';
import { paletteEntries } from '../../src/commands/palette';
import { commands, noteCommands, noteMenu } from '../../src/commands/table';
import { t } from '../../src/i18n/language';
import { keyLabel, matchesKey } from '../../src/keyboard/keys';
import { fuzzyMatch } from '../../src/text/fuzzy';

const table: CommandTable = commands;
const context = (
  native: boolean,
  active: object | null = { pinned: false, format: 'markdown', fileName: null, name: 'a.md' },
) =>
  ({
    port: { native },
    workspace: { activeNote: active },
    share: { busy: false },
  }) as unknown as Context;

test('host calls with unknown arguments do nothing', () => {
  const ran: Command[] = [];
  const functions = menuFunctions(table, (command) => ran.push(command));
  functions.quendoRequestCloseTabs?.('some');
  functions.quendoSwitchOpenTab?.(7);
  assert.deepEqual(ran, []);
});

test('Control+H replaces text, and no menu of a host takes it away', () => {
  assert.equal(shownKey(commands.replace, context(true)), 'Ctrl+H');
  assert.equal(
    pressedCommand(table, true, (wanted) => wanted === 'Mod-h'),
    commands.replace,
  );
});

test('no two commands share a key, in the host or in a browser', () => {
  for (const native of [true, false]) {
    const keys = Object.values(table).flatMap((command) => keyOf(command, native) ?? []);
    assert.equal(new Set(keys).size, keys.length);
    for (const key of keys) {
      const found = pressedCommand(table, native, (wanted) => wanted === key);
      const owner = Object.values(table).find((command) => keyOf(command, native) === key);
      assert.equal(found, native && !owner?.listens ? undefined : owner, key);
    }
  }
});

test('the guide lists every command once, under its name in the table', () => {
  for (const native of [true, false]) {
    const rows = guideSections(context(native), table, noteCommands).flatMap((section) => section.rows);
    for (const command of Object.values(table)) {
      const [row, ...more] = rows.filter(({ label }) => label === command.label);
      assert.deepEqual(more, [], command.label);
      const keys = shownKey(command, context(native));
      if (keys) assert.deepEqual(row, { label: command.label, keys });
      else assert.ok(row && 'elsewhere' in row, command.label);
    }
  }
});

test('the palette lists every available command, the menu those of the note', () => {
  const here = context(true);
  const entries = paletteEntries(here, table, '');
  assert.deepEqual(
    entries.map(({ name }) => name),
    Object.keys(table).filter((name) => name !== 'palette'),
  );
  for (const { name, label, keys } of entries) {
    const command = table[name];
    assert.ok(command);
    assert.equal(label, t(command.label));
    assert.equal(keys, shownKey(command, here));
  }
  const items = noteMenu(here).flat();
  assert.deepEqual(
    items.map(({ name }) => name),
    noteCommands.flat(),
  );
  for (const { name, label, keys } of items) {
    assert.equal(label, table[name]?.label);
    assert.equal(keys, entries.find((entry) => entry.name === name)?.keys);
  }
});

test('unavailable commands are missing from the palette and disabled in the menu', () => {
  const none = paletteEntries(context(true, null), table, '').map(({ name }) => name);
  assert.ok(!none.includes('saveAs') && !none.includes('pin') && none.includes('newNote'));
  assert.ok(
    noteMenu(context(true, null))
      .flat()
      .find(({ name }) => name === 'pin')?.disabled,
  );
  const pinned = paletteEntries(context(true, { pinned: true }), table, '');
  assert.equal(pinned.find(({ name }) => name === 'pin')?.label, t('cmd.unpin'));
});

test('commands are found by fragments of their names', () => {
  const first = (query: string) => paletteEntries(context(true), table, query)[0]?.name;
  assert.equal(first('salvar como'), 'saveAs');
  assert.equal(first('lixeira'), 'bin');
  assert.equal(first('aum'), 'zoomIn');
  assert.equal(first('prox'), 'nextTab', 'without the accent');
  assert.equal(first('fo a'), 'closeOthers');
  assert.deepEqual(paletteEntries(context(true), table, 'xyzzy'), []);
});

test('a fuzzy match reports its position and prefers word starts and runs', () => {
  assert.deepEqual(fuzzyMatch('sc', 'Salvar como')?.at, [0, 7]);
  assert.deepEqual(fuzzyMatch('ão', '🎉 Ação')?.at, [5, 6]);
  assert.equal(fuzzyMatch('oc', 'com'), null);
  assert.deepEqual(fuzzyMatch('', 'x')?.at, []);
  const [run, scattered] = [fuzzyMatch('aba', 'Fechar aba'), fuzzyMatch('aba', 'a lista baixa')];
  assert.ok(run && scattered && run.score > scattered.score);
  assert.ok(fuzzyMatch('a'.repeat(40), 'a'.repeat(60)), 'quick with many ways to match');
});

test('text size keys work on any keyboard', () => {
  const press = (key: string, code: string, shiftKey = false) =>
    ({ key, code, shiftKey, ctrlKey: true, metaKey: false, altKey: false }) as KeyboardEvent;
  for (const event of [press('+', 'Equal', true), press('=', 'Equal'), press('+', 'NumpadAdd')]) {
    assert.ok(matchesKey(event, 'Mod-plus'), event.code);
  }
  assert.ok(matchesKey(press('-', 'Slash'), 'Mod-minus'));
  assert.ok(matchesKey(press('à', 'Digit0'), 'Mod-0'));
  assert.ok(!matchesKey(press('p', 'KeyP'), 'Mod-Shift-p'));
  assert.ok(matchesKey(press('P', 'KeyP', true), 'Mod-Shift-p'));
  assert.equal(keyLabel('Mod-plus'), 'Ctrl++');
  assert.equal(keyLabel('Mod-Alt-Shift-w'), 'Shift+Ctrl+Alt+W', "as in GTK's menus");
});
