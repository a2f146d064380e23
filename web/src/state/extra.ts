import type { Members } from './migrations';

/**
 * Members this version does not know, as name and JSON. They are written back unchanged, so a newer version's
 * additions survive being opened in this one.
 */
export type Extra = ReadonlyArray<readonly [name: string, json: string]>;

/** The members that are not known. */
export function unknownMembers(value: Members, known: ReadonlyArray<string>): Extra {
  const extra: Array<readonly [string, string]> = [];
  for (const [name, member] of Object.entries(value)) {
    if (known.includes(name)) continue;
    const kept: string[] = [];
    keepJson(member, kept);
    if (kept[0] !== undefined) extra.push([name, kept[0]]);
  }
  return extra;
}

/** Adds a value as JSON. Nesting too deep to serialise is the one thing that cannot be preserved. */
export function keepJson(value: unknown, into: string[]): void {
  try {
    const json = JSON.stringify(value) as string | undefined;
    if (json !== undefined) into.push(json);
  } catch (error) {
    if (!(error instanceof RangeError)) throw error;
  }
}
