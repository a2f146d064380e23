import { nextFrame, nextTask, Recording } from './clock';

interface Key {
  /** The task that handled the key, including its microtasks, in milliseconds. */
  readonly handled: number;
  /** The frame that shows it: callbacks, style, layout, painting. */
  readonly drawn: number;
  /** Times of day, in milliseconds, when the page received the key and had painted its frame. */
  readonly came: number;
  readonly painted: number;
}

const keys = new Recording<Key>('typedKeys');
const modifiers = new Set(['Shift', 'Control', 'Alt', 'Meta', 'AltGraph']);

// Goes into the page's head, so its listener runs first. The event's own timestamp is not used: it follows
// the display server's clock, which may be ahead of the page's.
window.addEventListener(
  'keydown',
  ({ key }) => {
    if (!keys.wanted || modifiers.has(key)) return;
    const came = Date.now();
    const began = performance.now();
    let handled: number | null = null;
    nextTask(() => {
      handled ??= performance.now();
    });
    nextFrame((frame) => {
      // If the frame came before the task, the key was handled at the start of the frame.
      const until = Math.min(handled ?? frame.began, frame.began);
      const drawn = frame.ended - frame.began;
      keys.add({ handled: until - began, drawn, came, painted: Date.now() });
    });
  },
  { capture: true },
);
