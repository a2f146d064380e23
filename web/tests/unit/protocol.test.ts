import assert from 'node:assert/strict';
import { existsSync, readFileSync } from 'node:fs';
import path from 'node:path';
import { test } from 'node:test';
import type { Context } from '../../src/commands/context';
import type { Command, CommandTable } from '../../src/commands/command';
import { hostLimits } from '../../src/commands/limits';
import type { HostAnswers } from '../../src/commands/port';
import { commands, menuOnlyKeys } from '../../src/commands/table';
import { readBootstrap, takeDocument } from '../../src/host/bootstrap';
import { pageGlobals } from '../../src/host/globals';
import { nativePort } from '../../src/host/nativePort';

/**
 * Compares the page with docs/page-protocol.md, whose tables the host's own tests check. If the page is built
 * alone, without the host's sources, there is nothing to compare.
 */
const file = path.resolve('../docs/page-protocol.md');
const skip = existsSync(file) ? false : 'the document is not here';
const table: CommandTable = commands;

/** The rows of one of the document's tables, keyed by column name, without backticks. */
function rows(name: string): Record<string, string>[] {
  const text = readFileSync(file, 'utf8');
  const found = text.match(new RegExp(`<!-- ${name} -->\n([^]*?)<!-- end of ${name} -->`))?.[1];
  assert.ok(found, `the document has no table "${name}"`);
  const [head = [], , ...body] = found
    .trim()
    .split('\n')
    .map((line) =>
      line
        .split('|')
        .slice(1, -1)
        .map((cell) => cell.trim().replace(/^`(.*)`$/, '$1')),
    );
  return body.map((cells) => Object.fromEntries(cells.map((cell, index) => [head[index] ?? '', cell])));
}

const nameOf = (call: string): string => /(?:window\.)?(\w+)(?:\?\.)?\(/.exec(call)?.[1] ?? call;

test('the page posts the messages of the protocol, with their fields', { skip }, () => {
  const posted = new Map<string, unknown>();
  const messageHandlers = Object.fromEntries(
    rows('messages').map(({ Message: name = '' }) => [
      name,
      { postMessage: (body: unknown) => void posted.set(name, body) },
    ]),
  );
  const port = nativePort({ webkit: { messageHandlers } }, '', () => assert.fail('nothing answers'));
  port.save('{}', 1);
  port.exportFile({ filename: 'a', content: 'b', format: 'markdown' });
  port.saveAs({ noteId: 'n', filename: 'a', content: 'b' });
  port.copy({ text: 't', successMessage: 's', requestId: 'r' });
  port.share({ attemptId: 'x', title: 't', filename: 'f', content: 'c', url: '' });
  port.rememberLanguage('en');
  assert.deepEqual([...posted.keys()].sort(), Object.keys(messageHandlers).sort());
  for (const [name, body] of posted) {
    const fields = rows('fields').filter(({ Message }) => Message === name);
    const known = fields.map(({ Field }) => Field);
    if (known.length === 0) {
      assert.equal(typeof body, 'string', name);
      continue;
    }
    for (const { Field = '', Type, Required } of fields) {
      const value = (body as Record<string, unknown>)[Field];
      if (Required === 'yes' || value !== undefined) assert.equal(typeof value, Type, `${name}.${Field}`);
    }
    for (const field of Object.keys(body as object)) assert.ok(known.includes(field), `${name}.${field}`);
  }
});

test("the page knows the protocol's limits", { skip }, () => {
  const limit = (message: string, field: string): number => {
    const row = rows('fields').find(({ Message, Field }) => Message === message && Field === field);
    return Number(row?.['At most, in bytes']?.replaceAll(',', ''));
  };
  assert.equal(hostLimits.copy.bytes, limit('quendoClipboard', 'text'));
  assert.equal(hostLimits.share.bytes, limit('quendoShare', 'content'));
  assert.equal(hostLimits.shareTitle.bytes, limit('quendoShare', 'title'));
  assert.equal(hostLimits.file.bytes, limit('quendoExport', 'content'));
  assert.equal(hostLimits.file.bytes, limit('quendoSaveAs', 'content'));
});

test('the page defines every function the host calls, and no others', { skip }, () => {
  const globals = pageGlobals({ workspace: {}, shell: {} } as Context, {} as HostAnswers, undefined);
  const called = new Set<string>();
  for (const { 'Called as': call = '' } of rows('functions')) called.add(nameOf(call));
  for (const { 'Function body': body = '' } of rows('async calls')) {
    called.add(/window\.(\w+)/.exec(body)?.[1] ?? body);
  }
  for (const { Script: script = '' } of rows('menu')) {
    const scripts = script.replaceAll(/document\.[^;]*/g, '').split(';');
    for (const one of scripts.filter((part) => part !== '')) called.add(/(?:window\.)?(\w+)/.exec(one)?.[1] ?? one);
  }
  assert.deepEqual(Object.keys(globals).sort(), [...called].sort());
});

test("the page starts from the protocol's globals", { skip }, () => {
  const read = new Set<string>();
  const globals = new Proxy({}, { get: (_, name) => void read.add(`window.${String(name)}`) });
  readBootstrap(globals);
  takeDocument(globals);
  assert.deepEqual(
    [...read].sort(),
    rows('globals')
      .map(({ Global = '' }) => Global)
      .sort(),
  );
});

test('each menu item has its command here, with its key', { skip }, () => {
  const keys = new Set<string>();
  for (const { Action: action = '', Key: shown = '', Script: script = '' } of rows('menu')) {
    const key = shown.replace('Command', 'Mod').replace('Option', 'Alt').replaceAll('+', '-');
    // These two have no keys on Linux.
    if (key && action !== 'hide' && action !== 'hideOtherApplications') keys.add(key);
    const command = Object.values(table).find((candidate) => candidate.menu === action);
    const isPages = script !== '' || action === 'copyForWhatsApp';
    assert.equal(command !== undefined, isPages, `${action} ${isPages ? 'has no' : 'has a'} command`);
    if (command) assert.equal(command.listens ? '' : (command.key ?? ''), key, action);
  }
  const own = (command: Command): boolean => command.key !== undefined && command.listens === undefined;
  for (const command of Object.values(table).filter(own)) assert.ok(keys.has(command.key ?? ''), command.label);
  for (const command of Object.values(table).filter(({ listens }) => listens)) {
    assert.ok(!keys.has(command.key ?? ''), `${command.label} listens to a key of the menu`);
  }
  for (const key of menuOnlyKeys) assert.ok(keys.has(key), key);
});

test('each menu script runs its own command', { skip }, () => {
  const ran: Command[] = [];
  const context = { workspace: {}, shell: { closing: { begun: false } } } as Context;
  const record = Object.fromEntries(
    Object.entries(table).map(([name, command]) => [name, { ...command, run: () => void ran.push(command) }]),
  );
  const globals = pageGlobals(context, {} as HostAnswers, undefined, record) as Record<string, unknown>;
  for (const { Action: action = '', Script: script = '' } of rows('menu')) {
    const command = Object.values(table).find((candidate) => candidate.menu === action);
    if (!command?.call) continue;
    ran.length = 0;
    const run = new Function('window', ...Object.keys(globals), `return ${script}`);
    assert.equal(run(globals, ...Object.values(globals)), undefined, action);
    assert.deepEqual(ran, [command], action);
  }
});
