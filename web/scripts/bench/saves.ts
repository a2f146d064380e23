import { nextTask } from './clock';

interface Message {
  readonly serialized: string;
  readonly revision: number;
}

interface Page {
  readonly webkit: {
    readonly messageHandlers: { readonly quendoState: { postMessage(message: Message): void } };
  };
  readonly quendoPrepareForTermination: () => Message;
  readonly quendoTerminationDidCancel: () => void;
  readonly __QUENDO_NATIVE_STATE__: unknown;
}

interface Parts {
  readonly serialise: number;
  readonly join: number;
  readonly post: number;
}

const page = window as unknown as Page;
/** The page takes it away once it has read it. */
const stored = page.__QUENDO_NATIVE_STATE__;

function time(run: () => void): number {
  const started = performance.now();
  run();
  return performance.now() - started;
}

const task = () => new Promise<void>((resolve) => nextTask(resolve));
const pause = (ms: number) => new Promise<void>((resolve) => setTimeout(resolve, ms));

/** Waits until the page reports "saved", that is, the host has confirmed every change. */
async function saved(): Promise<void> {
  while (document.querySelector('#saveState')?.getAttribute('data-state') !== 'saved') await pause(20);
}

async function changeNote(): Promise<void> {
  document.querySelector<HTMLElement>('.cm-content')?.focus();
  document.execCommand('insertText', false, 'x');
  // The editor handles DOM changes in a microtask and may draw afterwards.
  await task();
}

/** Times the steps of saving one changed note separately. */
async function parts(): Promise<Parts> {
  await saved();
  await changeNote();
  let message: Message = { serialized: '', revision: 0 };
  const serialise = time(() => {
    message = page.quendoPrepareForTermination();
  });
  // Reading one character forces the engine to flatten the string's rope.
  const join = time(() => message.serialized.charCodeAt(message.serialized.length >> 1));
  const post = time(() => page.webkit.messageHandlers.quendoState.postMessage(message));
  page.quendoTerminationDidCancel();
  await saved();
  return { serialise, join, post };
}

/** The longest time an ordinary save blocks the page. */
async function longestBlock(): Promise<number> {
  await saved();
  await changeNote();
  let longest = 0;
  let last = performance.now();
  while (document.querySelector('#saveState')?.getAttribute('data-state') !== 'saved') {
    await task();
    const now = performance.now();
    longest = Math.max(longest, now - last);
    last = now;
  }
  return longest;
}

/** The baseline: serialising the whole initial document from scratch. */
const stringify = () => time(() => JSON.stringify(stored));

Object.assign(window, { measuredSaves: { parts, longestBlock, stringify } });
