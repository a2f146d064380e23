import { isMembers } from './migrations';
import { readRevision } from './revision';

/** A revision the store never writes: it compares revisions, and none is below zero. */
const NEVER = -1;

/**
 * The loaded document in a form that cannot replace the stored one. The store uses the revision passed with
 * the document if that is 1 or more, otherwise the document's own, and writes nothing if it holds a higher
 * one. It knows the loaded document's revision, so it refuses the unchanged document with a lower one. If
 * there is no lower one to pass, the document's own revision is set below all others.
 */
export function keepAsIs(loaded: unknown): { serialized: string; revision: number } {
  const known = isMembers(loaded) ? readRevision(loaded.revision) : 0;
  try {
    if (known > 1) return { serialized: JSON.stringify(loaded), revision: 1 };
    const members = isMembers(loaded) ? loaded : {};
    return { serialized: JSON.stringify({ ...members, revision: NEVER }), revision: NEVER };
  } catch {
    // Too deeply nested to be serialised; since it must not be stored anyway, a stub is enough.
    return { serialized: JSON.stringify({ revision: NEVER }), revision: NEVER };
  }
}
