import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Context } from '../../src/commands/context';
import { rewriteNotes } from '../../src/commands/rewrite';
import { TitleWatch } from '../../src/commands/titles';
import { NoteIndex } from '../../src/state/noteIndex';
import type { Note } from '../../src/state/model';
import { type Edit, edited, inverse, linkEdits, tagEdits } from '../../src/text/renames';
import { Text } from '@codemirror/state';
import { workspaceWith } from './workspaces';

const retagged = (text: string, from: string, to: string) => edited(text, tagEdits(text, from, to));

test('a tag is renamed with those below it, and nothing else', () => {
  assert.equal(retagged('#a #A/b #ab x#a `#a`', 'a', 'z/y'), '#z/y #z/y/b #ab x#a `#a`');
  assert.equal(retagged('#a/b #a', 'a/b', 'c'), '#c #a');
});

test('links get the new title and keep what they show', () => {
  const text = '[[Um]] [[ um |aqui]] [[Uma]] `[[Um]]`';
  assert.equal(edited(text, linkEdits(text, ['um'], 'Dois')), '[[Dois]] [[ Dois |aqui]] [[Uma]] `[[Um]]`');
});

test('edits can be taken back', () => {
  const text = '#a e #a/b\n#A';
  const edits = tagEdits(text, 'a', 'longa');
  const after = edited(text, edits);
  assert.equal(edited(after, inverse(text, edits)), text);
});

/** Notes with links, and a context without an editor's window. */
function linked(...texts: string[]) {
  const { workspace, ids } = workspaceWith(...texts);
  const toasts: Array<{ run: () => void }> = [];
  const index = new NoteIndex(workspace, () => true);
  const context = {
    workspace,
    index,
    editor: { rewrite: (note: Note, edits: Edit[]) => edited(note.text.toString(), edits) },
    shell: { toasts: { show: (_: string, action: { run: () => void }) => toasts.push(action) } },
  } as unknown as Context;
  const read = () => {
    index.changed();
    for (const _ of index.read());
  };
  const reading = { isOn: true };
  workspace.onChange(() => reading.isOn && read());
  read();
  const textsNow = () => ids.map((id) => workspace.note(id)?.text.toString());
  const write = (at: number, text: string) => workspace.setText(ids[at] ?? '', Text.of(text.split('\n')));
  return { workspace, ids, context, toasts, texts: textsNow, write, reading };
}

test('several notes are rewritten as one step, which one button takes back', () => {
  const { workspace, context, texts } = linked('#a um', 'dois', '#a/b três');
  const before = workspace.notesInOrder().map(({ id }) => id);
  const { count, undo } = rewriteNotes(context, context.index.tagged('a'), {
    edits: (text) => tagEdits(text, 'a', 'z'),
    back: (text) => tagEdits(text, 'z', 'a'),
  });
  assert.equal(count, 2);
  assert.deepEqual(texts(), ['#z um', 'dois', '#z/b três']);
  assert.deepEqual(
    workspace.notesInOrder().map(({ id }) => id),
    before,
    'nobody wrote in them',
  );
  undo();
  assert.deepEqual(texts(), ['#a um', 'dois', '#a/b três']);
});

test('a title that nothing links to changes nothing else, so nothing is saved for it', () => {
  const { workspace, ids, context, write } = linked('Plano', 'a');
  const watch = new TitleWatch(context);
  workspace.openTab(ids[0] ?? '');
  watch.shown();
  write(0, 'Projeto');
  workspace.onChange((change) => assert.fail(change));
  watch.settle();
});

test('what was written since stays when the step is taken back', () => {
  const { context, texts, write } = linked('#a um', '#a #z dois');
  const { undo } = rewriteNotes(context, context.index.tagged('a'), {
    edits: (text) => tagEdits(text, 'a', 'z'),
    back: (text) => tagEdits(text, 'z', 'a'),
  });
  write(0, 'novo #z um');
  write(1, '#z #z dois, novo');
  undo();
  assert.deepEqual(texts(), ['novo #a um', '#z #z dois, novo'], 'a text that had both tags is left alone');
});

test('links follow the title of the shown note, and one button takes that back', () => {
  const { workspace, ids, context, toasts, texts, write } = linked('Plano', 'a [[plano|x]] [[Outro]]', 'b [[Plano]]');
  const watch = new TitleWatch(context);
  workspace.openTab(ids[0] ?? '');
  watch.shown();
  write(0, '');
  watch.settle();
  write(0, '# Projeto [1]');
  watch.settle();
  assert.deepEqual(texts(), ['# Projeto [1]', 'a [[Projeto 1|x]] [[Outro]]', 'b [[Projeto 1]]']);
  toasts[0]?.run();
  assert.deepEqual(texts().slice(1), ['a [[plano|x]] [[Outro]]', 'b [[Plano]]']);
});

test('a link written a moment ago follows, too', () => {
  const { workspace, ids, context, texts, write, reading } = linked('Plano', 'a');
  const watch = new TitleWatch(context);
  workspace.openTab(ids[0] ?? '');
  watch.shown();
  reading.isOn = false;
  write(1, 'a [[Plano]]');
  write(0, 'Projeto');
  watch.settle();
  assert.equal(texts()[1], 'a [[Projeto]]');
});

test('a title on the way to another takes no links of a note that is called so', () => {
  const { workspace, ids, context, texts, write } = linked('', 'Plano', 'a [[Plano]]');
  const watch = new TitleWatch(context);
  workspace.openTab(ids[0] ?? '');
  watch.shown();
  for (const title of ['Plano', 'Plano B']) {
    write(0, title);
    watch.settle();
  }
  assert.deepEqual(texts(), ['Plano B', 'Plano', 'a [[Plano]]']);
});

test('leaving the note settles its title', () => {
  const { workspace, ids, context, texts, write } = linked('Plano', 'a [[Plano]]');
  const watch = new TitleWatch(context);
  workspace.openTab(ids[0] ?? '');
  watch.shown();
  write(0, 'Projeto');
  workspace.openTab(ids[1] ?? '');
  watch.shown();
  assert.equal(texts()[1], 'a [[Projeto]]');
});

test('links that meant another note with the same title stay', () => {
  const { workspace, ids, context, toasts, texts, write } = linked('Plano', 'Plano\nmais novo', 'a [[Plano]]');
  const watch = new TitleWatch(context);
  workspace.openTab(ids[0] ?? '');
  watch.shown();
  write(0, 'Projeto');
  watch.settle();
  assert.equal(texts()[2], 'a [[Plano]]');
  assert.equal(toasts.length, 0);
});
