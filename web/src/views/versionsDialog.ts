import type { Text } from '@codemirror/state';
import { h } from '../dom/elements';
import { htmlTag, t } from '../i18n/language';
import type { Passage } from '../state/passages';
import { openDialog, closeDialog } from './dialog';
import { fillPassages } from './passageList';
import { rootPixels } from './rootStyle';
import { WindowedList } from './windowedList';

const ROW_REMS = 5.125;

export interface ListedVersion {
  readonly key: string;
  readonly taken: number;
  readonly guarded: boolean;
  readonly text: () => Text;
  readonly extent: () => { readonly added: number; readonly removed: number };
}

export interface VersionsOptions {
  readonly versions: ReadonlyArray<ListedVersion>;
  readonly readOnly: boolean;
  /** What differs between a version and the current text. */
  readonly passages: (version: Text) => ReadonlyArray<Passage>;
  readonly onRestore: (version: Text) => void;
  readonly onRestorePassage: (passage: Passage) => void;
  readonly onClose: () => void;
}

/** The versions of a note, and how the chosen one differs from the current text. */
export function versionsDialog(options: VersionsOptions): void {
  const { versions, readOnly, onClose } = options;
  const [newest] = versions;
  if (!newest) {
    const content = [h('p', { class: 'quiet', t: 'versions.nothing' })];
    openDialog({ title: 'versions.title', class: 'versions', content, onClose });
    return;
  }
  let shown = newest;
  const differences = h('div', {
    class: 'differences',
    tLabel: 'versions.differences',
    attrs: { role: 'region', tabindex: '0' },
  });
  const draw = (focusAt = -1) => {
    fillPassages(
      differences,
      options.passages(shown.text()),
      readOnly
        ? null
        : (passage, at) => {
            options.onRestorePassage(passage);
            draw(at);
          },
    );
    if (focusAt < 0) return;
    const buttons = differences.querySelectorAll('button');
    (buttons[Math.min(focusAt, buttons.length - 1)] ?? differences).focus();
  };
  const list = new WindowedList<ListedVersion>({
    rowHeight: () => rootPixels(ROW_REMS),
    idPrefix: 'version-',
    key: ({ key }) => key,
    fill: fillRow,
    onActivate: (version) => {
      shown = version;
      list.select(version.key);
      draw();
      differences.scrollTop = 0;
    },
    onLeave: (upwards) => {
      if (!upwards) closeDialog();
    },
  });
  list.element.dataset.tLabel = 'versions.list';
  list.element.setAttribute('aria-label', t('versions.list'));
  list.setItems(versions);
  list.select(newest.key);
  draw();
  const restore = h('button', {
    class: 'button primary',
    t: 'versions.restore',
    attrs: { type: 'button' },
    on: {
      click: () => {
        closeDialog();
        options.onRestore(shown.text());
      },
    },
  });
  openDialog({
    title: 'versions.title',
    class: 'versions full',
    content: [
      h('div', { class: 'versions-body' }, list.element, differences),
      h(
        'div',
        { class: 'dialog-foot' },
        h('p', { class: 'quiet grow', t: 'versions.hint' }),
        ...(readOnly ? [] : [restore]),
      ),
    ],
    focus: list.element,
    onClose,
  });
}

function fillRow(row: HTMLElement, { taken, guarded, extent }: ListedVersion): void {
  const date = new Date(taken).toLocaleString(htmlTag(), { dateStyle: 'medium', timeStyle: 'short' });
  const number = (n: number) => n.toLocaleString(htmlTag());
  const { added, removed } = extent();
  row.replaceChildren(
    h('div', { class: 'row-title' }, h('span', { class: 'row-name' }, date)),
    h('div', { class: 'row-excerpt' }, t('versions.extent', { added: number(added), removed: number(removed) })),
    ...(guarded ? [h('div', { class: 'row-excerpt' }, t('versions.guarded'))] : []),
  );
}
