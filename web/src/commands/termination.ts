import { keepAsIs } from '../state/untouched';
import { serialize } from '../state/write';
import { type Context, rememberPlace } from './context';

export interface FinalState {
  readonly serialized: string;
  readonly revision: number;
}

/** The host waits five seconds for the page and fifteen for the disk. */
const HOST_GIVES_UP_MS = 25_000;

let reopen: ReturnType<typeof setTimeout> | undefined;

/**
 * The final document to store before the window closes. After it is taken, the page accepts no input and runs
 * no commands, because their effects would not be in it.
 */
export function prepareForTermination(context: Context, untouched: unknown): FinalState {
  settleTitle(context);
  const state = context.workspace.readOnly ? keepAsIs(untouched) : currentState(context);
  context.shell.closing.begin();
  clearTimeout(reopen);
  reopen = setTimeout(() => terminationDidCancel(context), HOST_GIVES_UP_MS);
  return state;
}

/** Whatever happens with the links: the state must go out. */
function settleTitle({ titles }: Context): void {
  try {
    titles.settle(true);
  } catch (error) {
    reportError(error);
  }
}

export function terminationDidCancel(context: Context): void {
  clearTimeout(reopen);
  context.shell.closing.end();
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
