import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { emptyContents } from '../../src/state/model';
import { NoteText } from '../../src/state/noteText';
import { Workspace } from '../../src/state/workspace';
import { prepareJson, serialize } from '../../src/state/write';

const TEXTS = [
  '',
  'a',
  'ação\n\n"citação" \\ \\\\u0041 \\n',
  '😀'.repeat(50),
  '\u0000\u0001\t\u001f'.repeat(40),
  'x\ud800y',
];
const long = Array.from({ length: 3000 }, (_, i) => `linha ${i} \\ "não" 😀\u0002`).join('\n');

/** The same text in each of the forms in which it can be held. */
function forms(text: string) {
  const settled = NoteText.of(text);
  settled.settle();
  const left = NoteText.of(Text.of(text.split('\n')));
  left.settle();
  return { read: NoteText.of(text), edited: NoteText.of(Text.of(text.split('\n'))), settled, left };
}

test('a text is the same in every form', () => {
  for (const text of [...TEXTS, long]) {
    for (const [name, form] of Object.entries(forms(text))) {
      assert.equal(form.toString(), text, name);
      assert.equal(form.length, text.length, name);
      assert.equal(form.tree.toString(), text, name);
      assert.equal(form.json, JSON.stringify(text), name);
      assert.ok(form.eq(NoteText.of(text)) && !form.eq(NoteText.of(`${text}.`)), name);
    }
  }
});

test('a part is the same in every form, wherever an escape begins', () => {
  for (const text of [...TEXTS, long]) {
    for (const [name, form] of Object.entries(forms(text))) {
      for (let to = 0; to < Math.min(text.length + 2, 140); to++) {
        assert.equal(form.slice(to >> 1, to), text.slice(to >> 1, to), `${name} up to ${to}`);
      }
      assert.equal(form.slicer()(3, 1000), text.slice(3, 1000), name);
    }
  }
});

test('line breaks from outside become plain ones', () => {
  assert.equal(NoteText.of('a\r\nb\rc\n\r\n').toString(), 'a\nb\nc\n\n');
});

test('the editor gets the tree that it has, also after the text became one string', () => {
  const { read, edited } = forms(long);
  const tree = read.tree;
  assert.ok(read.is(tree) && read.tree === tree);
  const typed = edited.tree;
  edited.settle();
  assert.ok(edited.is(typed) && edited.tree === typed);
  assert.ok(!edited.is(tree));
});

test('before a save, every text but the edited one becomes one string', () => {
  const workspace = new Workspace(emptyContents, false, () => 1000);
  const texts = () => workspace.contents.notes.map((note) => note.text.settled);
  const [left, active] = [workspace.addNote({ text: 'left' }), workspace.addNote({ text: 'active' })];
  for (const { id } of [left, active]) {
    workspace.openTab(id);
    workspace.setText(id, Text.of(long.repeat(8).split('\n')));
  }
  const steps = [...prepareJson(workspace.contents)].length;
  assert.ok(steps > 10, 'a long text is prepared in steps');
  assert.deepEqual(texts(), [true, false]);
  const { notes } = JSON.parse(serialize(workspace.contents, 1)) as { notes: Array<{ text: string }> };
  for (const { text } of notes) assert.equal(text, long.repeat(8));
  workspace.openTab(left.id);
  const tabs = serialize(workspace.contents, 1);
  assert.equal([...prepareJson(workspace.contents)].length > 0 && serialize(workspace.contents, 1), tabs);
  assert.deepEqual(texts(), [true, true]);
  workspace.deleteNote(left.id);
  const deleted = serialize(workspace.contents, 1);
  assert.equal([...prepareJson(workspace.contents)].length > 0 && serialize(workspace.contents, 1), deleted);
});
