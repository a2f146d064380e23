/** Decodes a chosen file's bytes, or reports that they are not text. */

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
/** What bytes 0x80 to 0x9F mean in Windows-1252; 0 if undefined. All others are as in Latin-1. */
const WINDOWS_1252_FROM_80 = [
  0x20ac, 0, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0, 0x017d, 0, 0,
  0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0, 0x017e, 0x0178,
];
const SAMPLE = 16_384;

type Decoder = (bytes: Uint8Array) => string | null;

/** UTF-32 before UTF-16, because one of its byte order marks starts with a UTF-16 one. */
const MARKED: ReadonlyArray<readonly [mark: ReadonlyArray<number>, decode: Decoder]> = [
  [[0xff, 0xfe, 0, 0], (bytes) => decodeUtf32(bytes, true)],
  [[0, 0, 0xfe, 0xff], (bytes) => decodeUtf32(bytes, false)],
  [[0xff, 0xfe], (bytes) => decodeAs('utf-16le', bytes)],
  [[0xfe, 0xff], (bytes) => decodeAs('utf-16be', bytes)],
];

/**
 * The decoded text without a byte order mark, or null if the bytes are not text. The host reads files opened
 * from the desktop by the same rules, and both are tested with the same samples.
 */
export function decodeText(bytes: Uint8Array): string | null {
  for (const [mark, decode] of MARKED) {
    const text = startsWith(bytes, mark) ? acceptable(decode(bytes)) : null;
    if (text !== null) return withoutMark(text);
  }
  if (SIGNATURES.some((signature) => startsWith(bytes, signature))) return null;
  const utf8 = acceptable(decodeAs('utf-8', bytes));
  if (utf8 !== null) return withoutMark(utf8);
  const wide = guessUtf16(bytes);
  const unmarked = wide && acceptable(decodeAs(wide, bytes));
  if (unmarked !== null) return unmarked;
  // Latin-1 assigns every byte a character, so there is nothing to try after it.
  return looksTextual(bytes) ? (decodeWindows1252(bytes) ?? decodeLatin1(bytes)) : null;
}

function startsWith(bytes: Uint8Array, start: ReadonlyArray<number>): boolean {
  return bytes.length >= start.length && start.every((value, i) => bytes[i] === value);
}

/** Null if the bytes are invalid in the encoding. A byte order mark is kept like any other character. */
function decodeAs(encoding: string, bytes: Uint8Array): string | null {
  try {
    return new TextDecoder(encoding, { fatal: true, ignoreBOM: true }).decode(bytes);
  } catch (error) {
    if (error instanceof TypeError) return null;
    throw error;
  }
}

function decodeUtf32(bytes: Uint8Array, littleEndian: boolean): string | null {
  if (bytes.length % 4 !== 0) return null;
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  const units = new Uint16Array(bytes.length / 2);
  let length = 0;
  for (let at = 0; at < bytes.length; at += 4) {
    const scalar = view.getUint32(at, littleEndian);
    if (scalar > 0x10ffff || (scalar & 0xfffff800) === 0xd800) return null;
    if (scalar > 0xffff) {
      units[length++] = 0xd7c0 + (scalar >> 10);
      units[length++] = 0xdc00 + (scalar & 0x3ff);
    } else units[length++] = scalar;
  }
  return textOfUnits(units.subarray(0, length));
}

/** Engines disagree on bytes the code page leaves undefined, so they are mapped here. */
function decodeWindows1252(bytes: Uint8Array): string | null {
  const units = new Uint16Array(bytes);
  for (let at = 0; at < units.length; at++) {
    const byte = units[at] as number;
    if (byte < 0x80 || byte > 0x9f) continue;
    const unit = WINDOWS_1252_FROM_80[byte - 0x80] as number;
    if (!unit) return null;
    units[at] = unit;
  }
  return textOfUnits(units);
}

/** Not with TextDecoder: its "latin1" is really Windows-1252. */
function decodeLatin1(bytes: Uint8Array): string {
  return textOfUnits(new Uint16Array(bytes));
}

/** All supported machines are little-endian. */
function textOfUnits(units: Uint16Array): string {
  return new TextDecoder('utf-16le', { ignoreBOM: true }).decode(units);
}

function withoutMark(text: string): string {
  return text.startsWith('\ufeff') ? text.slice(1) : text;
}

function acceptable(text: string | null): string | null {
  return text !== null && looksTextual(codePoints(text)) ? text : null;
}

/** UTF-16 without a byte order mark is recognised by zeros in every other byte. */
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
  for (const char of text) yield char.codePointAt(0) ?? 0;
}

/** Whether the beginning has no zero byte and at most one percent other control characters. */
function looksTextual(values: Iterable<number>): boolean {
  let total = 0;
  let controls = 0;
  for (const value of values) {
    if (total === SAMPLE) break;
    total++;
    if (value === 0) return false;
    if (value < 32 && value !== 9 && value !== 10 && value !== 12 && value !== 13) controls++;
  }
  return total >= controls * 100;
}
