import type { ClosedTab, Tabs } from './model';

/** How many closed tabs can be reopened. */
export const HISTORY = 50;

export type CloseScope = 'others' | 'right' | 'all';

export function openTab(tabs: Tabs, id: string, index = afterActive(tabs)): Tabs {
  if (tabs.open.includes(id)) return { ...tabs, active: id };
  const open = [...tabs.open];
  open.splice(Math.max(0, Math.min(index, open.length)), 0, id);
  return { ...tabs, open, active: id, closed: tabs.closed.filter((tab) => tab.id !== id) };
}

/** A new tab opens next to the active one. */
function afterActive(tabs: Tabs): number {
  const at = tabs.active === null ? -1 : tabs.open.indexOf(tabs.active);
  return at < 0 ? tabs.open.length : at + 1;
}

/** Moves an open tab within the row, at most to its ends. */
export function moveTab(tabs: Tabs, id: string, index: number): Tabs {
  const open = tabs.open.filter((one) => one !== id);
  const at = Math.max(0, Math.min(index, open.length));
  if (open.length === tabs.open.length || tabs.open[at] === id) return tabs;
  open.splice(at, 0, id);
  return { ...tabs, open };
}

export function closeTabs(tabs: Tabs, ids: ReadonlyArray<string>): Tabs {
  const leaving = new Set(ids);
  const gone: ClosedTab[] = [];
  tabs.open.forEach((id, index) => {
    if (leaving.has(id)) gone.push({ id, index });
  });
  if (!gone.length) return tabs;
  const open = tabs.open.filter((id) => !leaving.has(id));
  const kept = tabs.closed.filter((tab) => !leaving.has(tab.id));
  return { ...tabs, open, active: nextActive(tabs, leaving), closed: [...kept, ...gone].slice(-HISTORY) };
}

/** Closes the tabs of deleted notes; notes without a tab count as closed too, so that reopening restores them. */
export function deleteTabs(tabs: Tabs, ids: ReadonlyArray<string>): Tabs {
  const open = new Set(tabs.open);
  const hidden = new Set(ids.filter((id) => !open.has(id)));
  const closed = closeTabs(tabs, ids);
  const others = closed.closed.filter(({ id }) => !hidden.has(id));
  return { ...closed, closed: [...others, ...[...hidden].map((id) => ({ id, index: 0 }))].slice(-HISTORY) };
}

/** When the active tab closes, its right neighbour becomes active, otherwise its left one. */
function nextActive(tabs: Tabs, leaving: ReadonlySet<string>): string | null {
  if (tabs.active !== null && !leaving.has(tabs.active)) return tabs.active;
  const at = tabs.active === null ? 0 : tabs.open.indexOf(tabs.active);
  const right = tabs.open.slice(at).find((id) => !leaving.has(id));
  return (
    right ??
    tabs.open
      .slice(0, at)
      .reverse()
      .find((id) => !leaving.has(id)) ??
    null
  );
}

/** Removes tabs of permanently deleted notes, open and closed ones. */
export function forgetTabs(tabs: Tabs, ids: ReadonlyArray<string>): Tabs {
  const closed = closeTabs(tabs, ids);
  return { ...closed, closed: closed.closed.filter((tab) => !ids.includes(tab.id)) };
}

/** The tabs that closing means, seen from one of them. */
export function tabsInScope(tabs: Tabs, scope: CloseScope, from = tabs.active): ReadonlyArray<string> {
  if (scope === 'all') return tabs.open;
  if (from === null) return [];
  if (scope === 'others') return tabs.open.filter((id) => id !== from);
  return tabs.open.slice(tabs.open.indexOf(from) + 1);
}

/** The tab `step` positions from the active one, wrapping around. */
export function neighbour(tabs: Tabs, step: number): string | null {
  const count = tabs.open.length;
  if (!count) return null;
  const at = tabs.active === null ? 0 : tabs.open.indexOf(tabs.active);
  return tabs.open[(((at + step) % count) + count) % count] ?? null;
}

/** Tabs as read from a document, reduced to existing notes; closed tabs may also refer to the bin. */
export function soundTabs(tabs: Tabs, notes: ReadonlySet<string>, bin: ReadonlySet<string>): Tabs {
  const open = [...new Set(tabs.open)].filter((id) => notes.has(id));
  const closed = tabs.closed.filter((tab) => (notes.has(tab.id) || bin.has(tab.id)) && !open.includes(tab.id));
  const active = tabs.active !== null && open.includes(tabs.active) ? tabs.active : (open[0] ?? null);
  return { ...tabs, open, active, closed: closed.slice(-HISTORY) };
}
