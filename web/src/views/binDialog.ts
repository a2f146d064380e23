import { htmlTag, t } from '../i18n/language';
import type { BinnedNote } from '../state/model';
import { titleOf } from '../state/titleOf';
import type { Workspace } from '../state/workspace';
import { headOf } from '../text/title';
import { closeDialog, openDialog } from './dialog';
import { h } from '../dom/elements';
import { rootPixels } from './rootStyle';
import { WindowedList } from './windowedList';

const ROW_REMS = 3.875;

/** Deleted notes, latest first. Enter restores one. */
export function binDialog(options: {
  readonly workspace: Workspace;
  readonly onRestore: (id: string) => void;
  readonly onEmpty: () => void;
  readonly onClose: () => void;
}): void {
  const { bin, readOnly } = options.workspace;
  const list = new WindowedList<BinnedNote>({
    rowHeight: () => rootPixels(ROW_REMS),
    idPrefix: 'binned-',
    key: ({ note }) => note.id,
    fill: fillRow,
    onActivate: ({ note }) => {
      closeDialog();
      options.onRestore(note.id);
    },
    onLeave: (upwards) => {
      if (!upwards) closeDialog();
    },
  });
  list.element.dataset.tLabel = 'bin.title';
  list.element.setAttribute('aria-label', t('bin.title'));
  list.setItems(bin);
  const empty = h('button', {
    class: 'button',
    t: 'bin.empty',
    attrs: { type: 'button' },
    on: { click: () => options.onEmpty() },
  });
  const content = bin.length
    ? [
        list.element,
        h(
          'div',
          { class: 'dialog-foot' },
          h('p', { class: 'quiet grow', t: 'bin.hint' }),
          ...(readOnly ? [] : [empty]),
        ),
      ]
    : [h('p', { class: 'quiet bin-nothing', t: 'bin.nothing' })];
  openDialog({
    title: 'bin.title',
    class: 'bin',
    content,
    ...(bin.length ? { focus: list.element } : {}),
    onClose: options.onClose,
  });
}

function fillRow(row: HTMLElement, { note, deleted }: BinnedNote): void {
  const { title, excerpt } = headOf(note.text);
  const date = new Date(deleted).toLocaleDateString(htmlTag(), { dateStyle: 'medium' });
  const below = note.name === null ? excerpt : title;
  const name = titleOf(note);
  row.classList.toggle('is-untitled', !name);
  row.classList.toggle('is-empty', !below);
  row.replaceChildren(
    h(
      'div',
      { class: 'row-title' },
      h('span', { class: 'row-name' }, name || t('untitled')),
      h('span', { class: 'row-date' }, date),
    ),
    h('div', { class: 'row-excerpt' }, below || (name ? '' : t('sidebar.emptyNote'))),
  );
}
