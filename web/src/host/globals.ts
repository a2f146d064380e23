import { type CommandTable, menuFunctions } from '../commands/command';
import type { Context } from '../commands/context';
import { copyForWhatsApp } from '../commands/copies';
import { openNativeFiles } from '../commands/notes';
import { setDrawer } from '../commands/panels';
import type { HostAnswers } from '../commands/port';
import { commands } from '../commands/table';
import { prepareForTermination, terminationDidCancel } from '../commands/termination';
import { isLanguage, setLanguage } from '../i18n/language';

/**
 * Every global the host calls. Menu functions return nothing, because the web view reports a returned
 * promise, function or element as a script failure. While the window is closing, answers and messages are
 * still handled, but functions that act for the user do nothing.
 */
export function pageGlobals(context: Context, answers: HostAnswers, stored: unknown, table: CommandTable = commands) {
  const { workspace, shell } = context;
  return {
    quendoNativeSaveDidFinish: (success: unknown, revision: unknown): void =>
      answers.saved(success === true, Number(revision)),
    quendoNativeExportDidFinish: (success: unknown, message: unknown): void =>
      answers.exported(success === true, String(message)),
    quendoNativeSaveAsDidFinish: (success: unknown, noteId: unknown, fileName: unknown, message: unknown): void =>
      answers.savedAs(success === true, String(noteId), String(fileName), String(message)),
    quendoNativeClipboardDidFinish: (success: unknown, message: unknown, requestId: unknown): void =>
      answers.copied(success === true, String(message), String(requestId)),
    quendoNativeShareDidFinish: (success: unknown, attemptId: unknown): void =>
      answers.shared(success === true, String(attemptId)),
    showToast: (message: unknown): void => shell.toasts.show(String(message)),

    quendoPrepareForTermination: () => prepareForTermination(context, stored),
    quendoTerminationDidCancel: (): void => terminationDidCancel(context),

    quendoOpenNativeFiles: (files: unknown): number => openNativeFiles(context, files),
    quendoCopyCurrentNoteForWhatsApp: async (): Promise<boolean> => !shell.closing.begun && copyForWhatsApp(context),

    ...menuFunctions(table, (command) => {
      if (!shell.closing.begun) command.run(context);
    }),
    quendoSetLanguage: (code: unknown): void => {
      if (isLanguage(code)) shell.closing.after(() => setLanguage(code));
    },

    renderSidebar: (): void => shell.sidebar.render(),
    setDrawer: (name: unknown, options?: { focus?: boolean }): void => {
      if (!shell.closing.begun) setDrawer(context, name, options);
    },
    state: {
      get sidebarMode(): string {
        return workspace.settings.sidebarMode;
      },
      set sidebarMode(mode: unknown) {
        if (shell.closing.begun || typeof mode !== 'string') return;
        if (mode !== workspace.settings.sidebarMode) {
          workspace.setSettings({ sidebarMode: mode });
        }
      },
    },
  };
}
