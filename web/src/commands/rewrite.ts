import type { Note } from '../state/model';
import type { NoteText } from '../state/noteText';
import { type Edit, inverse } from '../text/renames';
import type { Context } from './context';

/** What is to change in a text, and what would take it back from a text that has changed since. */
export interface Rewriting {
  readonly edits: (text: string) => ReadonlyArray<Edit>;
  readonly back: (text: string) => ReadonlyArray<Edit>;
}

interface Written {
  readonly id: string;
  readonly text: NoteText;
  readonly back: ReadonlyArray<Edit>;
  /** The text had nothing before that looks like the result. */
  readonly isDistinct: boolean;
}

/** Rewrites the texts of several notes as one step; returns how many, and what takes the step back. */
export function rewriteNotes(context: Context, notes: ReadonlyArray<Note>, { edits, back }: Rewriting) {
  const { workspace } = context;
  const plans = notes.flatMap((note) => {
    const before = note.text.toString();
    const found = edits(before);
    const isDistinct = back(before).length === 0;
    return found.length ? [{ note, edits: found, back: inverse(before, found), isDistinct }] : [];
  });
  apply(context, plans);
  const written = plans.flatMap(({ note, ...plan }): Written[] => {
    const text = workspace.note(note.id)?.text;
    return text ? [{ id: note.id, text, back: plan.back, isDistinct: plan.isDistinct }] : [];
  });
  const undo = () => {
    const reverse = written.flatMap(({ id, text, back: exact, isDistinct }) => {
      const note = workspace.note(id);
      if (!note) return [];
      if (note.text.eq(text)) return [{ note, edits: exact }];
      const edits = isDistinct ? back(note.text.toString()) : [];
      return edits.length ? [{ note, edits }] : [];
    });
    apply(context, reverse);
  };
  return { count: written.length, undo };
}

function apply(
  { workspace, editor }: Context,
  plans: ReadonlyArray<{ readonly note: Note; readonly edits: ReadonlyArray<Edit> }>,
): void {
  workspace.rewrite(
    new Map(
      plans.map(({ note, edits }) => {
        const back = inverse(note.text.toString(), edits);
        return [note.id, { text: editor.rewrite(note, edits), back }];
      }),
    ),
  );
}
