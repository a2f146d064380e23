const LATIN_ONLY = /^[\x00-\xff]*$/;
const BEYOND_LATIN = /[\u0100-\u{10ffff}]+/gu;
const MARKS = /\p{M}+/gu;

/** What each character of Latin-1 becomes: one of them, too. */
const LATIN = Uint16Array.from({ length: 256 }, (_, code) => withoutMarks(String.fromCharCode(code)).charCodeAt(0));

/** Units for texts that are not longer: arrays of their own would have to be collected. */
const kept = new Uint16Array(100_000);
const wideDecoder = new TextDecoder('utf-16le', { ignoreBOM: true });
const narrowDecoder = new TextDecoder('latin1');

/**
 * Lower case without accents: "acao" finds "Ação". Lone surrogates become U+FFFD. All notes are folded before a search,
 * and replacing takes several times as long as this.
 */
export function fold(text: string): string {
  const { length } = text;
  let units: Uint16Array = length <= kept.length ? kept : new Uint16Array(length);
  let count = 0;
  let isWide = false;
  for (let at = 0; at < length; at++) {
    const code = text.charCodeAt(at);
    if (code <= 0xff && !isControl(code)) {
      units[count++] = LATIN[code] as number;
      continue;
    }
    isWide = true;
    const start = at;
    while (text.charCodeAt(at + 1) > 0xff) at++;
    const run = foldRun(text.slice(start, at + 1));
    units = withRoom(units, count, run.length + length - at);
    for (let i = 0; i < run.length; i++) units[count++] = run.charCodeAt(i);
  }
  const folded = units.subarray(0, count);
  // Text of one byte per character takes half the memory and is found faster.
  return isWide ? wideDecoder.decode(folded) : narrowDecoder.decode(new Uint8Array(folded));
}

/** Those that the decoder takes for other characters, as all decoders of Latin-1 on the web do. */
function isControl(code: number): boolean {
  return (code & 0xe0) === 0x80;
}

/** A dash, a quotation mark or an emoji comes again and again. */
const shortRuns = new Map<string, string>();
const SHORT = 2;
const MOST_SHORT_RUNS = 1000;

function foldRun(run: string): string {
  if (run.length > SHORT) return withoutMarks(run);
  let folded = shortRuns.get(run);
  if (folded === undefined) {
    if (shortRuns.size === MOST_SHORT_RUNS) shortRuns.clear();
    // In some engines a part of a string keeps all of it.
    const copy = JSON.parse(JSON.stringify(run)) as string;
    folded = withoutMarks(copy);
    shortRuns.set(copy, folded);
  }
  return folded;
}

/** A syllable may become three units. */
function withRoom(units: Uint16Array, count: number, more: number): Uint16Array {
  if (count + more <= units.length) return units;
  const larger = new Uint16Array(2 * (count + more));
  larger.set(units.subarray(0, count));
  return larger;
}

export interface Place {
  readonly from: number;
  readonly to: number;
}

/** The first position of `foldedQuery` in `text`, in the text's own offsets. Meant for titles and excerpts. */
export function findFolded(text: string, foldedQuery: string): Place | null {
  if (!foldedQuery) return null;
  const { folded, origin } = foldWithOrigins(text);
  const at = folded.indexOf(foldedQuery);
  return at < 0 ? null : { from: origin(at), to: origin(at + foldedQuery.length) };
}

/** Where any of some folded words is, in order; places that overlap are one. Meant for lines, not whole notes. */
export function foldedPlaces(text: string, words: ReadonlyArray<string>): Place[] {
  const { folded, origin } = foldWithOrigins(text);
  const all = words.flatMap((word) => {
    const places: Place[] = [];
    for (let at = folded.indexOf(word); word && at >= 0; at = folded.indexOf(word, at + word.length)) {
      places.push({ from: origin(at), to: origin(at + word.length) });
    }
    return places;
  });
  const merged: Place[] = [];
  for (const place of all.sort((one, other) => one.from - other.from)) {
    const last = merged.at(-1);
    if (!last || place.from >= last.to) merged.push(place);
    else merged[merged.length - 1] = { from: last.from, to: Math.max(last.to, place.to) };
  }
  return merged;
}

/** Part of a folded text: one character outside Latin-1, or a run of others, which keep their length. */
interface Run {
  readonly start: number;
  readonly origin: number;
  readonly isLatin: boolean;
}

/**
 * Folding changes the length of text outside Latin-1, so such text is folded character by character with a map back.
 */
function foldWithOrigins(text: string): { folded: string; origin: (at: number) => number } {
  if (LATIN_ONLY.test(text)) return { folded: fold(text), origin: (at) => at };
  let folded = '';
  const runs: Run[] = [];
  const add = (part: string, origin: number, isLatin: boolean) => {
    if (!part) return;
    runs.push({ start: folded.length, origin, isLatin });
    folded += part;
  };
  let end = 0;
  for (const { 0: beyond, index } of text.matchAll(BEYOND_LATIN)) {
    add(fold(text.slice(end, index)), end, true);
    end = index;
    for (const char of beyond) {
      add(foldRun(char), end, false);
      end += char.length;
    }
  }
  add(fold(text.slice(end)), end, true);
  const origin = (at: number) => {
    if (at >= folded.length) return text.length;
    let index = runs.length - 1;
    while ((runs[index]?.start ?? 0) > at) index--;
    const { start = 0, origin = 0, isLatin = true } = runs[index] ?? {};
    return isLatin ? origin + at - start : origin;
  };
  return { folded, origin };
}

function withoutMarks(text: string): string {
  return text.toLowerCase().normalize('NFD').replace(MARKS, '');
}
