import { syntaxOf } from '../editor/languages';
import { insertLink, makeTasks, toggleHeading, toggleList, toggleQuote } from '../editor/markdownCommands';
import { toggleMark } from '../editor/markdownKeys';
import type { CommandTable } from './command';
import type { Context } from './context';
import { inText, toggleSetting } from './writing';

const inMarkdown = ({ workspace }: Context): boolean => {
  const note = workspace.activeNote;
  return note !== null && !workspace.readOnly && syntaxOf(note) === 'markdown';
};

const mark = (label: CommandTable[string]['label'], command: Parameters<typeof inText>[1], editorKey?: string) => ({
  label,
  available: inMarkdown,
  run: (context: Context) => inText(context, command),
  ...(editorKey ? { editorKey } : {}),
});

/** Commands for writing Markdown, and for how the text looks meanwhile. */
export const writingCommands = {
  bold: mark('cmd.bold', toggleMark('**'), 'Mod-b'),
  italic: mark('cmd.italic', toggleMark('*'), 'Mod-i'),
  code: mark('cmd.code', toggleMark('`'), 'Mod-e'),
  link: mark('cmd.link', insertLink),
  heading1: mark('cmd.heading1', toggleHeading(1)),
  heading2: mark('cmd.heading2', toggleHeading(2)),
  heading3: mark('cmd.heading3', toggleHeading(3)),
  quote: mark('cmd.quote', toggleQuote),
  list: mark('cmd.list', toggleList),
  task: mark('cmd.task', makeTasks, 'Mod-enter'),
  focusMode: { label: 'cmd.focusMode', run: (context) => toggleSetting(context, 'focusMode') },
  typewriter: { label: 'cmd.typewriter', run: (context) => toggleSetting(context, 'typewriter') },
} as const satisfies CommandTable;
