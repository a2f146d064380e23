import { Chunk } from '@codemirror/merge';
import type { Text } from '@codemirror/state';

/** Lines that differ between a version and the current text. */
export interface Passage {
  /** The number of the first line in the current text. */
  readonly line: number;
  readonly before: ReadonlyArray<Piece>;
  readonly now: ReadonlyArray<Piece>;
  /** What brings the version's lines back into the current text. */
  readonly change: { readonly from: number; readonly to: number; readonly insert: string };
}

/** A part of the lines, and whether it is only in one of the texts. */
export interface Piece {
  readonly text: string;
  readonly differs: boolean;
}

const COMPARISON = { scanLimit: 500, timeout: 200 };

/** All passages, in their order. */
export function passagesBetween(version: Text, current: Text): ReadonlyArray<Passage> {
  return Chunk.build(version, current, COMPARISON).map((chunk) => {
    const { fromA, toA, fromB, toB, changes } = chunk;
    return {
      line: current.lineAt(Math.min(fromB, current.length)).number,
      before: piecesOf(
        lines(version, fromA, toA).replace(/\n$/, ''),
        changes.map((change) => [change.fromA, change.toA]),
      ),
      now: piecesOf(
        lines(current, fromB, toB).replace(/\n$/, ''),
        changes.map((change) => [change.fromB, change.toB]),
      ),
      change: changeFor(lines(version, fromA, toA), fromB, toB, current.length),
    };
  });
}

/** Whole lines, each with its line break; the last one of a text gets one. */
function lines(text: Text, from: number, to: number): string {
  const end = Math.min(to, text.length);
  const slice = from < end ? text.sliceString(from, end) : '';
  return to > text.length ? `${slice}\n` : slice;
}

/** A passage that reaches the end does so in both texts, and there is no line break after the last line. */
function changeFor(then: string, from: number, to: number, length: number): Passage['change'] {
  return to <= length ? { from, to, insert: then } : { from, to: length, insert: then.slice(0, -1) };
}

function piecesOf(text: string, ranges: ReadonlyArray<readonly [from: number, to: number]>): Piece[] {
  const pieces: Piece[] = [];
  let at = 0;
  for (const [from, to] of ranges) {
    if (from > at) pieces.push({ text: text.slice(at, from), differs: false });
    if (to > from) pieces.push({ text: text.slice(from, to), differs: true });
    at = to;
  }
  if (at < text.length) pieces.push({ text: text.slice(at), differs: false });
  return pieces;
}
