import { nextFrame, nextTask, Recording } from './clock';

interface Key {
  /** The task that took the key and what followed in it, in milliseconds. */
  readonly handled: number;
  /** The frame that shows it: callbacks, style, layout, painting. */
  readonly drawn: number;
  /** The times of day, in milliseconds, in which the page got the key and had drawn its frame. */
  readonly came: number;
  readonly painted: number;
}

const keys = new Recording<Key>('typedKeys');
const modifiers = new Set(['Shift', 'Control', 'Alt', 'Meta', 'AltGraph']);

// In the head of the page, so that no other listener comes before this one. The event's own time is
// not used: it follows the display server's clock, which may be ahead of the page's.
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
      // Where the frame came before the task, the key was handled when the frame began.
      const until = Math.min(handled ?? frame.began, frame.began);
      const drawn = frame.ended - frame.began;
      keys.add({ handled: until - began, drawn, came, painted: Date.now() });
    });
  },
  { capture: true },
);
