import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import path from 'node:path';
import { test } from 'node:test';
import { decodeText } from '../../src/text/decode';

type Pieces = ReadonlyArray<readonly [count: number, piece: string]>;

interface Sample {
  readonly name: string;
  readonly bytes: Pieces;
  readonly text: Pieces | null;
}

const samples = JSON.parse(readFileSync(path.resolve('../tests/corpus/text-files.json'), 'utf8')) as Sample[];

const joined = (pieces: Pieces) => pieces.map(([count, piece]) => piece.repeat(count)).join('');
const bytesOf = (pieces: Pieces) =>
  Uint8Array.from(joined(pieces.map(([count, hex]) => [count, `${hex} `])).match(/\w\w/g) ?? [], (hex) =>
    Number.parseInt(hex, 16),
  );

// The host reads files opened from the desktop; its own test uses the same samples.
test('files chosen in the page are decoded like those opened by the host', () => {
  for (const { name, bytes, text } of samples) {
    assert.ok(decodeText(bytesOf(bytes)) === (text && joined(text)), name);
  }
  assert.ok(samples.length > 100);
});

test("a file's alignment in memory does not matter", () => {
  const { bytes, text } = samples.find(({ name }) => name === 'UTF-32-LE with a mark') as Sample;
  const file = bytesOf(bytes);
  const memory = new Uint8Array(file.length + 7);
  memory.set(file, 3);
  assert.equal(decodeText(memory.subarray(3, 3 + file.length)), text && joined(text));
});

test('the largest files of every kind are decoded quickly', () => {
  const size = 20_000_000;
  const filled = (piece: ReadonlyArray<number>) => {
    const bytes = new Uint8Array(size);
    bytes.set(piece);
    for (let done = piece.length; done < size; done *= 2) bytes.copyWithin(done, 0, done);
    return bytes;
  };
  const utf32 = filled([0x61, 0, 0, 0]);
  utf32.set([0xff, 0xfe]);
  const kinds = [
    { bytes: filled([0xe9, 0x81, 0x20, 0x61]), length: size },
    { bytes: filled([0xe9, 0x80, 0x20, 0x61]), length: size },
    { bytes: utf32, length: size / 4 - 1 },
  ];
  const began = performance.now();
  for (const { bytes, length } of kinds) assert.equal(decodeText(bytes)?.length, length);
  assert.ok(performance.now() - began < 20_000);
});
