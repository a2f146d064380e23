import type { Context } from '../commands/context';
import { inSlices } from '../time/slices';

/** After the start, when the first keys and frames are through. */
const START_MS = 1500;
/** Longer than between words. */
const PAUSE_MS = 700;
/** As long as somebody thinks about a title. */
const TITLE_MS = 3000;
const SHOWN_MS = 100;
const SLICE_MS = 5;
/** Nobody waits for the index, so it leaves most of the time to others. */
const REST_MS = 10;

/**
 * Reads the tags and links of all notes after the start, and those of changed notes after a pause. `onRead` is called
 * once, when all have been read for the first time.
 */
export function keepIndex(context: Context, onRead: () => void): void {
  const { index, titles, workspace } = context;
  let cancel = (): void => undefined;
  let title: ReturnType<typeof setTimeout> | undefined;
  let isRead = false;
  const readLater = (delay: number) => {
    cancel();
    const onDone = () => {
      if (!isRead) onRead();
      isRead = true;
      show(context);
    };
    cancel = inSlices(index.read(), { slice: SLICE_MS, delay, pause: REST_MS, onDone });
  };
  /** Not before all notes were read once: links would be missed. */
  const settleLater = () => {
    clearTimeout(title);
    title = setTimeout(() => (isRead ? titles.settle() : settleLater()), TITLE_MS);
  };
  workspace.onChange((change) => {
    if (change === 'settings') showTags(context);
    if (change === 'tabs' || change === 'notes') {
      titles.shown();
      countLater(context);
    }
    if (change !== 'text' && change !== 'notes') return;
    // The titles stay as they were while somebody writes, so that no key waits for a new list of them.
    if (change === 'notes') index.changed();
    settleLater();
    readLater(PAUSE_MS);
  });
  titles.shown();
  readLater(START_MS);
}

function show(context: Context): void {
  showTags(context);
  countLinks(context);
}

let shown: string | null = null;
let counting: ReturnType<typeof setTimeout> | undefined;

/** The links to another note are counted once it is on the screen. */
function countLater(context: Context): void {
  const { active } = context.workspace.tabs;
  if (active === shown) return;
  shown = active;
  context.index.reorder();
  context.shell.backlinks.show(null);
  clearTimeout(counting);
  counting = setTimeout(() => countLinks(context), SHOWN_MS);
}

/** At the start, once all notes have been read. */
function countLinks({ index, shell, workspace }: Context): void {
  if (!index.isWhole) return;
  const note = workspace.activeNote;
  shell.backlinks.show(note && index.linkingTo(note).length);
}

function showTags({ index, shell, workspace }: Context): void {
  shell.sidebar.tags.show(index.tags, workspace.settings.tagsOpen);
}
