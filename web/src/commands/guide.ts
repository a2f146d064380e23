import type { Key } from '../i18n/catalogue';
import { PLAIN_PASTE } from '../editor/paste';
import { keyLabel } from '../keyboard/keys';
import { type GuideSection, guideDialog } from '../views/guideDialog';
import { practice } from '../views/practice';
import { type Command, type CommandTable, shownKey } from './command';
import { type Context, focusMain } from './context';
import { writingCommands } from './writingCommands';
import { lessonKeys, lessons } from './lessons';

/** The commands the guide lists with the editor's keys. */
const writingNames: ReadonlyArray<string> = [
  'find',
  'replace',
  'goToLine',
  'outline',
  'followLink',
  'backlinks',
  ...Object.keys(writingCommands),
];

/** Lessons first, then every command with its key or where else to find it. */
export function showGuide(context: Context, table: CommandTable, inMenu: ReadonlyArray<ReadonlyArray<string>>): void {
  const sheet = practice(lessons, context.practice);
  guideDialog(sheet, guideSections(context, table, inMenu), () => {
    sheet.destroy();
    focusMain(context);
  });
}

export function guideSections(
  context: Pick<Context, 'port'>,
  table: CommandTable,
  inMenu: ReadonlyArray<ReadonlyArray<string>>,
): ReadonlyArray<GuideSection> {
  const menuNames = inMenu.flat();
  const row = (command: Command, elsewhere: Key) => {
    const { label } = command;
    const keys = shownKey(command, context);
    return keys ? { label, keys } : { label, elsewhere };
  };
  const own = menuNames.flatMap((name) => table[name] ?? []);
  const writing = writingNames.flatMap((name) => table[name] ?? []);
  const named = [...menuNames, ...writingNames];
  const others = Object.entries(table).filter(([name]) => !named.includes(name));
  return [
    { title: 'guide.notes', rows: others.map(([, command]) => row(command, 'guide.inPalette')) },
    { title: 'actions.label', rows: own.map((command) => row(command, 'guide.inMenu')) },
    writingSection(writing.map((command) => row(command, 'guide.inPalette'))),
  ];
}

function writingSection(commands: GuideSection['rows']): GuideSection {
  const keys: ReadonlyArray<readonly [Key, string]> = [
    ...lessonKeys(),
    ['guide.fold', `${keyLabel('Mod-Alt-[')} ]`],
    ['guide.pastePlain', keyLabel(PLAIN_PASTE)],
    ['guide.hit', keyLabel('f3')],
    ['guide.undo', keyLabel('Mod-z')],
    ['guide.redo', keyLabel('Mod-Shift-z')],
    ['guide.list', keyLabel('enter')],
    ['guide.indent', `${keyLabel('tab')} · ${keyLabel('Shift-tab')}`],
    ['guide.table', keyLabel('tab')],
    ['guide.leave', `${keyLabel('escape')} ${keyLabel('tab')}`],
  ];
  return { title: 'guide.writing', rows: [...commands, ...keys.map(([label, shown]) => ({ label, keys: shown }))] };
}
