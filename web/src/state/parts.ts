/**
 * Puts pieces together to parts of `length` characters and more, up to twice as many, none of which ends within a
 * surrogate pair. Only a piece longer than that is cut. The others are just added to each other: whatever looks into
 * a string that was made so copies what it is made of, and that stays.
 */
export function* inParts(pieces: Iterable<string>, length: number): Generator<string, void> {
  let part = '';
  for (const piece of pieces) {
    if (piece.length > length) {
      if (part) yield part;
      part = '';
      yield* cut(piece, length);
    } else {
      part += piece;
      if (part.length < length) continue;
      yield part;
      part = '';
    }
  }
  if (part) yield part;
}

function* cut(text: string, length: number): Generator<string, void> {
  for (let from = 0, to: number; from < text.length; from = to) {
    to = from + length;
    if ((text.charCodeAt(to - 1) & 0xfc00) === 0xd800) to++;
    yield text.slice(from, to);
  }
}
