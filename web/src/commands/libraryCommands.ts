import type { CommandTable } from './command';
import { exportBook, exportLibrary } from './libraryOut';

/** All notes out. They come in again like any file that is opened. */
export const libraryCommands = {
  exportBook: { label: 'cmd.exportBook', run: (context) => exportBook(context) },
  exportLibrary: { label: 'cmd.exportLibrary', run: (context) => exportLibrary(context, false) },
  exportLibraryAndBin: { label: 'cmd.exportLibraryAndBin', run: (context) => exportLibrary(context, true) },
} as const satisfies CommandTable;
