import type { Text } from '@codemirror/state';
import { counted, htmlTag, t } from '../i18n/language';
import { type Count, countText } from '../text/count';
import type { Context } from './context';

const PAUSE_MS = 120;
const SLICE_MS = 5;
let timer: ReturnType<typeof setTimeout> | undefined;

/** Brings the count of words to what is on show, soon and in slices, so that no key press waits. */
export function showCount(context: Context): void {
  clearTimeout(timer);
  timer = setTimeout(() => countNow(context), PAUSE_MS);
}

function countNow({ editor, shell, workspace }: Context): void {
  const state = workspace.activeNote ? editor.onShow?.state : undefined;
  if (!state) {
    shell.status.showCount('');
    return;
  }
  const selected = state.selection.ranges.filter((range) => !range.empty);
  const texts = selected.length ? selected.map(({ from, to }) => state.doc.slice(from, to)) : [state.doc];
  const counting = countAll(texts);
  const step = () => {
    const until = performance.now() + SLICE_MS;
    let result = counting.next();
    while (!result.done && performance.now() < until) result = counting.next();
    if (!result.done) timer = setTimeout(step);
    else shell.status.showCount(worded(result.value, selected.length > 0));
  };
  step();
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
