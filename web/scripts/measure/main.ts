import { Text } from '@codemirror/state';
import type { Note } from '../../src/state/model';
import { readContents } from '../../src/state/read';
import { foldNotes, narrows, searchNotes } from '../../src/state/search';
import { Workspace } from '../../src/state/workspace';
import { makePieces, serialize } from '../../src/state/write';

const NOTES = 10_000;
const NOTE_CHARACTERS = 6000;
const ROUNDS = 15;

const words =
  'casa ação reunião projeto amanhã lista mercado pão queijo escrever texto nota ideia viagem coração número'.split(' ');

function textOf(index: number): string {
  let seed = index * 7919 + 17;
  let text = `# Nota ${index}\n\n`;
  while (text.length < NOTE_CHARACTERS) {
    seed = (Math.imul(seed, 1_664_525) + 1_013_904_223) >>> 0;
    text += `${words[(seed >>> 8) % words.length]}${seed % 11 === 0 ? '\n' : ' '}`;
  }
  return text;
}

function time(run: () => void): number {
  const started = performance.now();
  run();
  return performance.now() - started;
}

function report(what: string, costs: number[]): void {
  const sorted = [...costs].sort((a, b) => a - b);
  const median = sorted[Math.floor(sorted.length / 2)] ?? 0;
  const line = `${what}: median ${median.toFixed(1)} ms, longest ${(sorted.at(-1) ?? 0).toFixed(1)} ms\n`;
  process.stdout.write(line);
}

/** Makes one piece of memory of a text that was put together from pieces, as sending it does. */
function join(text: string): void {
  Buffer.from(text, 'latin1').subarray(0, 1);
}

const notes = Array.from({ length: NOTES }, (_, i) => ({ id: `n${i}`, text: textOf(i), updated: i }));
const { contents } = readContents({ version: 1, notes }, Date.now());
const workspace = new Workspace(contents, false, Date.now);
report('making all pieces the first time', [time(() => void [...makePieces(workspace.contents)])]);

const serialising: number[] = [];
const joining: number[] = [];
for (let round = 0; round < ROUNDS; round++) {
  const note = workspace.note(`n${round * 600}`);
  if (!note) continue;
  workspace.setText(note.id, note.text.replace(20, 20, Text.of(['x'])));
  let json = '';
  serialising.push(time(() => {
    json = serialize(workspace.contents, round);
  }));
  joining.push(time(() => join(json)));
}
process.stdout.write(`document: ${(serialize(workspace.contents, 1).length / 1e6).toFixed(1)} MB\n`);
report('serialising after a change to one note', serialising);
report('joining and copying the result', joining);

report('folding every note for the search, once', [time(() => void [...foldNotes(workspace.notesInOrder())])]);
const search = (notes: Iterable<Note>, query: string) =>
  [...searchNotes(notes, query)].flatMap((found) => (found ? [found.note] : []));
for (const query of ['c', 'co', 'q', 'qx', 'zebra', 'escrever t', 'coracao numero', 'nota 7777', 'viagem zebra']) {
  let found = 0;
  const costs = Array.from({ length: 7 }, () => time(() => {
    found = search(workspace.notesInOrder(), query).length;
  }));
  report(`searching “${query}” in all notes (${found} found)`, costs);
}

// As it is typed: each key looks through what the one before has left.
const perKey: number[] = [];
for (const query of ['reunião amanhã', 'zebra', 'nota 7777', 'coraçao numero escrever']) {
  let left = workspace.notesInOrder();
  for (let length = 1; length <= query.length; length++) {
    const typed = query.slice(0, length);
    const from = narrows(typed, query.slice(0, length - 1)) ? left : workspace.notesInOrder();
    perKey.push(time(() => {
      left = search(from, typed);
    }));
  }
}
report('searching as one types, for each key', perKey);
