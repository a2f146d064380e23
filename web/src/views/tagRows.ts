import { h } from '../dom/elements';
import type { TagCount } from '../state/noteIndex';
import { tagKey } from '../text/titleKey';

/** A tag in its tree. */
export interface TagRow {
  readonly name: string;
  readonly key: string;
  readonly level: number;
  readonly count: number;
  readonly isParent: boolean;
  /** Its place among those of the same level below the same tag, from 1, and how many they are. */
  readonly position: number;
  readonly siblings: number;
}

/** The rows of tags that are in the order of the tree; those below a tag only if all levels above are open. */
export function tagRows(tags: ReadonlyArray<TagCount>, open: ReadonlySet<string>): TagRow[] {
  const rows: Array<Omit<TagRow, 'siblings'> & { readonly above: string }> = [];
  const counts = new Map<string, number>();
  const parents = new Set<string>();
  for (const { name, count } of tags) {
    const key = tagKey(name);
    const above = key.slice(0, Math.max(0, key.lastIndexOf('/')));
    parents.add(above);
    if (!isOpen(above, open)) continue;
    const position = (counts.get(above) ?? 0) + 1;
    counts.set(above, position);
    rows.push({ name, key, level: key.split('/').length, count, isParent: false, position, above });
  }
  return rows.map(({ above, ...row }) => ({
    ...row,
    isParent: parents.has(row.key),
    siblings: counts.get(above) ?? 1,
  }));
}

function isOpen(above: string, open: ReadonlySet<string>): boolean {
  if (!above) return true;
  const parts = above.split('/');
  return parts.every((_, index) => open.has(parts.slice(0, index + 1).join('/')));
}

export function tagRowElement(row: TagRow, isExpanded: boolean): HTMLElement {
  const { name, key, level, count, isParent, position, siblings } = row;
  const element = h(
    'div',
    {
      class: 'tag-row',
      attrs: {
        id: `tag-${key}`,
        role: 'treeitem',
        'aria-level': String(level),
        'aria-posinset': String(position),
        'aria-setsize': String(siblings),
        ...(isParent ? { 'aria-expanded': String(isExpanded) } : {}),
      },
    },
    h('span', { class: 'tag-fold', attrs: { 'aria-hidden': 'true' } }),
    h('span', { class: 'tag-name' }, name.split('/').at(-1) ?? ''),
    ' ',
    h('span', { class: 'tag-count' }, String(count)),
  );
  element.style.setProperty('--level', String(level - 1));
  return element;
}
