import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { Difference } from '../../src/state/difference';
import { emptyContents } from '../../src/state/model';
import { readContents } from '../../src/state/read';
import { tidyVersions } from '../../src/state/tidyVersions';
import { versionText } from '../../src/state/versions';
import { Workspace } from '../../src/state/workspace';
import { prepareJson, serialize } from '../../src/state/write';
import { edited, inverse } from '../../src/text/renames';
import { random } from './chance';

const MINUTE = 60_000;
const START = 1_700_000_000_000;
const LONG = 'uma linha com acentos: ção\n'.repeat(40);

/** A note in a workspace whose clock is set by hand. */
function noteWith(text: string, contents = emptyContents) {
  const clock = { now: START };
  const workspace = new Workspace(contents, false, () => clock.now);
  const { id } = workspace.addNote({ text });
  const set = (next: string, removed?: number) => workspace.setText(id, Text.of(next.split('\n')), removed);
  const texts = () => {
    const note = workspace.note(id);
    return note ? note.versions.map((_, at) => versionText(note, at).toString()) : [];
  };
  return { clock, workspace, id, set, texts };
}

function again(workspace: Workspace): Workspace {
  const stored: unknown = JSON.parse(serialize(workspace.contents, 1));
  return new Workspace(readContents(stored, workspace.now()).contents, false, workspace.now);
}

test('a version is taken before the first change after ten minutes without one', () => {
  const { clock, set, texts } = noteWith('um');
  set('dois');
  assert.deepEqual(texts(), ['um'], 'the text it was made with');
  for (let minute = 1; minute < 10; minute++) {
    clock.now = START + minute * MINUTE;
    set(`dois ${minute}`);
  }
  assert.deepEqual(texts(), ['um']);
  clock.now = START + 10 * MINUTE;
  set('três');
  assert.deepEqual(texts(), ['dois 9', 'um']);
});

test('the first words of a new note are not a version each', () => {
  const { clock, set, texts } = noteWith('');
  for (const text of ['u', 'um', 'um ', 'um d']) {
    clock.now += MINUTE;
    set(text);
  }
  assert.deepEqual(texts(), []);
});

test('a text that is emptied or loses more than half is kept at once', () => {
  const { set, texts } = noteWith('');
  set(LONG);
  set(LONG.slice(0, LONG.length / 2 - 1));
  assert.deepEqual(texts(), [LONG]);
  set(LONG.slice(0, LONG.length / 2 - 2));
  assert.deepEqual(texts(), [LONG], 'not for every key from then on');
  set('');
  assert.deepEqual(texts(), [LONG.slice(0, LONG.length / 2 - 2), LONG]);
  set('curta');
  set('');
  assert.deepEqual(texts().slice(0, 1), ['curta']);
});

test('so is one that is overwritten with another as long', () => {
  const { set, texts } = noteWith('');
  set(LONG);
  set('x'.repeat(LONG.length), LONG.length);
  assert.deepEqual(texts(), [LONG]);
});

test('so is a short one of which nothing stays', () => {
  const { set, texts } = noteWith('');
  set('código da porta: 4711');
  set('x', 21);
  assert.deepEqual(texts(), ['código da porta: 4711']);
  set('y', 1);
  assert.deepEqual(texts().length, 1, 'but no more than a word or two');
});

test('so is one that is deleted key by key', () => {
  const { set, texts } = noteWith('');
  set(LONG);
  for (let length = LONG.length - 1; length >= 0; length--) set(LONG.slice(0, length), 1);
  assert.equal(texts().at(-1), LONG);
  assert.ok(texts().length < 6, 'each time a half, then the rest');
});

test('what is emptied twice is kept once', () => {
  const { set, texts } = noteWith('');
  for (let i = 0; i < 3; i++) {
    set('abc');
    set('');
  }
  assert.deepEqual(texts(), ['abc']);
});

test('a clock that was set back neither stops versions nor breaks them', () => {
  const { clock, workspace, set, texts } = noteWith('um');
  set('dois');
  clock.now = START + 60 * MINUTE;
  set('três');
  for (const _ of tidyVersions(workspace));
  clock.now = START - 600 * MINUTE;
  set('quatro');
  set('cinco');
  assert.deepEqual(texts(), ['três', 'dois', 'um']);
  clock.now = START + 80 * MINUTE;
  for (const _ of tidyVersions(workspace));
  // The newest is a difference now, and by this clock another one is not due.
  clock.now = START - 595 * MINUTE;
  set('seis');
  set('sete');
  assert.deepEqual(texts(), ['três', 'dois', 'um']);
});

test('an emptied note has its versions when it is written to again', () => {
  const { clock, workspace, set, texts } = noteWith('');
  set('guardado');
  set('');
  clock.now += 60 * MINUTE;
  for (const _ of tidyVersions(workspace));
  set('n');
  set('no');
  assert.deepEqual(texts(), ['guardado']);
});

test('every version can be rebuilt exactly, whatever is done in between', () => {
  for (let seed = 1; seed <= 40; seed++) playAt(seed);
});

/** As a renamed tag does, with an insertion at each of these places. */
function rewrite(workspace: Workspace, id: string, places: ReadonlyArray<number>): void {
  const before = workspace.note(id)?.text.toString() ?? '';
  const edits = [...new Set(places)].map((at) => ({ from: at, to: at, insert: '#z' }));
  workspace.rewrite(new Map([[id, { text: edited(before, edits), back: inverse(before, edits) }]]));
}

test('rewriting many notes keeps what leads back, not their texts', () => {
  const { clock, workspace, id, set, texts } = noteWith(`#a ${LONG}`);
  rewrite(workspace, id, [0, 1000]);
  const held = () => workspace.note(id)?.versions.map((version) => version.held);
  assert.ok(held()?.[0] instanceof Difference);
  rewrite(workspace, id, [3]);
  assert.ok(held()?.[0] instanceof Difference && held()?.length === 1, 'and so when it is rewritten again');
  set('#b outra');
  assert.deepEqual(texts().slice(1), [`#a ${LONG}`]);
  clock.now += 20 * MINUTE;
  rewrite(workspace, id, [0]);
  assert.deepEqual(texts().slice(0, 1), ['#b outra']);
});

const PIECES = ['a', '\n', 'ção ', '🎉', '\ud83d', '"\\', 'linha inteira\n', '\u2028', LONG];

function playAt(seed: number): void {
  const chance = random(seed);
  const { clock, workspace: first, id } = noteWith(chance(2) ? LONG : '');
  let workspace = first;
  const texts = new Map<number, string>();
  for (let step = 0; step < 120; step++) {
    clock.now += 1 + chance(3) * chance(8 * MINUTE);
    const note = workspace.noteOrBinned(id);
    assert.ok(note);
    const before = note.text.toString();
    const from = chance(before.length + 1);
    const to = chance(12) ? Math.min(before.length, from + chance(5)) : from + chance(before.length - from + 1);
    const insert = PIECES[chance(PIECES.length)] ?? '';
    const after = chance(40) ? before.slice(0, from) + insert + before.slice(to) : '';
    if (chance(6)) workspace.setText(id, Text.of(after.split('\n')), to - from);
    else rewrite(workspace, id, [from, Math.floor((from + before.length) / 2)]);
    const changed = workspace.noteOrBinned(id);
    const newest = changed?.versions[0];
    // Where more than one key took the text, the version is an earlier one than the last.
    if (newest && !texts.has(newest.taken)) {
      assert.ok(newest.taken === clock.now);
      texts.set(newest.taken, versionText(changed, 0).toString());
    }
    const act = chance(20);
    if (act === 0) for (const _ of tidyVersions(workspace));
    else if (act === 1) workspace = again(workspace);
    else if (act === 2) for (const _ of prepareJson(workspace.contents));
    else if (act === 3) {
      workspace.deleteNote(id);
      for (const _ of tidyVersions(workspace));
      workspace = again(workspace);
      workspace.restoreNote(id);
    }
    if (step % 10) continue;
    const now = workspace.note(id);
    assert.ok(now);
    for (const [at, { taken }] of now.versions.entries()) {
      assert.equal(versionText(now, at).toString(), texts.get(taken), `seed ${seed}, step ${step}, version ${at}`);
    }
    assert.equal(now.versions.length, texts.size);
  }
  assert.ok(texts.size > 3);
}
