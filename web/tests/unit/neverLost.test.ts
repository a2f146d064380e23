import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { careForVersions } from '../../src/app/versionCare';
import type { Context } from '../../src/commands/context';
import { beginParts } from '../../src/commands/documentParts';
import { prepareForTermination, terminationDidCancel } from '../../src/commands/termination';
import { NoteText } from '../../src/state/noteText';
import { QuietTime } from '../../src/state/quiet';
import { readContents } from '../../src/state/read';
import { bytesOf, versionText } from '../../src/state/versions';
import { Workspace } from '../../src/state/workspace';
import { chapterOf } from '../../src/text/book';

const NOW = 1_700_000_000_000;

function open(...notes: ReadonlyArray<Record<string, unknown>>): Workspace {
  const read = readContents({ version: 2, notes: notes.map((note, at) => ({ id: `n${at}`, text: '', ...note })) }, NOW);
  return new Workspace(read.contents, false, () => NOW);
}

test('an empty note with versions stays when its tab is closed', () => {
  const workspace = open({ created: 5, updated: 5, versions: [{ taken: 5, text: 'guardado' }] });
  workspace.openTab('n0');
  workspace.closeTabs(['n0']);
  const note = workspace.note('n0');
  assert.equal(note && versionText(note, 0).toString(), 'guardado');
});

test('a note from the last of all days can be changed and read again', () => {
  const workspace = open({ text: 'um', created: 8.64e15 - 1e6 });
  workspace.setText('n0', Text.of(['dois']));
  assert.doesNotThrow(() => new Date(workspace.note('n0')?.updated ?? 0).toISOString());
  assert.equal(open({ created: 8.64e15 }).note('n0')?.created, NOW, 'a later one is no date');
});

test('of very many times a note went out, the latest are read', () => {
  const shared = Array.from({ length: 300_000 }, (_, i) => i);
  assert.deepEqual(open({ shared }).note('n0')?.shared, shared.slice(-50));
});

test('a difference with parts of nothing is set aside', () => {
  for (const change of [
    [0, 5],
    [5, [0]],
    [[0, ''], 5],
  ]) {
    const workspace = open({
      text: 'texto',
      versions: [
        { taken: 5, change },
        { taken: 4, text: 'inteira' },
      ],
    });
    assert.equal(workspace.note('n0')?.versions.length, 1, JSON.stringify(change));
  }
});

test('what a version takes is what is written for it', () => {
  assert.equal(bytesOf(NoteText.of('\u0001é"')), '"\\u0001é\\""'.length + 1);
});

test('versions are not tidied twice at a time, which would drop twice as many', () => {
  const timers: Array<() => void> = [];
  const clock = {
    now: () => 0,
    setTimer: (run: () => void) => timers.push(run),
    clearTimer: (timer: unknown) => {
      timers[Number(timer) - 1] = () => undefined;
    },
  };
  const workspace = open({ text: 'x'.repeat(2_000_000) }, { text: 'y'.repeat(2_000_000) });
  let begun = 0;
  const quiet = Object.assign(new QuietTime(clock), { spread: () => ++begun });
  careForVersions(workspace, quiet as unknown as QuietTime, clock);
  workspace.setText('n0', Text.of(['a']));
  while (timers.length) timers.shift()?.();
  assert.equal(begun, 1);
  workspace.setText('n1', Text.of(['b']));
  while (timers.length) timers.shift()?.();
  assert.equal(begun, 1, 'the second waits for the first');
});

test('a document long by its versions goes out in parts', () => {
  const versions = [{ taken: 5, text: 'x'.repeat(3_000_000) }];
  const parts = { post: () => undefined, save: () => true };
  const context = (workspace: Workspace) =>
    ({ workspace, port: { parts }, nextRevision: () => 1 }) as unknown as Context;
  assert.equal(beginParts(context(open({ text: 'a' }))), null);
  assert.ok(beginParts(context(open({ text: 'a', versions }))));
});

test('the last state goes out even if the links to a title cannot be mended', () => {
  const reported: unknown[] = [];
  Object.assign(globalThis, { reportError: (error: unknown) => reported.push(error) });
  const workspace = open({ text: 'última palavra' });
  const titles = {
    settle: () => {
      throw new RangeError('x');
    },
  };
  const shell = { closing: { begin: () => undefined, end: () => undefined } };
  const saver = { changed: () => undefined, flush: () => undefined };
  const context = { workspace, titles, shell, saver, nextRevision: () => 1 } as unknown as Context;
  assert.match(prepareForTermination(context, null).serialized, /última palavra/);
  assert.equal(reported.length, 1);
  terminationDidCancel(context);
});

test('a text of very many backticks fits into the book', () => {
  const text = '` '.repeat(300_000);
  assert.ok(chapterOf({ title: 'a', isNamed: false, format: 'plain', text }).includes(text));
});
