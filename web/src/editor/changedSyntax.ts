import { syntaxTree } from '@codemirror/language';
import type { ChangeDesc } from '@codemirror/state';
import type { ViewUpdate } from '@codemirror/view';
import type { SyntaxNode, Tree } from '@lezer/common';
import type { Span } from './visibleMarks';

/**
 * What an update has parsed anew of the visible text; undefined as long as the parser has not reached the end of it.
 */
export function changedSyntax({ startState, state, changes }: ViewUpdate, seen: Span): Span[] | undefined {
  const [before, after] = [syntaxTree(startState), syntaxTree(state)];
  const isBehind = after.length < seen.to && after.type === before.type;
  if (isBehind) return undefined;
  if (before === after) return [];
  const wasBehind = before.length < changes.invertedDesc.mapPos(seen.to, 1);
  return wasBehind ? [seen] : changedNodes(before, after, changes, seen);
}

/**
 * Where two trees differ between two positions of the newer one's text. A parser takes over the nodes of unchanged
 * text, so those that are not the same objects are all there is to find.
 */
export function changedNodes(before: Tree, after: Tree, changes: ChangeDesc, seen: Span): Span[] {
  const back = changes.invertedDesc;
  const was = { from: back.mapPos(seen.from, -1), to: back.mapPos(seen.to, 1) };
  const stale: Span[] = [];
  const isAtItsPlace = (old: SyntaxNode, node: SyntaxNode) =>
    changes.mapPos(old.from, 1) === node.from && changes.mapPos(old.to, -1) === node.to;

  const compare = (old: SyntaxNode, node: SyntaxNode, span: Span): void => {
    if (old.type !== node.type) {
      stale.push(span);
      return;
    }
    const [left, right] = [childrenIn(old, was), childrenIn(node, seen)];
    const places = new Map(left.map(({ tree }, index) => [tree, index]));
    let [from, gone, come] = [span.from, 0, 0];
    /** Looks into what lies between two children that are the same ones. */
    const lookBetween = (leftEnd: number, rightEnd: number, to: number): void => {
      const [one, other] = [left[gone], right[come]];
      const isOne = leftEnd === gone + 1 && rightEnd === come + 1;
      if (isOne && one?.tree && other?.tree) compare(one, other, { from, to });
      else if (leftEnd > gone || rightEnd > come) stale.push({ from, to });
    };
    for (const [index, child] of right.entries()) {
      const place = child.tree ? (places.get(child.tree) ?? -1) : -1;
      const same = left[place];
      if (!same || place < gone || !isAtItsPlace(same, child)) continue;
      lookBetween(place, index, child.from);
      [from, gone, come] = [child.to, place + 1, index + 1];
    }
    lookBetween(left.length, right.length, span.to);
  };

  compare(before.topNode, after.topNode, seen);
  return stale;
}

function childrenIn(node: SyntaxNode, { from, to }: Span): SyntaxNode[] {
  const children: SyntaxNode[] = [];
  for (let child = node.childAfter(from); child && child.from <= to; child = child.nextSibling) children.push(child);
  return children;
}
