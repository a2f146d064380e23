import { marksIn } from './noteMarks';
import { type Edit, edited } from './renames';
import { tagKey } from './titleKey';

const lineOfTags = /^\s*#\S+(?:\s+#\S+)*$/;

/** Adds a tag below a text, beside the tags that end it; nothing if the text has it, or would not have it then. */
export function addedTag(text: string, name: string): Edit[] {
  if (hasTagIn(text, name)) return [];
  const end = text.trimEnd().length;
  const start = text.lastIndexOf('\n', end - 1) + 1;
  const isBeside = start > 0 && lineOfTags.test(text.slice(start, end));
  const insert = isBeside ? ` #${name}` : `${end ? '\n\n' : ''}#${name}`;
  const edits = [{ from: end, to: end, insert }];
  // Below a code block that is open, it would be code.
  return hasTagIn(edited(text, edits), name) ? edits : [];
}

/** Takes out a tag that was added, wherever it is by now. */
export function removedTag(text: string, name: string): Edit[] {
  const last = [...marksIn(text)].filter((mark) => mark.kind === 'tag' && tagKey(mark.name) === tagKey(name)).at(-1);
  return last ? [{ from: text.slice(0, last.from - 1).trimEnd().length, to: last.to, insert: '' }] : [];
}

function hasTagIn(text: string, name: string): boolean {
  const key = tagKey(name);
  for (const { kind, name: other } of marksIn(text)) {
    if (kind === 'tag' && (tagKey(other) === key || tagKey(other).startsWith(`${key}/`))) return true;
  }
  return false;
}
