import { highlightCode } from '@lezer/highlight';
import { classNames } from './highlight';
import { languageOfFence } from './languages';

const LONGEST = 30_000;

/** A run of code and the class names that its colour comes from. */
export type Run = readonly [text: string, className: string];

/**
 * Code in the colours of its language. A language that is not there yet leaves the code bare and is
 * fetched from the bundle; `onLoaded` tells when it would come out better.
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
