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

function time(run: () => void): number {
  const started = performance.now();
  run();
  return performance.now() - started;
}

const task = () => new Promise<void>((resolve) => nextTask(resolve));
const pause = (ms: number) => new Promise<void>((resolve) => setTimeout(resolve, ms));

/** The page calls the text saved once the host has answered for all of it. */
async function saved(): Promise<void> {
  while (document.querySelector('#saveState')?.getAttribute('data-state') !== 'saved') await pause(20);
}

async function changeNote(): Promise<void> {
  document.querySelector<HTMLElement>('.cm-content')?.focus();
  document.execCommand('insertText', false, 'x');
  // The editor reads what was written in a microtask and may draw after it.
  await task();
}

/** What a save of one changed note consists of, each part by itself. */
async function parts(): Promise<Parts> {
  await saved();
  await changeNote();
  let message: Message = { serialized: '', revision: 0 };
  const serialise = time(() => {
    message = page.quendoPrepareForTermination();
  });
  // To look at one character the engine has to put the whole string into one piece of memory.
  const join = time(() => message.serialized.charCodeAt(message.serialized.length >> 1));
  const post = time(() => page.webkit.messageHandlers.quendoState.postMessage(message));
  page.quendoTerminationDidCancel();
  await saved();
  return { serialise, join, post };
}

/** The longest time for which a save in its normal course lets nothing else happen on the page. */
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

/** The floor: the whole document, as it was handed over, made into JSON anew. */
const stringify = () => time(() => JSON.stringify(page.__QUENDO_NATIVE_STATE__));

Object.assign(window, { measuredSaves: { parts, longestBlock, stringify } });
