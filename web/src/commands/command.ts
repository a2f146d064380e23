import type { Key } from '../i18n/catalogue';
import type { Context } from './context';
import { keyLabel } from './keys';

export interface Command {
  readonly label: Key;
  /** Its name as things stand, where it depends on them. */
  readonly labelNow?: (context: Context) => Key;
  /** Its key in the host's window. */
  readonly key?: string;
  /** Its key in a browser, where that differs because browsers keep the menu's for themselves. */
  readonly browserKey?: string;
  /** The host's menu does not have the key, so that the page listens for it there too. */
  readonly listens?: true;
  /** The action of the host's menu that it is. */
  readonly menu?: string;
  /** The function by which the host's menu calls it, and what it is called with. */
  readonly call?: readonly [name: string, argument?: string | number];
  /** Whether it would do anything now. */
  readonly available?: (context: Context) => boolean;
  readonly run: (context: Context) => void;
}

export type CommandTable = Readonly<Record<string, Command>>;

/** The key a command has here: in the host's window its menu key, else the browser's. */
export function keyOf({ key, browserKey }: Command, native: boolean): string | undefined {
  return native ? key : (browserKey ?? key);
}

export function shownKey(command: Command, { port }: Pick<Context, 'port'>): string {
  const key = keyOf(command, port.native);
  return key ? keyLabel(key) : '';
}

export function labelOf(command: Command, context: Context): Key {
  return command.labelNow?.(context) ?? command.label;
}

export function isAvailable(command: Command, context: Context): boolean {
  return command.available?.(context) ?? true;
}

/** The command that a key press stands for. With the host, its menu takes most of them. */
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
 * The functions that the host's menu calls. They give nothing back, because the web view reports a
 * promise, a function or an element as a failed script.
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
