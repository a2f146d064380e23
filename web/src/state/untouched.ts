import { isMembers } from './migrations';
import { readRevision } from './revision';

/** What the store never writes, whatever it holds: it goes by revisions, and none is below zero. */
const NEVER = -1;

/**
 * A document as it was loaded, in a form that cannot replace the one in the store. The store goes
 * by the revision given beside the document if that is 1 or more, else by the document's own, and
 * writes nothing when it holds a higher one. It knows the loaded document's revision, so a lower
 * one beside the document as it came is refused. Where there is no lower one to give, the document
 * says itself that it is below all others.
 */
export function keepAsIs(loaded: unknown): { serialized: string; revision: number } {
  const known = isMembers(loaded) ? readRevision(loaded.revision) : 0;
  try {
    if (known > 1) return { serialized: JSON.stringify(loaded), revision: 1 };
    const members = isMembers(loaded) ? loaded : {};
    return { serialized: JSON.stringify({ ...members, revision: NEVER }), revision: NEVER };
  } catch {
    // Nested too deeply to be written again; as it is not to be written, a word is enough.
    return { serialized: JSON.stringify({ revision: NEVER }), revision: NEVER };
  }
}
