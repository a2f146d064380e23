/** Reads the bytes of a chosen file as text, or tells that they are none. */

export const MAXIMUM_FILE_BYTES = 20_000_000;

const SIGNATURES: ReadonlyArray<ReadonlyArray<number>> = [
  [0x89, 0x50, 0x4e, 0x47],
  [0xff, 0xd8, 0xff],
  [0x47, 0x49, 0x46, 0x38],
  [0x25, 0x50, 0x44, 0x46, 0x2d],
  [0x50, 0x4b, 0x03, 0x04],
  [0x1f, 0x8b],
  [0x7f, 0x45, 0x4c, 0x46],
  [0xca, 0xfe, 0xba, 0xbe],
  [0xfe, 0xed, 0xfa, 0xce],
  [0xfe, 0xed, 0xfa, 0xcf],
  [0xce, 0xfa, 0xed, 0xfe],
  [0xcf, 0xfa, 0xed, 0xfe],
];
const SAMPLE = 16_384;

/** The decoded text without a byte order mark, or null when the bytes are not text. */
export function decodeText(bytes: Uint8Array): string | null {
  if (bytes.length === 0) return '';
  for (const [mark, encoding] of [
    [[0xef, 0xbb, 0xbf], 'utf-8'],
    [[0xff, 0xfe], 'utf-16le'],
    [[0xfe, 0xff], 'utf-16be'],
  ] as const) {
    if (!startsWith(bytes, mark)) continue;
    const text = tryDecode(bytes.subarray(mark.length), encoding);
    if (text !== null) return text;
  }
  if (SIGNATURES.some((signature) => startsWith(bytes, signature))) return null;
  const utf8 = tryDecode(bytes, 'utf-8');
  if (utf8 !== null) return utf8;
  const wide = guessUtf16(bytes);
  if (wide) {
    const text = tryDecode(bytes, wide);
    if (text !== null) return text;
  }
  if (!looksTextual(bytes.subarray(0, SAMPLE))) return null;
  return tryDecode(bytes, 'windows-1252');
}

function startsWith(bytes: Uint8Array, start: ReadonlyArray<number>): boolean {
  return bytes.length >= start.length && start.every((value, i) => bytes[i] === value);
}

function tryDecode(bytes: Uint8Array, encoding: string): string | null {
  let text: string;
  try {
    text = new TextDecoder(encoding, { fatal: true, ignoreBOM: true }).decode(bytes);
  } catch {
    return null;
  }
  return looksTextual(codePoints(text)) ? text : null;
}

/** Files of two-byte text without a mark show themselves by zeros at every other byte. */
function guessUtf16(bytes: Uint8Array): 'utf-16le' | 'utf-16be' | null {
  const sample = bytes.subarray(0, 4096);
  if (sample.length < 4 || sample.length % 2 !== 0) return null;
  let even = 0;
  let odd = 0;
  sample.forEach((byte, i) => {
    if (byte !== 0) return;
    if (i % 2 === 0) even++;
    else odd++;
  });
  const pairs = sample.length / 2;
  if (odd * 2 > pairs && even * 10 < pairs) return 'utf-16le';
  if (even * 2 > pairs && odd * 10 < pairs) return 'utf-16be';
  return null;
}

function* codePoints(text: string): Iterable<number> {
  let seen = 0;
  for (const char of text) {
    if (seen++ === SAMPLE) return;
    yield char.codePointAt(0) ?? 0;
  }
}

/** Text has no zero and at most one other control character in a hundred. */
function looksTextual(values: Iterable<number>): boolean {
  let total = 0;
  let controls = 0;
  for (const value of values) {
    total++;
    if (value === 0) return false;
    if (value < 32 && value !== 9 && value !== 10 && value !== 12 && value !== 13) controls++;
  }
  return total >= controls * 100;
}
