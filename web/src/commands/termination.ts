import { keepAsIs } from '../state/untouched';
import { serialize } from '../state/write';
import { type Context, rememberPlace } from './context';

export interface FinalState {
  readonly serialized: string;
  readonly revision: number;
}

/** The host gives up after five seconds for the page and fifteen for the disk. */
const HOST_GIVES_UP_MS = 25_000;

let reopen: ReturnType<typeof setTimeout> | undefined;

/**
 * The document as it must outlive the window. It is taken first; then the page takes no more
 * input, since what would be typed from here on might not be written any more.
 */
export function prepareForTermination(context: Context, untouched: unknown): FinalState {
  const state = context.workspace.readOnly ? keepAsIs(untouched) : currentState(context);
  context.shell.setClosing(true);
  clearTimeout(reopen);
  reopen = setTimeout(() => terminationDidCancel(context), HOST_GIVES_UP_MS);
  return state;
}

export function terminationDidCancel(context: Context): void {
  clearTimeout(reopen);
  context.shell.setClosing(false);
  if (context.workspace.readOnly) return;
  context.saver.changed();
  context.saver.flush();
}

export function currentState(context: Context): FinalState {
  const { workspace, nextRevision } = context;
  rememberPlace(context);
  const revision = nextRevision();
  return { serialized: serialize(workspace.contents, revision), revision };
}
