import type { Note } from '../state/model';
import { NoteText } from '../state/noteText';
import { inParts } from '../state/parts';
import type { Parts } from '../state/saver';
import type { Workspace } from '../state/workspace';
import { documentPieces, LONG_PIECE } from '../state/write';
import { type Context, rememberPlace } from './context';
import type { PartsPort } from './port';

/** From here on, posting the whole document would be noticed while typing. */
const LONG_DOCUMENT = 2_000_000;

/** Begins to post the document as it is now in parts, if it is long and the host takes parts. */
export function beginParts(context: Context): Parts | null {
  const { workspace, port, nextRevision } = context;
  const { parts } = port;
  if (!parts || textLength(workspace) < LONG_DOCUMENT) return null;
  rememberPlace(context);
  const revision = nextRevision();
  const pieces = documentPieces(workspace.contents, revision);
  return { revision, work: posting(inParts(pieces, LONG_PIECE), parts), post: () => parts.save(revision) };
}

function* posting(parts: Iterable<string>, port: PartsPort): Generator<void, void> {
  let isFirst = true;
  for (const part of parts) {
    port.post(part, isFirst);
    isFirst = false;
    yield;
  }
}

function textLength({ contents: { notes, bin } }: Workspace): number {
  let length = 0;
  for (const note of notes) length += noteLength(note);
  for (const { note } of bin) length += noteLength(note);
  return length;
}

function noteLength({ text, versions }: Note): number {
  return versions.reduce(
    (sum, { held }) => sum + (held instanceof NoteText ? held.length : held.json.length),
    text.length,
  );
}
