import { type Fence, fenceAfterLine } from './fences';

const TAG_CHARACTER = /[\p{L}\p{N}_-]/u;

/**
 * Whether a text has the tag "#tag" or one below it, "#tag/part". Text and tag are both folded. A tag stands at the
 * start of a word, and nothing in code is one.
 */
export function hasTag(text: string, tag: string): boolean {
  const wanted = `#${tag}`;
  for (let at = text.indexOf(wanted); at >= 0; at = text.indexOf(wanted, at + 1)) {
    const before = text[at - 1] ?? ' ';
    const after = text[at + wanted.length] ?? ' ';
    if (/[\s([{,;]/.test(before) && !TAG_CHARACTER.test(after) && !isCode(text, at)) return true;
  }
  return false;
}

function isCode(text: string, at: number): boolean {
  let fence: Fence = '';
  let from = 0;
  for (let end = text.indexOf('\n'); end >= 0 && end < at; end = text.indexOf('\n', from)) {
    fence = fenceAfterLine(fence, text.slice(from, end));
    from = end + 1;
  }
  if (fence) return true;
  const line = text.slice(from, at);
  return /^(?: {4}|\t)/.test(line) || (line.match(/`/g)?.length ?? 0) % 2 === 1;
}
