import { hostAnswers } from './answers';
import { startApp } from './startApp';
import { pressedCommand } from '../commands/command';
import { rememberPlace } from '../commands/context';
import type { HostAnswers } from '../commands/port';
import { commands } from '../commands/table';
import { setLanguage } from '../i18n/language';
import { isComposing, matchesKey } from '../keyboard/keys';
import { readContents } from '../state/read';
import '../styles/main.css';
import { readBootstrap, startLanguage, takeDocument } from '../host/bootstrap';
import { browserPort, storedDocument } from '../host/browserPort';
import { pageGlobals } from '../host/globals';
import { hasHost, nativePort, type WebKitWindow } from '../host/nativePort';

const nonce = document.currentScript?.nonce ?? '';
const bootstrap = readBootstrap(window as object);
const native = bootstrap.native || hasHost(window as WebKitWindow);
const stored = native ? takeDocument(window as object) : storedDocument();
const read = readContents(stored, Date.now());
// Nothing below may hold what was read: it is a second copy of all notes.
const { newer } = read;
setLanguage(startLanguage(bootstrap, read.contents.settings.language));

const port = native
  ? nativePort(window as WebKitWindow, bootstrap.publicUrl, () => answers)
  : browserPort(bootstrap.publicUrl, () => answers);
const context = startApp(read, port, nonce);
const answers: HostAnswers = hostAnswers(context);
Object.assign(window, pageGlobals(context, answers, newer ? stored : undefined));

// Save even an unchanged document soon: it may have been recovered from the backup.
if (stored !== undefined && !newer) context.saver.changed();

/** Moving around in a note is not worth a save of its own, but is kept when the user leaves the page. */
const flush = () => {
  if (rememberPlace(context) && !newer) context.saver.changed();
  context.saver.flush();
};
window.addEventListener('blur', flush);
window.addEventListener('pagehide', flush);
document.addEventListener('visibilitychange', () => {
  if (document.visibilityState === 'hidden') flush();
});

// Under the host most keys belong to its menu, which runs the same commands.
window.addEventListener(
  'keydown',
  (event) => {
    const command = pressedCommand(commands, native, (key) => matchesKey(event, key));
    if (!command || isComposing(event)) return;
    event.preventDefault();
    event.stopPropagation();
    command.run(context);
  },
  { capture: true },
);
