import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Context } from '../../src/commands/context';
import type { HostAnswers } from '../../src/commands/port';
import { commands } from '../../src/commands/table';
import { pageGlobals } from '../../src/host/globals';
import { currentLanguage, setLanguage } from '../../src/i18n/language';

/** A context during a quit. Touching anything in it but `shell.closing` fails the test. */
function closingPage() {
  const waiting: Array<() => void> = [];
  const untouchable = new Proxy(
    {},
    {
      get: (_, name) => assert.fail(`${String(name)} was touched`),
      set: (_, name) => assert.fail(`${String(name)} was changed`),
    },
  );
  const shell = new Proxy(
    { closing: { begun: true, after: (run: () => void) => waiting.push(run) } },
    {
      get: (target, name) => (name === 'closing' ? target.closing : assert.fail(`${String(name)} was touched`)),
    },
  );
  const members = Object.fromEntries(
    ['workspace', 'editor', 'saver', 'port', 'copies', 'share', 'practice'].map((name) => [name, untouchable]),
  );
  const context = { ...members, shell } as unknown as Context;
  return { globals: pageGlobals(context, {} as HostAnswers, undefined), waiting };
}

test('no command called by the host runs while the window is closing', async () => {
  const { globals } = closingPage();
  const functions = globals as unknown as Record<string, (argument?: unknown) => unknown>;
  const calls = Object.values(commands).flatMap((command) => ('call' in command ? [command.call] : []));
  assert.ok(calls.length > 10);
  for (const [name, argument] of calls) assert.equal(functions[name]?.(argument), undefined, name);
  globals.setDrawer('sidebar');
  globals.state.sidebarMode = 'pinned';
  assert.equal(await globals.quendoCopyCurrentNoteForWhatsApp(), false);
});

test('files stay with the host while the window is closing', () => {
  const { globals } = closingPage();
  assert.throws(() => globals.quendoOpenNativeFiles([{ name: 'a.md', content: 'a' }]), /closing/);
});

test('a language set by the host during a quit applies once the quit is cancelled', () => {
  const { globals, waiting } = closingPage();
  const before = currentLanguage();
  globals.quendoSetLanguage('es');
  assert.equal(currentLanguage(), before);
  for (const run of waiting) run();
  assert.equal(currentLanguage(), 'es');
  setLanguage(before);
});
