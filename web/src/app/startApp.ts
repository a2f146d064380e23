import { NoteEditor } from '../editor/noteEditor';
import { syntaxOf } from '../editor/languages';
import { keepUndoReserve } from '../editor/undoReserve';
import { currentLanguage, onLanguageChange, t } from '../i18n/language';
import { pageClock } from '../time/monotonicClock';
import type { ReadResult } from '../state/read';
import { collect, collectLater } from '../state/collect';
import { NoteIndex } from '../state/noteIndex';
import { nextRevision } from '../state/revision';
import { QuietTime } from '../state/quiet';
import { Saver, type SaveStatus } from '../state/saver';
import { type Change, Workspace } from '../state/workspace';
import { prepareJson } from '../state/write';
import { onFaceLoaded } from '../views/faces';
import { applyAppearance, followDesktop } from '../views/rootStyle';
import { Shell } from '../views/shell';
import { beginParts } from '../commands/documentParts';
import { type Context, focusMain, rememberPlace } from '../commands/context';
import { keepIndex } from './keepIndex';
import { careForVersions } from './versionCare';
import { showCount } from './wordCount';
import { reportLost } from '../commands/writing';
import { sortBy } from '../commands/findingCommands';
import { deleteNotes, rowMenu } from '../commands/noteRows';
import * as notes from '../commands/notes';
import { findMentions, linksHere, openPlace } from '../commands/backlinks';
import { follow } from '../commands/follow';
import { toggleSidebar } from '../commands/panels';
import type { HostPort } from '../commands/port';
import { closePreview, previewSource } from '../commands/preview';
import { PendingCopies, PendingFiles, PendingShare } from '../commands/requests';
import { startItems } from '../commands/start';
import { TitleWatch } from '../commands/titles';
import { commands, noteMenu, reservedKeys } from '../commands/table';
import { tabMenu } from '../commands/tabMenu';
import { tagMenu } from '../commands/tags';
import { closeTab, moveTab } from '../commands/tabs';
import { currentState } from '../commands/termination';

/** Builds the page and wires it up: changes are shown and saved. */
export function startApp(document: ReadResult, port: HostPort, nonce: string): Context {
  const { contents, newer } = document;
  const workspace = new Workspace(contents, newer, Date.now);
  applyAppearance(contents.settings);
  followDesktop();
  const shell: Shell = new Shell(workspace, {
    createNote: () => notes.createNote(context),
    openNote: (id, words) => {
      shell.openDrawer(false);
      notes.openNote(context, id, words);
    },
    deleteNotes: (ids) => deleteNotes(context, ids),
    sortNotes: (sort) => sortBy(context, sort),
    rowMenu: (ids) => rowMenu(context, ids),
    tagMenu: (name) => tagMenu(context, name),
    closeTab: (id) => closeTab(context, id),
    moveTab: (id, index) => moveTab(context, id, index),
    tabMenu: (id) => tabMenu(context, id),
    keepSidebarWidth: (sidebarWidth) => workspace.setSettings({ sidebarWidth }),
    toggleSidebar: () => toggleSidebar(context),
    showOverview: () => commands.overview.run(context),
    openGuide: () => commands.guide.run(context),
    retrySave: () => context.saver.flush(),
    showSettings: () => commands.settings.run(context),
    showBin: () => commands.bin.run(context),
    focusEditor: () => {
      shell.openDrawer(false);
      focusMain(context);
    },
    importFiles: (files) => void notes.importFiles(context, files),
    startItems: () => startItems(newer, port, () => context),
    noteMenu: () => noteMenu(context),
    previewSource: () => previewSource(context),
    leavePreview: () => closePreview(context),
    follow: (target) => follow(context, target),
    backlinks: {
      links: () => linksHere(context),
      findMentions: (onDone) => findMentions(context, onDone),
      open: (place) => openPlace(context, place),
    },
  });
  const editor = new NoteEditor({
    parent: shell.editorPanel,
    readOnly: newer,
    nonce,
    reservedKeys,
    onText: (id, text, removed) => workspace.setText(id, text, removed),
    onView: () => {
      showCount(context);
      shell.preview.changed();
    },
    onScroll: () => shell.preview.follow(),
    onLost: (names) => reportLost(context, names),
    names: () => index,
    follow: (target) => follow(context, target),
  });
  const index = new NoteIndex(workspace, (note) => syntaxOf(note) === 'markdown');
  const quiet = new QuietTime(pageClock);
  window.addEventListener('keydown', () => quiet.keyPressed(), { capture: true });
  const saver = new Saver({
    clock: pageClock,
    whenIdle: (run, longest) => quiet.after(prepareJson(workspace.contents), longest, run),
    prepare: () => currentState(context),
    send: (serialized, revision) => port.save(serialized, revision),
    beginParts: () => beginParts(context),
    inTurns: (work, done) => quiet.spread(work, done),
    onStatus: reportStatus(shell, quiet),
  });
  let revision = contents.revision;
  const context: Context = {
    workspace,
    editor,
    shell,
    saver,
    port,
    copies: new PendingCopies(pageClock),
    share: new PendingShare(pageClock.now),
    outgoing: new PendingFiles(),
    practice: { nonce, reservedKeys },
    nextRevision: () => {
      revision = nextRevision(revision, Date.now());
      return revision;
    },
    index,
    // The watch needs the whole context.
    get titles() {
      return titles;
    },
  };
  const titles = new TitleWatch(context);
  workspace.onChange((change, id) => {
    if (!newer) saver.changed();
    show(context, change, id);
    if (change === 'notes' || change === 'tabs') shell.toasts.refresh();
  });
  careForVersions(workspace, quiet, pageClock);
  onLanguageChange(() => {
    editor.relabel();
    shell.status.showSource(workspace.activeNote?.source ?? null);
    showCount(context);
    workspace.setSettings({ language: currentLanguage() });
  });
  onFaceLoaded(() => editor.remeasure());
  if (port.native) keepUndoReserve();
  editor.setModes(contents.settings);
  keepIndex(context, () => collect(() => quiet.isTyping));
  shell.status.show(newer ? 'readonly' : saver.status);
  show(context, 'tabs');
  if (contents.settings.previewBeside) shell.preview.show('beside');
  focusMain(context);
  return context;
}

function show(context: Context, change: Change, id?: string): void {
  const { workspace, editor, shell } = context;
  if (change === 'text') {
    if (id === undefined) return;
    shell.tabBar.retitle(id);
    shell.sidebar.refreshNote(id);
    shell.retitle();
  } else if (change === 'notes' || change === 'tabs') {
    rememberPlace(context);
    shell.tabBar.render();
    shell.sidebar.select(workspace.tabs.active);
    if (change === 'notes') shell.sidebar.render();
    else shell.sidebar.reorder();
    shell.renderMain();
    const note = workspace.activeNote;
    if (note) editor.show(note, workspace.place(note.id));
    else editor.hide();
    editor.release(workspace.tabs.open, (id) => workspace.note(id) !== null);
    shell.status.showSource(note?.source ?? null);
    showCount(context);
  } else if (change === 'settings') {
    applyAppearance(workspace.settings);
    shell.renderSettings();
    editor.setModes(workspace.settings);
    editor.remeasure();
  }
}

/** Errors and recovery are announced once, in a toast; everything else only shows in the status bar. */
function reportStatus(shell: Shell, quiet: QuietTime): (status: SaveStatus) => void {
  let failed = false;
  return (status) => {
    shell.status.show(status);
    if (status === 'saved') collectLater(() => quiet.isTyping);
    if (status === 'failed' && !failed) {
      failed = true;
      shell.toasts.show(t('save.failedWhy'));
    } else if (status === 'saved' && failed) {
      failed = false;
      shell.toasts.show(t('save.recovered'));
    }
  };
}
