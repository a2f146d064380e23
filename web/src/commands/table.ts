import { onMac } from '../keyboard/keys';
import { closeDialog } from '../views/dialog';
import type { MenuItem } from '../views/menu';
import { changeZoom, chooseTheme, resetZoom } from './appearance';
import { showBin } from './bin';
import { type Command, type CommandTable, isAvailable, labelOf, shownKey } from './command';
import type { Context } from './context';
import * as copies from './copies';
import * as files from './files';
import { findingCommands } from './findingCommands';
import { showGuide } from './guide';
import { lookCommands } from './lookCommands';
import { linkCommands } from './linkCommands';
import { libraryCommands } from './libraryCommands';
import * as notes from './notes';
import { showPalette } from './palette';
import { openCapture, openSearch, toggleSidebar } from './panels';
import { togglePreview } from './preview';
import { shareNote } from './share';
import * as tabs from './tabs';
import { versionCommands } from './versionCommands';
import * as writing from './writing';
import { writingCommands } from './writingCommands';

const withNote = ({ workspace }: Context): boolean => workspace.activeNote !== null;

/**
 * Every command, in the order shown in the guide. Key bindings, the note menu, the palette, the guide and the
 * functions called by the host's menu are all derived from this table.
 */
export const commands = {
  newNote: {
    label: 'cmd.newNote',
    menu: 'newNote',
    key: 'Mod-n',
    browserKey: 'Alt-n',
    call: ['createNote'],
    run: notes.createNote,
  },
  capture: { label: 'cmd.capture', menu: 'quickCapture', key: 'Mod-k', call: ['openCapture'], run: openCapture },
  search: { label: 'cmd.search', menu: 'searchNotes', key: 'Mod-p', run: openSearch },
  ...findingCommands,
  palette: {
    label: 'cmd.palette',
    key: 'Mod-Shift-p',
    listens: true,
    run: (context) => showPalette(context, table()),
  },
  import: { label: 'cmd.import', menu: 'importFiles', key: 'Mod-o', run: chooseFiles },
  save: {
    label: 'cmd.save',
    menu: 'saveNow',
    key: 'Mod-s',
    call: ['flushPendingSave'],
    run: ({ saver }) => saver.flush(),
  },
  saveAs: {
    label: 'cmd.saveAs',
    menu: 'saveAsCurrentNote',
    key: 'Mod-Shift-s',
    call: ['quendoSaveAsCurrentNote'],
    available: withNote,
    run: files.saveNoteAs,
  },
  exportMarkdown: {
    label: 'cmd.exportMarkdown',
    menu: 'exportMarkdown',
    call: ['exportMarkdown'],
    available: withNote,
    run: (context) => files.exportAsMarkdown(context),
  },
  exportText: { label: 'cmd.exportText', available: withNote, run: files.exportAsText },
  copyMarkdown: {
    label: 'cmd.copyMarkdown',
    available: withNote,
    run: (context) => void copies.copyAsMarkdown(context),
  },
  copyPlain: {
    label: 'cmd.copyPlain',
    available: withNote,
    run: (context) => void copies.copyAsPlainText(context),
  },
  whatsapp: {
    label: 'cmd.whatsapp',
    menu: 'copyForWhatsApp',
    key: 'Mod-Alt-c',
    available: withNote,
    run: (context) => void copies.copyForWhatsApp(context),
  },
  share: {
    label: 'cmd.share',
    available: (context) => withNote(context) && !context.share.busy,
    run: shareNote,
  },
  find: { label: 'guide.find', key: 'Mod-f', listens: true, available: withNote, run: writing.find },
  replace: {
    label: 'cmd.replace',
    key: onMac ? 'Mod-Alt-f' : 'Mod-h',
    listens: true,
    available: withNote,
    run: writing.replace,
  },
  goToLine: {
    label: 'cmd.goToLine',
    key: 'Mod-Alt-g',
    listens: true,
    available: withNote,
    run: writing.goToLine,
  },
  ...writingCommands,
  preview: {
    label: 'cmd.preview',
    key: 'Mod-Alt-p',
    listens: true,
    available: withNote,
    run: (context) => togglePreview(context, 'beside'),
  },
  reading: {
    label: 'cmd.reading',
    key: 'Mod-Alt-r',
    listens: true,
    available: withNote,
    run: (context) => togglePreview(context, 'instead'),
  },
  pin: {
    label: 'cmd.pin',
    labelNow: ({ workspace }) => (workspace.activeNote?.pinned ? 'cmd.unpin' : 'cmd.pin'),
    available: withNote,
    run: (context) => notes.togglePinned(context),
  },
  ...versionCommands,
  delete: { label: 'cmd.delete', available: withNote, run: notes.deleteActiveNote },
  prevTab: {
    label: 'cmd.prevTab',
    menu: 'previousTab',
    key: 'Mod-Shift-[',
    call: ['quendoSwitchOpenTab', -1],
    run: (context) => tabs.switchTab(context, -1),
  },
  nextTab: {
    label: 'cmd.nextTab',
    menu: 'nextTab',
    key: 'Mod-Shift-]',
    call: ['quendoSwitchOpenTab', 1],
    run: (context) => tabs.switchTab(context, 1),
  },
  overview: { label: 'cmd.overview', menu: 'showAllTabs', call: ['quendoShowTabOverview'], run: tabs.showOverview },
  reopen: {
    label: 'cmd.reopen',
    menu: 'reopenClosedTab',
    key: 'Mod-Shift-t',
    browserKey: 'Alt-Shift-t',
    call: ['quendoReopenClosedTab'],
    run: tabs.reopenClosedTab,
  },
  closeTab: {
    label: 'cmd.closeTab',
    menu: 'closeCurrentTab',
    key: 'Mod-w',
    browserKey: 'Alt-w',
    call: ['quendoCloseCurrentTab'],
    run: tabs.closeCurrentTab,
  },
  closeOthers: {
    label: 'cmd.closeOthers',
    menu: 'closeOtherTabs',
    key: 'Mod-Alt-w',
    call: ['quendoRequestCloseTabs', 'others'],
    run: (context) => tabs.requestCloseTabs(context, 'others'),
  },
  closeRight: {
    label: 'cmd.closeRight',
    menu: 'closeTabsToRight',
    call: ['quendoRequestCloseTabs', 'right'],
    run: (context) => tabs.requestCloseTabs(context, 'right'),
  },
  closeAll: {
    label: 'cmd.closeAll',
    menu: 'closeAllTabs',
    key: 'Mod-Alt-Shift-w',
    call: ['quendoRequestCloseTabs', 'all'],
    run: (context) => tabs.requestCloseTabs(context, 'all'),
  },
  ...libraryCommands,
  bin: { label: 'cmd.bin', run: showBin },
  sidebar: { label: 'cmd.sidebar', run: toggleSidebar },
  zoomIn: {
    label: 'cmd.zoomIn',
    key: 'Mod-plus',
    listens: true,
    run: (context) => changeZoom(context, 1),
  },
  zoomOut: {
    label: 'cmd.zoomOut',
    key: 'Mod-minus',
    listens: true,
    run: (context) => changeZoom(context, -1),
  },
  zoomReset: { label: 'cmd.zoomReset', key: 'Mod-0', listens: true, run: resetZoom },
  themeSystem: { label: 'cmd.themeSystem', run: (context) => chooseTheme(context, 'system') },
  themeLight: { label: 'cmd.themeLight', run: (context) => chooseTheme(context, 'light') },
  themeDark: { label: 'cmd.themeDark', run: (context) => chooseTheme(context, 'dark') },
  ...lookCommands,
  ...linkCommands,
  guide: {
    label: 'cmd.guide',
    menu: 'showShortcutGuide',
    key: 'f1',
    listens: true,
    call: ['quendoOpenShortcutGuide'],
    run: (context) => showGuide(context, table(), noteCommands),
  },
} as const satisfies CommandTable;

type Name = keyof typeof commands;

/** The commands in the note menu, by group. */
export const noteCommands: ReadonlyArray<ReadonlyArray<Name>> = [
  ['saveAs', 'exportMarkdown', 'exportText'],
  ['copyMarkdown', 'copyPlain', 'whatsapp', 'share'],
  ['preview', 'reading'],
  ['closeOthers', 'closeRight'],
  ['pin', 'versions'],
  ['settings'],
  ['delete'],
];

/** Host menu keys that have no command here. Only a Mac's menu has keys for hiding. */
export const menuOnlyKeys = [...(onMac ? ['Mod-h', 'Mod-Alt-h'] : []), 'Mod-m', 'Mod-q', 'Mod-Shift-w'];

/** Keys the editor must leave to commands. */
export const reservedKeys: ReadonlyArray<string> = [
  ...menuOnlyKeys,
  ...Object.values(table()).flatMap(({ key }) => (key ? [key] : [])),
];

export function noteMenu(context: Context): ReadonlyArray<ReadonlyArray<MenuItem>> {
  return noteCommands.map((group) =>
    group.map((name) => {
      const command: Command = commands[name];
      return {
        name,
        label: labelOf(command, context),
        keys: shownKey(command, context),
        disabled: !isAvailable(command, context),
        run: () => command.run(context),
      };
    }),
  );
}

/** The table with a plain type, so its own entries can read it. */
function table(): CommandTable {
  return commands;
}

function chooseFiles(): void {
  closeDialog();
  document.getElementById('importFileInput')?.click();
}
