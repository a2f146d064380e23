import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { NoteText } from '../../src/state/noteText';
import { readContents } from '../../src/state/read';
import { readSettings } from '../../src/state/settings';
import { thinned, tidyVersions } from '../../src/state/tidyVersions';
import { bytesOf, versionText } from '../../src/state/versions';
import { Workspace } from '../../src/state/workspace';
import { serialize } from '../../src/state/write';

const MINUTE = 60_000;
const HOUR = 60 * MINUTE;
const DAY = 24 * HOUR;
const NOW = 1_700_000_000_000;

interface Stored {
  readonly settings?: Readonly<Record<string, unknown>>;
  readonly version: number;
  readonly notes: ReadonlyArray<Record<string, unknown>>;
}

function open(stored: unknown, now = NOW): Workspace {
  return new Workspace(readContents(stored, now).contents, false, () => now);
}

const saved = (workspace: Workspace) => JSON.parse(serialize(workspace.contents, 1)) as Stored;

function rebuilt(workspace: Workspace, id: string): string[] {
  const note = workspace.noteOrBinned(id);
  return note ? note.versions.map((_, at) => versionText(note, at).toString()) : [];
}

const tidy = (workspace: Workspace, limit?: number) => {
  for (const _ of tidyVersions(workspace, limit));
};

/** A note with a version at each of these ages, whose text is its age. */
function agedNote(ages: ReadonlyArray<number>, id = 'a', guarded = {}) {
  const versions = ages.map((age) => ({ taken: NOW - age, text: String(age), ...guarded }));
  return { id, text: 'agora', created: 1, updated: 2, versions };
}

test('a document of version 1 opens with its notes, and is written as version 2', () => {
  const before = JSON.parse(readFileSync('tests/unit/documentOfVersion1.json', 'utf8')) as Stored;
  const { contents, newer } = readContents(before, NOW);
  assert.equal(newer, false);
  const after = JSON.parse(serialize(contents, 7)) as Stored;
  const { extra: _, ...defaults } = readSettings({});
  const settings = { ...defaults, ...before.settings };
  assert.deepEqual(after, { ...before, version: 2, revision: 7, settings });
});

test('versions get fewer with age, the last one of each time stays', () => {
  const ages: number[] = [];
  for (let age = 0; age < 200 * DAY; age += 10 * MINUTE) ages.push(age);
  const workspace = open({ version: 2, notes: [agedNote(ages)] });
  const all = workspace.note('a')?.versions ?? [];
  const kept = thinned(all, NOW);
  const inAge = (from: number, to: number) => kept.filter(({ taken }) => NOW - taken >= from && NOW - taken < to);
  assert.equal(inAge(0, DAY).length, 144);
  const perHour = new Map(inAge(DAY, 7 * DAY).map(({ taken }) => [Math.floor(taken / HOUR), taken]));
  assert.equal(perHour.size, inAge(DAY, 7 * DAY).length);
  assert.ok(perHour.size >= 6 * 24);
  for (const [hour, kept] of perHour) {
    const others = all.filter(({ taken }) => Math.floor(taken / HOUR) === hour && NOW - taken >= DAY);
    assert.ok(others.every(({ taken }) => taken <= kept));
  }
  assert.ok(Math.abs(inAge(7 * DAY, 91 * DAY).length - 84) <= 1);
  assert.ok(Math.abs(inAge(91 * DAY, 200 * DAY).length - 109 / 7) <= 1);
  assert.equal(thinned(kept, NOW), kept, 'thinning again changes nothing');
});

test('what was about to go stays whatever its age', () => {
  const ages = [400 * DAY + 10, 400 * DAY + 17, 400 * DAY + 24];
  const note = agedNote(ages, 'a', { guarded: true });
  const { versions } = open({ version: 2, notes: [note] }).note('a') ?? { versions: [] };
  assert.equal(thinned(versions, NOW).length, 3);
});

test('thinning keeps the texts of the versions that stay', () => {
  const ages = Array.from({ length: 300 }, (_, i) => i * 3 * HOUR + 11 * MINUTE);
  const workspace = open({ version: 2, notes: [agedNote(ages)] });
  tidy(workspace);
  const texts = rebuilt(workspace, 'a');
  assert.ok(texts.length < 150);
  assert.deepEqual(
    texts,
    workspace.note('a')?.versions.map(({ taken }) => String(NOW - taken)),
  );
  assert.ok(
    workspace.note('a')?.versions.every(({ held }) => !(held instanceof NoteText)),
    'as differences',
  );
});

test('beyond what they may take, the oldest versions of all notes go', () => {
  const notes = ['a', 'b'].map((id, at) =>
    agedNote(
      [1, 2, 3, 4].map((day) => (2 * day + at) * HOUR),
      id,
    ),
  );
  const workspace = open({ version: 2, notes });
  tidy(workspace);
  const sizes = [...(workspace.note('a')?.versions ?? []), ...(workspace.note('b')?.versions ?? [])];
  const bytes = sizes.reduce((sum, { held }) => sum + bytesOf(held), 0);
  tidy(workspace, bytes);
  assert.equal(rebuilt(workspace, 'a').length + rebuilt(workspace, 'b').length, 8);
  tidy(workspace, bytes - 1);
  assert.deepEqual([rebuilt(workspace, 'a').length, rebuilt(workspace, 'b').length], [4, 3]);
  tidy(workspace, 0);
  assert.deepEqual([rebuilt(workspace, 'a'), rebuilt(workspace, 'b')], [[], []]);
});

test('one key in a very long text does not drive out the versions of other notes', () => {
  const workspace = open({ version: 2, notes: [agedNote([HOUR]), { id: 'long', text: 'x\n'.repeat(900_000) }] });
  workspace.setText('long', Text.of(['y', ...'x\n'.repeat(899_999).split('\n')]));
  tidy(workspace, 1_000_000);
  assert.deepEqual(rebuilt(workspace, 'a'), [String(HOUR)]);
  assert.equal(rebuilt(workspace, 'long')[0], 'x\n'.repeat(900_000));
  workspace.setText('long', Text.of(['z']), 1_800_000);
  assert.equal(rebuilt(workspace, 'long').at(-1), 'x\n'.repeat(900_000));
});

test('damaged versions are set aside, and the note and the others stay', () => {
  const good = { taken: 9, text: 'inteira' };
  const damage: unknown[] = [
    null,
    7,
    {},
    { taken: 'x', text: 'a' },
    { taken: 5, change: [4] },
    { taken: 5, change: [-1, 6] },
    { taken: 5, change: [[5, 'a\nb']] },
    { taken: 5, change: [[5, 7]] },
    { taken: 5, change: { length: 1 } },
    { taken: 5, change: [[[[]]]] },
  ];
  for (const broken of damage) {
    const older = { taken: 4, change: [1, [0, 'x']] };
    const stored = { version: 2, notes: [{ id: 'a', text: 'texto', versions: [broken, older, good] }] };
    const first = open(stored);
    assert.equal(first.note('a')?.text.toString(), 'texto');
    assert.deepEqual(rebuilt(first, 'a'), ['inteira'], JSON.stringify(broken));
    const kept = saved(open(saved(first))).notes[0];
    assert.deepEqual(kept?.damagedVersions, [broken, older], 'kept from then on, and only once');
  }
  for (const versions of ['x', { a: 1 }, 7]) {
    const workspace = open({ version: 2, notes: [{ id: 'a', text: 'texto', versions }] });
    assert.deepEqual(saved(workspace).notes[0]?.damagedVersions, [versions]);
  }
});

test('unknown members of versions are preserved', () => {
  const versions = [{ taken: 5, change: [2, [3, 'X']], guarded: true, colour: { deep: [1] } }];
  const workspace = open({ version: 2, notes: [{ id: 'a', text: 'texto', versions }] });
  assert.deepEqual(saved(workspace).notes[0]?.versions, versions);
  assert.deepEqual(rebuilt(workspace, 'a'), ['teX']);
});

test('a note keeps its versions in the bin and loses them for good with it', () => {
  const workspace = open({ version: 2, notes: [agedNote([HOUR])] });
  workspace.deleteNote('a');
  tidy(workspace);
  const again = open(JSON.parse(serialize(workspace.contents, 1)));
  assert.deepEqual(rebuilt(again, 'a'), [String(HOUR)]);
  again.emptyBin();
  assert.doesNotMatch(serialize(again.contents, 1), new RegExp(String(HOUR)));
});

test('with ten thousand notes, a save makes only what changed', () => {
  const notes = Array.from({ length: 10_000 }, (_, i) => agedNote([HOUR, 2 * HOUR, 30 * HOUR], `n${i}`));
  const workspace = open({ version: 2, notes });
  tidy(workspace);
  const before = serialize(workspace.contents, 1);
  const original = JSON.stringify;
  let made = 0;
  JSON.stringify = ((value: unknown, ...rest: []) => {
    made++;
    return original(value, ...rest);
  }) as typeof JSON.stringify;
  try {
    workspace.setText('n5000', Text.of(['outra']));
    serialize(workspace.contents, 2);
  } finally {
    JSON.stringify = original;
  }
  assert.ok(made < 60, `${made} values`);
  const after = saved(workspace).notes.length;
  assert.equal(after, 10_000);
  assert.ok(before.length < 10_000 * 450);
});
