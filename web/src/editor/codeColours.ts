import { highlightCode } from '@lezer/highlight';
import { classNames } from './highlight';
import { languageOfFence } from './languages';

const LONGEST = 30_000;

/** A run of code and the class names that colour it. */
export type Run = readonly [text: string, className: string];

/**
 * Highlighted code. If the language is not loaded yet, the code stays plain while it loads; `onLoaded` is
 * called once it has.
 */
export function colourCode(code: string, label: string, onLoaded: () => void): Run[] {
  const description = code.length > LONGEST ? null : languageOfFence(label);
  const language = description?.support?.language;
  if (!language) {
    if (description) void description.load().then(onLoaded);
    return [[code, '']];
  }
  const runs: Run[] = [];
  const put = (text: string, classes: string) => runs.push([text, classes]);
  highlightCode(code, language.parser.parse(code), classNames, put, () => put('\n', ''));
  return runs;
}
