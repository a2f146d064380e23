import type { ChangeSpec } from '@codemirror/state';

interface Change {
  from: number;
  to: number;
  insert: string;
}

/**
 * What makes a table's lines the new ones, of which one may be added. Only the padding between the cells changes: what
 * stays must not count as deleted, for the versions of the note and for marks in the text.
 */
export function tableChanges(
  before: ReadonlyArray<string>,
  after: ReadonlyArray<string>,
  start: number,
  added: number,
): ChangeSpec[] {
  const more = after.length - before.length;
  const changes: ChangeSpec[] = [];
  let from = start;
  for (const [index, line] of before.entries()) {
    if (more && index === added) changes.push({ from, insert: `${after[added] ?? ''}\n` });
    changes.push(...lineChanges(line, after[more && index >= added ? index + more : index] ?? '', from));
    from += line.length + 1;
  }
  if (more && added >= before.length) changes.push({ from: from - 1, insert: `\n${after[added] ?? ''}` });
  return changes;
}

function lineChanges(before: string, after: string, start: number): Change[] {
  const changes: Change[] = [];
  const at = (from: number) => {
    const last = changes.at(-1);
    if (last?.to === start + from) return last;
    const change = { from: start + from, to: start + from, insert: '' };
    changes.push(change);
    return change;
  };
  let [i, j] = [0, 0];
  while (i < before.length || j < after.length) {
    const [one, other] = [before[i] ?? '', after[j] ?? ''];
    if (one === other) [i, j] = [i + 1, j + 1];
    else if (isInserted(one, other)) [at(i).insert, j] = [at(i).insert + other, j + 1];
    else [at(i).to, i] = [start + i + 1, i + 1];
  }
  return changes;
}

/** Padding is the first that comes or goes, then bars. */
function isInserted(one: string, other: string): boolean {
  if (one === '' || other === '') return other !== '';
  if (other === ' ' || one === ' ') return other === ' ';
  if (other === '-' || one === '-') return other === '-';
  return '|:'.includes(other);
}
