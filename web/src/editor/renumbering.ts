import { type ChangeSpec, EditorState, type Text, type Transaction } from '@codemirror/state';
import { isInCode } from './codePlace';

/** How far around a change a list is followed. */
const MOST_LINES = 2000;
const orderedItem = /^( *)(\d{1,9})[.)](?=\s|$)/;
const anyItem = /^( *)(?:[-*+]|\d{1,9}[.)])(?=\s|$)/;

interface Item {
  readonly from: number;
  readonly written: string;
  readonly line: number;
}

/** Ordered lists keep counting around an item that is indented, moved or deleted. */
export const renumbering = EditorState.transactionFilter.of((transaction) => {
  const moves = ['move', 'delete', 'input.indent'].some((name) => transaction.isUserEvent(name));
  if (!transaction.docChanged || !moves) return transaction;
  const { startState, newDoc } = transaction;
  const isInLine = newDoc.lines === startState.doc.lines && transaction.isUserEvent('delete');
  if (isInLine && !transaction.isUserEvent('delete.dedent')) return transaction;
  const changes = renumbered(transaction);
  return changes.length ? [transaction, { changes, sequential: true }] : transaction;
});

function renumbered({ startState, newDoc, changes }: Transaction): ChangeSpec[] {
  let [first, last, at] = [Number.POSITIVE_INFINITY, 0, 0];
  /** The least number of what was changed, by indent: a list whose first item is gone begins with it. */
  const gone = new Map<number, number>();
  changes.iterChangedRanges((fromOld, toOld, fromNew, toNew) => {
    if (first > last) at = fromOld;
    first = Math.min(first, newDoc.lineAt(fromNew).number);
    last = Math.max(last, newDoc.lineAt(toNew).number);
    const lines = [startState.doc.lineAt(fromOld).number, startState.doc.lineAt(toOld).number] as const;
    for (let line = lines[0]; line <= Math.min(lines[1], lines[0] + MOST_LINES); line++) {
      const item = orderedItem.exec(startState.doc.line(line).text);
      if (!item) continue;
      const indent = item[1]?.length ?? 0;
      gone.set(indent, Math.min(gone.get(indent) ?? Number.POSITIVE_INFINITY, Number(item[2])));
    }
  });
  if (isInCode(startState, at)) return [];
  return listsAround(newDoc, first, last).flatMap(({ indent, items }) => {
    if ((items[0]?.line ?? 0) > last + 1 || (items.at(-1)?.line ?? 0) < first - 1) return [];
    const numbers = items.map(({ written }) => Number(written));
    if (items.length > 1 && numbers.every((number) => number === numbers[0])) return [];
    const start = Math.min(...numbers, gone.get(indent) ?? Number.POSITIVE_INFINITY);
    return items.flatMap(({ from, written }, index) => {
      const insert = String(start + index);
      return insert === written ? [] : [{ from, to: from + written.length, insert }];
    });
  });
}

interface List {
  readonly indent: number;
  readonly items: Item[];
}

/** The ordered lists that the lines belong to, with those in and around them. */
function listsAround(doc: Text, first: number, last: number): List[] {
  const goesOn = (line: number) => /^(?:\s|$)/.test(doc.line(line).text) || anyItem.test(doc.line(line).text);
  let [begin, end] = [first, last];
  while (begin > 1 && first - begin < MOST_LINES && goesOn(begin - 1)) begin--;
  while (end < doc.lines && end - last < MOST_LINES && goesOn(end + 1)) end++;
  const lists: List[] = [];
  let open: List[] = [];
  let wasEmpty = false;
  for (let line = begin; line <= end; line++) {
    const { from, text } = doc.line(line);
    const indent = anyItem.exec(text)?.[1]?.length;
    if (indent === undefined) {
      wasEmpty = text.trim() === '';
      if (!goesOn(line)) open = [];
      continue;
    }
    const written = orderedItem.exec(text)?.[2];
    open = open.filter((list) => list.indent < indent || (list.indent === indent && written !== undefined));
    if (written === undefined) continue;
    let list = open.at(-1);
    const isNew = wasEmpty && written === '1';
    wasEmpty = false;
    if (list?.indent !== indent || isNew) {
      open = open.filter((one) => one.indent < indent);
      list = { indent, items: [] };
      open.push(list);
      lists.push(list);
    }
    list.items.push({ from: from + indent, written, line });
  }
  return lists;
}
