import { shortDate } from '../i18n/shortDate';
import { counted, t } from '../i18n/language';
import { h } from '../dom/elements';
import type { Note } from '../state/model';
import { isTitled, MOST, matchTitles, type TitleMatch } from '../state/titleMatches';
import { titleOf } from '../state/titleOf';
import type { Workspace } from '../state/workspace';
import { inSlices } from '../time/slices';
import { type Choice, choiceDialog } from './choiceDialog';

export interface SwitcherActions {
  open(id: string): void;
  create(title: string): void;
}

const SLICE_MS = 16;

/** Goes to a note by its title, the one edited last first; the last row creates one with a title that is new. */
export function switcherDialog(workspace: Workspace, actions: SwitcherActions, onClose: () => void): void {
  const notes = [...workspace.notesInOrder()].sort((one, other) => other.updated - one.updated);
  const { active } = workspace.tabs;
  // Who has not typed yet wants another note than the one that is open.
  const others = notes.filter(({ id }) => id !== active);
  const folded = new Map<Note, string>();
  choiceDialog({
    title: 'switcher.title',
    label: 'switcher.label',
    prefix: 'switcher',
    find: (query, show) => {
      const title = query.trim();
      return inSlices(matchTitles(title ? notes : others, query, folded), {
        slice: SLICE_MS,
        onDone: (matches) => {
          const isNew = title !== '' && !workspace.readOnly && !matches.some(({ note }) => isTitled(note, title));
          show([
            ...matches.map((match) => noteChoice(match, actions)),
            ...(isNew ? [creation(title, () => actions.create(title))] : []),
          ]);
        },
      });
    },
    outcome: (choices, query) => {
      const found = choices.filter(({ name }) => name !== CREATE).length;
      if (found >= MOST) return t('switcher.first', { n: MOST });
      return found ? counted('search.count', found) : query ? t('search.none', { query }) : t('sidebar.empty');
    },
    onClose,
  });
}

const CREATE = 'create';

function noteChoice({ note, marked }: TitleMatch, actions: SwitcherActions): Choice {
  return {
    name: note.id,
    label: titleOf(note) || t('untitled'),
    aside: h('span', { class: 'row-date' }, shortDate(note.updated, Date.now())),
    marked,
    run: () => actions.open(note.id),
  };
}

function creation(title: string, run: () => void): Choice {
  return { name: CREATE, label: t('switcher.create', { title }), aside: h('span'), marked: [], run };
}
