import { type Fence, fenceAfterLine } from './fences';
import { stripMarks } from './title';

export interface Heading {
  readonly level: number;
  readonly title: string;
  readonly from: number;
}

const atx = /^ {0,3}(#{1,6})(?:[ \t]+(.*))?$/;
const underline = /^ {0,3}(=+|-+)[ \t]*$/;
/** Lines that no underline makes a heading of. */
const noTitle = /^\s*(?:>|[-*+]\s|\d{1,9}[.)]\s|\||#{1,6}\s|$)|^(?: {4}|\t)/;

/** The headings of a Markdown text, in order. */
export function headingsOf(lines: Iterable<string>): Heading[] {
  const found: Heading[] = [];
  let fence: Fence = '';
  let before = '';
  let at = 0;
  for (const line of lines) {
    const after = fenceAfterLine(fence, line);
    const [, marks] = (!fence && !after && atx.exec(line)) || [];
    const under = !fence && !after && !noTitle.test(before) ? underline.exec(line)?.[1] : undefined;
    if (marks) found.push({ level: marks.length, title: stripMarks(line), from: at });
    else if (under) {
      found.push({ level: under[0] === '=' ? 1 : 2, title: stripMarks(before), from: at - before.length - 1 });
    }
    before = fence || after || marks ? '' : line;
    fence = after;
    at += line.length + 1;
  }
  return found.filter(({ title }) => title !== '');
}
