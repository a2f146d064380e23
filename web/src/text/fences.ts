import type { Text } from '@codemirror/state';

/** The opening fence of the current code block, such as "```" or "~~~~"; empty outside code. */
export type Fence = string;

const known = new WeakMap<Text, Map<Fence, Fence>>();
const edge = /^ {0,3}(`{3,}|~{3,})(.*)$/s;

/** The code block open at the start of the line at `position`. */
export function fenceAt(text: Text, position: number): Fence {
  let fence: Fence = '';
  let part = text;
  let from = 0;
  while (part.children) {
    const { children } = part;
    let index = 0;
    for (; index < children.length - 1; index++) {
      const child = children[index] as Text;
      if (from + child.length >= position) break;
      fence = fenceAfter(child, fence);
      from += child.length + 1;
    }
    part = children[index] as Text;
  }
  for (const line of part.iterLines()) {
    if (from >= position) break;
    fence = fenceAfterLine(fence, line);
    from += line.length + 1;
  }
  return fence;
}

/** Nodes of a text are immutable, so the effect of each on a fence is cached. */
function fenceAfter(part: Text, before: Fence): Fence {
  const results = known.get(part) ?? new Map<Fence, Fence>();
  known.set(part, results);
  let after = results.get(before);
  if (after === undefined) {
    after = before;
    if (part.children) for (const child of part.children) after = fenceAfter(child, after);
    else for (const line of part.iterLines()) after = fenceAfterLine(after, line);
    results.set(before, after);
  }
  return after;
}

/** The fence after a line, given the one before it. */
export function fenceAfterLine(before: Fence, line: string): Fence {
  const [, marks = '', info = ''] = edge.exec(line) ?? [];
  if (!marks) return before;
  if (!before) return marks.startsWith('`') && info.includes('`') ? '' : marks;
  return marks.startsWith(before) && !info.trim() ? '' : before;
}
