/** A document, or part of one, of unknown contents. */
export type Members = Record<string, unknown>;

export function isMembers(value: unknown): value is Members {
  return typeof value === 'object' && value !== null && !Array.isArray(value);
}

/** Turns a document into one of the next version. Does not modify its argument. */
export type Migration = (document: Members) => Members;

/**
 * The steps from each version to the next; the first goes from version 0 to version 1. A new version appends
 * its step and raises `DOCUMENT_VERSION`; released steps never change.
 */
export const migrations: ReadonlyArray<Migration> = [listNotes, bindVersions];

/** Applies every step the document's version has not had yet. */
export function migrate(document: Members, steps: ReadonlyArray<Migration> = migrations): Members {
  let current = document;
  for (let version = versionOf(document); version < steps.length; version++) {
    const step = steps[version];
    if (step) current = { ...step(current), version: version + 1 };
  }
  return current;
}

/** A document without a usable version counts as the oldest. */
function versionOf({ version }: Members): number {
  return typeof version === 'number' && version >= 0 ? Math.trunc(version) : 0;
}

/** Before documents had versions, notes could be keyed by id instead of listed. */
function listNotes(document: Members): Members {
  if (!isMembers(document.notes)) return document;
  const notes = Object.entries(document.notes).map(([id, note]) =>
    isMembers(note) && note.id === undefined ? { ...note, id } : note,
  );
  return { ...document, notes };
}

/**
 * Notes may have versions since then, the newest as a difference to the note's text. An older page would preserve them
 * and change the text, so it must not write such a document.
 */
function bindVersions(document: Members): Members {
  return document;
}
