import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import type { Context } from '../../src/commands/context';
import { openNativeFiles } from '../../src/commands/notes';
import { emptyContents } from '../../src/state/model';
import { readContents } from '../../src/state/read';
import { Workspace } from '../../src/state/workspace';
import { serialize } from '../../src/state/write';

const file = { name: 'notas.txt', content: 'a\nb', format: 'plain', byteCount: 3 };

function page(stored?: string) {
  const contents = stored === undefined ? emptyContents : readContents(JSON.parse(stored), 1000).contents;
  const workspace = new Workspace(contents, false, () => 1000);
  let sent = '';
  const host = { refuses: false };
  const context = {
    workspace,
    shell: { closing: { begun: false }, preview: { mode: null }, toasts: { show: () => undefined } },
    editor: { focus: () => undefined },
    saver: {
      handOver: () => {
        if (host.refuses) return false;
        sent = serialize(workspace.contents, 1);
        return true;
      },
    },
  } as unknown as Context;
  return { workspace, open: (...files: unknown[]) => openNativeFiles(context, files), sent: () => sent, host };
}

const turn = () => new Promise((resolve) => setTimeout(resolve));

test('every file handed over gets its own tab, even if contents are equal', async () => {
  const { workspace, open } = page();
  assert.equal(open(file, file), 2);
  await turn();
  assert.equal(open(file), 1);
  assert.equal(workspace.noteCount, 3);
  assert.equal(workspace.tabs.open.length, 3);
});

test('files handed over again by a host that got no answer map to their notes, one each', () => {
  const before = page();
  before.open(file, { ...file, name: 'outra.txt' }, file);
  const { workspace, open } = page(before.sent());
  const ids = workspace.tabs.open;
  assert.equal(open(file, { ...file, name: 'outra.txt' }, file, file), 4);
  assert.equal(workspace.noteCount, 4);
  assert.ok(ids.every((id) => workspace.tabs.open.includes(id)));
});

test('only an identical file is mapped to an existing note', () => {
  const differences = [{ name: 'outra.txt' }, { content: 'a\nc' }, { content: 'a\r\nb' }];
  for (const difference of differences) {
    const before = page();
    before.open(file);
    const { workspace, open } = page(before.sent());
    open({ ...file, ...difference });
    assert.equal(workspace.noteCount, 2, JSON.stringify(difference));
  }
});

test('a note edited since is left alone', () => {
  const before = page();
  before.open(file);
  const { workspace, open } = page(before.sent());
  const [id = ''] = workspace.tabs.open;
  workspace.setText(id, Text.of(['mine']));
  open(file);
  assert.equal(workspace.noteCount, 2);
  assert.equal(workspace.note(id)?.text.toString(), 'mine');
});

test('once the host has its answer, the saved document no longer mentions the files', async () => {
  const { workspace, open, sent } = page();
  open(file);
  assert.match(sent(), /"handedOver":\["/);
  await turn();
  assert.doesNotMatch(serialize(workspace.contents, 2), /handedOver/);
});

test('files that could not be posted are refused, and map to their notes later', async () => {
  const { workspace, open, host } = page();
  host.refuses = true;
  assert.throws(() => open(file), /could not be handed over/);
  await turn();
  host.refuses = false;
  assert.equal(open(file), 1);
  assert.equal(workspace.noteCount, 1);
});
