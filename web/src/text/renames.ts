import { marksIn } from './noteMarks';
import { tagKey, titleKey } from './titleKey';

/** A piece of a text and what comes in its place. */
export interface Edit {
  readonly from: number;
  readonly to: number;
  readonly insert: string;
}

/** Renames a tag and those below it. */
export function tagEdits(text: string, name: string, newName: string): Edit[] {
  const depth = name.split('/').length;
  const edits: Edit[] = [];
  for (const mark of marksIn(text)) {
    if (mark.kind !== 'tag') continue;
    const written = mark.name.split('/').slice(0, depth).join('/');
    if (tagKey(written) !== tagKey(name) || written === newName) continue;
    edits.push({ from: mark.from, to: mark.from + written.length, insert: newName });
  }
  return edits;
}

/** Makes links with one of these titles lead to another one. What they show stays if it was written by hand. */
export function linkEdits(text: string, keys: ReadonlyArray<string>, newTitle: string): Edit[] {
  const edits: Edit[] = [];
  for (const { kind, name, from, to } of marksIn(text)) {
    if (kind === 'link' && name !== newTitle && keys.includes(titleKey(name)))
      edits.push({ from, to, insert: newTitle });
  }
  return edits;
}

/** A text with edits in their order. */
export function edited(text: string, edits: ReadonlyArray<Edit>): string {
  let out = '';
  let at = 0;
  for (const { from, to, insert } of edits) {
    out += text.slice(at, from) + insert;
    at = to;
  }
  return out + text.slice(at);
}

/** What takes the edits of a text back. */
export function inverse(text: string, edits: ReadonlyArray<Edit>): Edit[] {
  let shift = 0;
  return edits.map(({ from, to, insert }) => {
    const start = from + shift;
    shift += insert.length - (to - from);
    return { from: start, to: start + insert.length, insert: text.slice(from, to) };
  });
}
