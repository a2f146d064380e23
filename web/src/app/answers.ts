import type { Context } from '../commands/context';
import { exported, savedAs } from '../commands/files';
import type { HostAnswers } from '../commands/port';
import { shared } from '../commands/share';

/** Handlers for the host's answers. */
export function hostAnswers(context: Context): HostAnswers {
  return {
    saved: (success, revision) => context.saver.answered(success, revision),
    exported: (success, message) => exported(context, success, message),
    savedAs: (success, noteId, fileName, message) => savedAs(context, success, noteId, fileName, message),
    copied: (success, message, requestId) => context.copies.settle(requestId, success ? message : null),
    shared: (success, attemptId) => shared(context, success, attemptId),
  };
}
