/** Only the start of a note is examined: a first line of many megabytes must cost nothing. */
const HEAD_CHARACTERS = 4000;
const TITLE_CHARACTERS = 120;
const EXCERPT_CHARACTERS = 160;

export interface Head {
  /** The first non-blank line without Markdown marks; empty if there is none. */
  readonly title: string;
  /** The text after that line, collapsed to one line. */
  readonly excerpt: string;
}

/** A text of which a part can be had. */
interface Sliced {
  slice(from: number, to: number): string;
}

const cache = new WeakMap<Sliced, Head>();
/** While someone writes further down, the start of the text stays as it is. */
let last: { readonly start: string; readonly head: Head } | null = null;

/** Title and excerpt of a note's text, cached for the lifetime of the text. */
export function headOf(text: Sliced): Head {
  let head = cache.get(text);
  if (!head) {
    const start = text.slice(0, HEAD_CHARACTERS);
    // Copied, because in some engines a part of a string keeps all of it.
    if (last?.start !== start) last = { start, head: JSON.parse(JSON.stringify(readHead(start))) as Head };
    head = last.head;
    cache.set(text, head);
  }
  return head;
}

export function readHead(start: string): Head {
  const lines = start.split('\n');
  let title = '';
  let index = 0;
  for (; index < lines.length && !title; index++) title = stripMarks(lines[index] ?? '');
  const rest: string[] = [];
  let length = 0;
  for (; index < lines.length && length < EXCERPT_CHARACTERS; index++) {
    const line = stripMarks(lines[index] ?? '');
    if (!line) continue;
    rest.push(line);
    length += line.length;
  }
  return { title: clip(title, TITLE_CHARACTERS), excerpt: clip(rest.join(' '), EXCERPT_CHARACTERS) };
}

/** A heading ends them: "# 1. Start" begins with a number. */
const listAndHeadingMarks = /^(?:\d{1,9}[.)]\s+(?:\[[ xX]\]\s+)?|(?:[-*+]\s+(?:\[[ xX]\]\s+)?)*)(?:#{1,6}\s+)?/;

/** One line as a reader sees it, without heading, task and link marks. */
export function stripMarks(line: string): string {
  // A code fence, the delimiter row of a table, or a rule.
  if (/^\s*(?:(?:`{3,}|~{3,})[^`]*|\|[-|:\s]+|(?:[-*_]\s*){3,})$/.test(line)) return '';
  const row = /^\s*\|(.*)\|\s*$/.exec(line)?.[1];
  const bare = (
    row
      ?.split('|')
      .map((cell) => cell.trim())
      .join(' · ') ?? line
  )
    .replace(/^\s*(?:>\s*)*/, '')
    .replace(listAndHeadingMarks, '')
    .replace(/\s+#+\s*$/, '')
    .replace(/\[\[([^[\]|]+)(?:\|([^[\]]*))?\]\]/g, (_, title: string, label?: string) => label?.trim() || title.trim())
    .replace(/!?\[([^\]]*)\]\([^)]*\)/g, '$1')
    .replace(/(\*\*|__|~~|`)(.+?)\1/g, '$2')
    .replace(/(^|[^\p{L}\p{N}*_])([*_])(?=\S)(.+?)\2(?![\p{L}\p{N}])/gu, '$1$3')
    .replace(/[\u0000-\u001f\u2028\u2029]+/g, ' ')
    .trim();
  return /^(?:[-*_=`~]\s*){3,}$/.test(bare) || /^#{1,6}$/.test(bare) ? '' : bare;
}

/** Characters that no text has, around the words that are to be found again. */
const [OPEN, CLOSE] = ['\ufdd0', '\ufdd1'];

/** A line without its marks, still in three parts. A link to a note is one of the words; its label comes before its title. */
export function withoutMarks(before: string, words: string, after: string) {
  const [, label, rest = after] = /^\s*(?:\|([^[\]]*))?\]\](.*)$/s.exec(after) ?? [];
  const isLink = rest !== after && /\[\[\s*$/.test(before);
  const lead = isLink ? before.replace(/\[\[\s*$/, '') : before;
  const shown = (isLink && label?.trim()) || words;
  const bare = stripMarks(lead + OPEN + shown + CLOSE + (isLink ? rest : after));
  const [left, middle = '', right = ''] = bare.split(/[\ufdd0\ufdd1]/);
  // Inside a mark, such as the address of a link, the line stays as it is.
  return bare.includes(OPEN) ? { before: left ?? '', words: middle, after: right } : { before, words, after };
}

/** Never splits a surrogate pair, so an emoji at the limit is kept or dropped whole. */
function clip(text: string, limit: number): string {
  if (text.length <= limit) return text;
  const cut = text.slice(0, limit);
  return /[\ud800-\udbff]$/.test(cut) ? cut.slice(0, -1) : cut;
}
