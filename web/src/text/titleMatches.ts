import { fold } from './fold';

/** What a list of names is searched in: each with its folded form. */
export interface Findable {
  readonly name: string;
  readonly folded: string;
}

export function findable(name: string): Findable {
  return { name, folded: fold(name) };
}

/** The best matches of a query, at most `most`; equally good ones in the given order. */
export function bestMatches(query: string, names: ReadonlyArray<Findable>, most: number): string[] {
  const wanted = fold(query.trim());
  if (!wanted) return names.slice(0, most).map(({ name }) => name);
  const ranks: string[][] = [[], [], [], []];
  for (const { name, folded } of names) {
    const rank = rankOf(wanted, folded);
    const row = ranks[rank];
    if (row && row.length < most) row.push(name);
  }
  return ranks.flat().slice(0, most);
}

/** 0: at the start; 1: at the start of a word; 2: anywhere; 3: letter by letter; 4: not at all. */
function rankOf(wanted: string, folded: string): number {
  const at = folded.indexOf(wanted);
  if (at === 0) return 0;
  if (at > 0) return /[\s/_-]/.test(folded[at - 1] ?? '') || folded.includes(` ${wanted}`) ? 1 : 2;
  let from = 0;
  for (const char of wanted) {
    if (char === ' ') continue;
    const next = folded.indexOf(char, from);
    if (next < 0) return 4;
    from = next + char.length;
  }
  return 3;
}
