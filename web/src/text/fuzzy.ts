import { fold } from './fold';

export interface FuzzyMatch {
  readonly score: number;
  /** Offsets of the matched characters in the text, in order. */
  readonly at: ReadonlyArray<number>;
}

/**
 * Whether a query's characters occur in a text in order, ignoring case and accents. Word starts and
 * consecutive characters score higher, so "sc" finds "Salvar como" first.
 */
export function fuzzyMatch(query: string, text: string): FuzzyMatch | null {
  const wanted = [...fold(query)].filter((char) => char.trim() !== '');
  const chars = [...text].map(fold);
  const memory = new Map<number, FuzzyMatch | null>();
  const best = (q: number, from: number, inRow: boolean): FuzzyMatch | null => {
    if (q === wanted.length) return { score: 0, at: [] };
    const key = (q * (chars.length + 1) + from) * 2 + Number(inRow);
    const known = memory.get(key);
    if (known !== undefined) return known;
    let result: FuzzyMatch | null = null;
    for (let i = from; i < chars.length; i++) {
      if (chars[i] !== wanted[q]) continue;
      const rest = best(q + 1, i + 1, true);
      if (!rest) break;
      const score = rest.score + scoreOf(chars, i, inRow && i === from);
      if (!result || score > result.score) result = { score, at: [i, ...rest.at] };
    }
    memory.set(key, result);
    return result;
  };
  const match = best(0, 0, false);
  if (!match) return null;
  const offsets = offsetsOf(text);
  // Of two equal matches, the shorter text wins.
  return {
    score: match.score - chars.length / 100,
    at: match.at.map((index) => offsets[index] ?? 0),
  };
}

/**
 * Whether a query occurs in a text as it is, from the start of a word on. Scored as the other matches are, for one
 * order of both.
 */
export function wordMatch(query: string, text: string): FuzzyMatch | null {
  const wanted = [...fold(query.trim())];
  const chars = [...text].map(fold);
  for (let start = 0; start + wanted.length <= chars.length; start++) {
    if (start > 0 && /[\p{L}\p{N}]/u.test(chars[start - 1] ?? '')) continue;
    if (!wanted.every((char, index) => char === chars[start + index])) continue;
    const offsets = offsetsOf(text);
    const score = wanted.reduce((sum, _, index) => sum + scoreOf(chars, start + index, index > 0), 0);
    return { score: score - chars.length / 100, at: wanted.map((_, index) => offsets[start + index] ?? 0) };
  }
  return null;
}

function scoreOf(chars: ReadonlyArray<string>, index: number, inRow: boolean): number {
  const startsWord = index === 0 || !/[\p{L}\p{N}]/u.test(chars[index - 1] ?? '');
  return 1 + (inRow ? 6 : 0) + (startsWord ? 5 : 0) - index / 1000;
}

function offsetsOf(text: string): number[] {
  let offset = 0;
  return [...text].map((char) => {
    const at = offset;
    offset += char.length;
    return at;
  });
}
