import type { Format } from './names';

export interface Chapter {
  readonly title: string;
  /** The title is not a line of the text but the name of a file. */
  readonly isNamed: boolean;
  readonly format: Format;
  readonly text: string;
}

/** A note as a chapter of a Markdown book: under a heading of its own, and text that is not Markdown as it is. */
export function chapterOf({ title, isNamed, format, text }: Chapter): string {
  if (format === 'plain') return `# ${title}\n\n${fenced(text)}\n`;
  const body = text.replace(/^\s*\n/, '').trimEnd();
  if (isNamed) return `# ${title}\n\n${body}\n`;
  if (/^#{1,6}\s/.test(body)) return `${body}\n`;
  const [first = '', ...rest] = body.split('\n');
  const isPlainLine =
    /^[\p{L}\p{N}]/u.test(first) && !/^\d+[.)]\s/.test(first) && !/^(?:=+|-+)\s*$/.test(rest[0] ?? '');
  return isPlainLine ? `# ${first}\n${rest.join('\n')}\n` : `# ${title}\n\n${body}\n`;
}

/** Between chapters; after a blank line it is no underline. */
export const CHAPTER_BREAK = '\n---\n\n';

function fenced(text: string): string {
  let longest = 2;
  for (const [ticks] of text.matchAll(/`+/g)) longest = Math.max(longest, ticks.length);
  const fence = '`'.repeat(longest + 1);
  return `${fence}\n${text}\n${fence}`;
}
