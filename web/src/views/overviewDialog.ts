import { h } from '../dom/elements';
import { t } from '../i18n/language';
import { isDelete } from '../keyboard/keys';
import { titleOf } from '../state/titleOf';
import type { Workspace } from '../state/workspace';
import { headOf } from '../text/title';
import { closeDialog, openDialog } from './dialog';

export interface OverviewActions {
  activate(id: string): void;
  close(id: string): void;
}

/** All open tabs, each with the beginning of its note. */
export function overviewDialog(workspace: Workspace, actions: OverviewActions, onClose: () => void): void {
  const grid = h('div', { class: 'overview', tLabel: 'overview.title', attrs: { role: 'listbox' } });
  const draw = (focusAt: number) => {
    const { open, active } = workspace.tabs;
    grid.replaceChildren(...open.map((id) => card(workspace, id, id === active)));
    const cards = [...grid.children] as HTMLElement[];
    const at = Math.max(0, Math.min(focusAt, cards.length - 1));
    cards.forEach((element, index) => {
      element.tabIndex = index === at ? 0 : -1;
    });
    if (!cards.length) grid.replaceChildren(h('p', { class: 'quiet', t: 'overview.empty' }));
    return cards[at];
  };
  const choose = (id: string | undefined) => {
    if (id === undefined) return;
    closeDialog();
    actions.activate(id);
  };
  grid.addEventListener('click', (event) => choose(cardOf(event)?.dataset.id));
  grid.addEventListener('keydown', (event) => {
    const at = cardOf(event);
    const cards = [...grid.children] as HTMLElement[];
    const index = at ? cards.indexOf(at) : -1;
    const columns = cards.filter((element) => element.offsetTop === cards[0]?.offsetTop).length;
    const step = { ArrowLeft: -1, ArrowRight: 1, ArrowUp: -columns, ArrowDown: columns }[event.key];
    if (step !== undefined) {
      const next = cards[index + step];
      if (next) moveFocus(cards, next);
    } else if (event.key === 'Enter' || event.key === ' ') choose(at?.dataset.id);
    else if (isDelete(event) && at?.dataset.id) {
      actions.close(at.dataset.id);
      draw(index)?.focus();
    } else return;
    event.preventDefault();
  });
  const first = draw(Math.max(0, workspace.tabs.open.indexOf(workspace.tabs.active ?? '')));
  openDialog({
    title: 'overview.title',
    class: 'wide',
    content: [grid, h('p', { class: 'quiet', t: 'overview.hint' })],
    ...(first ? { focus: first } : {}),
    onClose,
  });
}

function card(workspace: Workspace, id: string, active: boolean): HTMLElement {
  const note = workspace.note(id);
  const title = (note && titleOf(note)) || t('untitled');
  const excerpt = note ? headOf(note.text).excerpt : '';
  const element = h(
    'div',
    { class: 'card', attrs: { role: 'option', 'aria-selected': String(active) } },
    h('div', { class: 'card-title' }, title),
    h('div', { class: 'card-excerpt' }, excerpt),
  );
  element.dataset.id = id;
  return element;
}

function cardOf(event: Event): HTMLElement | null {
  return (event.target as Element).closest<HTMLElement>('.card');
}

function moveFocus(cards: ReadonlyArray<HTMLElement>, next: HTMLElement): void {
  for (const element of cards) element.tabIndex = element === next ? 0 : -1;
  next.focus();
}
