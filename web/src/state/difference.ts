import { type Change, diff } from '@codemirror/merge';
import { ChangeSet, Text } from '@codemirror/state';
import type { Edit } from '../text/renames';

/** Texts that differ more than this in one place are not compared any closer there. */
const SCAN_LIMIT = 500;
const TIMEOUT_MS = 50;

/**
 * How an older text comes from a newer one: lengths that stay, and `[removed, …lines]` for what is replaced. Held as
 * the JSON in which it is saved; what was read is turned into that when it is first needed.
 */
export class Difference {
  /** The length of the older text. */
  readonly length: number;
  #read: unknown;
  #json: string | null;

  private constructor(length: number, read: unknown, json: string | null) {
    this.length = length;
    this.#read = read;
    this.#json = json;
  }

  static between(newer: Text, older: Text): Difference {
    const [a, b] = [newer.toString(), older.toString()];
    const close = changeSet(a, b, diff(a, b, { scanLimit: SCAN_LIMIT, timeout: TIMEOUT_MS }));
    // The comparison keeps surrogates together and may miss one that is alone.
    const isExact = close.newLength === older.length && close.apply(newer).eq(older);
    return Difference.#of(isExact ? close : changeSet(a, b, [middle(a, b)]));
  }

  /** Of edits in a text of this length. */
  static of(edits: ReadonlyArray<Edit>, newerLength: number): Difference {
    const changes = edits.map(({ from, to, insert }) => ({ from, to, insert: Text.of(insert.split('\n')) }));
    return Difference.#of(ChangeSet.of(changes, newerLength));
  }

  /** From a document; null if it does not belong to a newer text of this length. */
  static read(value: unknown, newerLength: number): Difference | null {
    if (!Array.isArray(value)) return null;
    let [from, to] = [0, 0];
    for (const part of value as unknown[]) {
      const [removed, ...lines] = Array.isArray(part) ? (part as unknown[]) : [part];
      if (!Number.isSafeInteger(removed) || (removed as number) < 0 || !lines.every(isLine)) return null;
      const added = lines.length ? lines.reduce((sum, line) => sum + line.length + 1, -1) : 0;
      // Parts of nothing would be put together wrongly with another difference.
      if (removed === 0 && added === 0) return null;
      from += removed as number;
      to += Array.isArray(part) ? added : (removed as number);
    }
    return from === newerLength ? new Difference(to, value, null) : null;
  }

  static #of(changes: ChangeSet): Difference {
    return new Difference(changes.newLength, null, JSON.stringify(changes.toJSON()));
  }

  get json(): string {
    this.#json ??= JSON.stringify(this.#read);
    this.#read = null;
    return this.#json;
  }

  /** The older text. */
  applyTo(newer: Text): Text {
    return this.changes.apply(newer);
  }

  /** From the same newer text to one that is older still. */
  followedBy(older: Difference): Difference {
    return Difference.#of(this.changes.compose(older.changes));
  }

  /** How much came and went from the older text to the newer. */
  get extent(): { readonly added: number; readonly removed: number } {
    let [added, removed] = [0, 0];
    this.changes.iterChanges((fromA, toA, fromB, toB) => {
      added += toA - fromA;
      removed += toB - fromB;
    });
    return { added, removed };
  }

  /** From the newer text to the older. */
  get changes(): ChangeSet {
    return ChangeSet.fromJSON(JSON.parse(this.json));
  }
}

type Range = Pick<Change, 'fromA' | 'toA' | 'fromB' | 'toB'>;

function changeSet(newer: string, older: string, ranges: ReadonlyArray<Range>): ChangeSet {
  const changes = ranges.map(({ fromA, toA, fromB, toB }) => ({
    from: fromA,
    to: toA,
    insert: Text.of(older.slice(fromB, toB).split('\n')),
  }));
  return ChangeSet.of(changes, newer.length);
}

/** All between what both begin with and what both end with. */
function middle(a: string, b: string): Range {
  const most = Math.min(a.length, b.length);
  let start = 0;
  while (start < most && a.charCodeAt(start) === b.charCodeAt(start)) start++;
  let end = 0;
  while (end < most - start && a.charCodeAt(a.length - 1 - end) === b.charCodeAt(b.length - 1 - end)) end++;
  return { fromA: start, toA: a.length - end, fromB: start, toB: b.length - end };
}

function isLine(value: unknown): value is string {
  return typeof value === 'string' && !/[\r\n]/.test(value);
}
