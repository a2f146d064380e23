import type { StartItem } from '../views/emptyState';
import { type Command, shownKey } from './command';
import type { Context } from './context';
import { commands } from './table';

/** What the page offers where no note is open. The context exists once one of them is chosen. */
export function startItems(readOnly: boolean, port: Context['port'], context: () => Context): ReadonlyArray<StartItem> {
  const item = (icon: StartItem['icon'], command: Command): StartItem => ({
    icon,
    label: command.label,
    keys: shownKey(command, { port }),
    run: () => command.run(context()),
  });
  const writing = [item('plus', commands.newNote), item('open', commands.import)];
  return [...(readOnly ? [] : writing), item('help', commands.guide)];
}
