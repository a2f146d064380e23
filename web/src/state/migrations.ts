/** A document, or a part of one, before anything is known about it. */
export type Members = Record<string, unknown>;

export function isMembers(value: unknown): value is Members {
  return typeof value === 'object' && value !== null && !Array.isArray(value);
}

/** Makes a document of the next version out of one of its own. It leaves what it is given as it is. */
export type Migration = (document: Members) => Members;

/**
 * The steps from each version to the next, the first one from version 0 to version 1. A new
 * version appends its step and raises `DOCUMENT_VERSION`; steps that are out are never changed.
 */
export const migrations: ReadonlyArray<Migration> = [listNotes];

/** Takes a document through the steps that its version has before it. */
export function migrate(document: Members, steps: ReadonlyArray<Migration> = migrations): Members {
  let current = document;
  for (let version = versionOf(document); version < steps.length; version++) {
    const step = steps[version];
    if (step) current = { ...step(current), version: version + 1 };
  }
  return current;
}

/** A document without a usable version is as old as can be. */
function versionOf({ version }: Members): number {
  return typeof version === 'number' && version >= 0 ? Math.trunc(version) : 0;
}

/** Before versions were written, notes could stand under their ids instead of in a list. */
function listNotes(document: Members): Members {
  if (!isMembers(document.notes)) return document;
  const notes = Object.entries(document.notes).map(([id, note]) =>
    isMembers(note) && note.id === undefined ? { ...note, id } : note,
  );
  return { ...document, notes };
}
