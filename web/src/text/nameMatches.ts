import { fold } from './fold';

/** What a list of names is searched in: each with its folded form. */
export interface Findable {
  readonly name: string;
  readonly folded: string;
}

export function findable(name: string): Findable {
  return { name, folded: fold(name) };
}

/** How well a name fits what is wanted, best first. */
export const Fit = { equal: 0, start: 1, word: 2, inside: 3, letters: 4, none: 5 } as const;

/** The best matches of a query, at most `most`; equally good ones in the given order. */
export function bestMatches(query: string, names: ReadonlyArray<Findable>, most: number): string[] {
  const wanted = fold(query.trim());
  if (!wanted) return names.slice(0, most).map(({ name }) => name);
  const fits: string[][] = [[], [], [], [], []];
  for (const { name, folded } of names) {
    const row = fits[fitOf(wanted, folded)];
    if (row && row.length < most) row.push(name);
  }
  return fits.flat().slice(0, most);
}

/** Both are folded. */
export function fitOf(wanted: string, name: string): number {
  if (name === wanted) return Fit.equal;
  const first = name.indexOf(wanted);
  if (first === 0) return Fit.start;
  for (let at = first; at > 0; at = name.indexOf(wanted, at + 1)) {
    if (!/[\p{L}\p{N}]/u.test(name[at - 1] ?? '')) return Fit.word;
  }
  if (first > 0) return Fit.inside;
  return hasInOrder(name, wanted) ? Fit.letters : Fit.none;
}

function hasInOrder(name: string, wanted: string): boolean {
  let from = 0;
  for (const char of wanted) {
    if (char === ' ') continue;
    const at = name.indexOf(char, from);
    if (at < 0) return false;
    from = at + char.length;
  }
  return true;
}
