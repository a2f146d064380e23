import type { Text } from '@codemirror/state';
import { counted, htmlTag, t } from '../i18n/language';
import { type Count, countText } from '../text/count';
import { inSlices } from '../time/slices';
import type { Context } from '../commands/context';

/** Longer than between the keys of most typists: each new count costs a frame of the whole window. */
const PAUSE_MS = 300;
const SLICE_MS = 5;
let cancel = (): void => undefined;

/** Updates the word count shortly after a change, in slices, without delaying key presses. */
export function showCount(context: Context): void {
  cancel();
  let isSelection = false;
  const work = function* () {
    const state = context.workspace.activeNote ? context.editor.shownNote?.state : undefined;
    if (!state) return null;
    const selected = state.selection.ranges.filter((range) => !range.empty);
    isSelection = selected.length > 0;
    return yield* countAll(isSelection ? selected.map(({ from, to }) => state.doc.slice(from, to)) : [state.doc]);
  };
  cancel = inSlices(work(), {
    slice: SLICE_MS,
    delay: PAUSE_MS,
    onDone: (count) => context.shell.status.showCount(count ? worded(count, isSelection) : ''),
  });
}

function* countAll(texts: ReadonlyArray<Text>): Generator<undefined, Count> {
  let words = 0;
  let characters = 0;
  for (const text of texts) {
    const count = yield* countText(text);
    words += count.words;
    characters += count.characters;
  }
  return { words, characters };
}

function worded({ words, characters }: Count, isSelection: boolean): string {
  const numbers = new Intl.NumberFormat(htmlTag());
  const count = [counted('count.words', words), counted('count.characters', characters)]
    .join(' · ')
    .replace(/\d{4,}/g, (digits) => numbers.format(Number(digits)));
  return isSelection ? t('count.selected', { count }) : count;
}
