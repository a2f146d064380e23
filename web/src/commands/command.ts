import type { Key } from '../i18n/catalogue';
import { keyLabel, onMac } from '../keyboard/keys';
import type { Context } from './context';

export interface Command {
  readonly label: Key;
  /** The name in the current state, for commands whose name depends on it. */
  readonly labelNow?: (context: Context) => Key;
  /** Its key in the host's window. */
  readonly key?: string;
  /** Its key in a browser, if different because browsers reserve the menu's key. */
  readonly browserKey?: string;
  /** The key is not the host menu's, so the page listens for it there too. */
  readonly listens?: true;
  /** The editor's own key for it, to be shown where it has no other. */
  readonly editorKey?: string;
  /** The host menu action it corresponds to. */
  readonly menu?: string;
  /** The global function the host's menu calls for it, and the arguments. */
  readonly call?: readonly [name: string, argument?: string | number];
  /** Whether running it now would have an effect. */
  readonly available?: (context: Context) => boolean;
  readonly run: (context: Context) => void;
}

export type CommandTable = Readonly<Record<string, Command>>;

/**
 * The command's key in this environment: the menu key under the host, otherwise the browser's. The latter are
 * on Alt, and on a Mac that key types letters.
 */
export function keyOf({ key, browserKey }: Command, native: boolean): string | undefined {
  if (native || browserKey === undefined) return key;
  return onMac ? undefined : browserKey;
}

export function shownKey(command: Command, { port }: Pick<Context, 'port'>): string {
  const key = keyOf(command, port.native) ?? command.editorKey;
  return key ? keyLabel(key) : '';
}

export function labelOf(command: Command, context: Context): Key {
  return command.labelNow?.(context) ?? command.label;
}

export function isAvailable(command: Command, context: Context): boolean {
  return command.available?.(context) ?? true;
}

/** The command bound to a key press. Under the host, its menu handles most of them. */
export function pressedCommand(
  table: CommandTable,
  native: boolean,
  matches: (key: string) => boolean,
): Command | undefined {
  return Object.values(table).find((command) => {
    const key = keyOf(command, native);
    return key !== undefined && (!native || command.listens === true) && matches(key);
  });
}

/**
 * The functions that the host's menu calls. They return nothing, because the web view reports a returned
 * promise, function or element as a script failure.
 */
export function menuFunctions(
  table: CommandTable,
  run: (command: Command) => void,
): Record<string, (argument?: unknown) => void> {
  const functions: Record<string, (argument?: unknown) => void> = {};
  for (const { call } of Object.values(table)) {
    if (!call) continue;
    const [name] = call;
    functions[name] = (argument) => {
      const command = Object.values(table).find(
        (one) => one.call?.[0] === name && (one.call.length === 1 || one.call[1] === argument),
      );
      if (command) run(command);
    };
  }
  return functions;
}
