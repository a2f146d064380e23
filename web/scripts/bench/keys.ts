import { nextFrame, nextTask, Recording } from './clock';

interface Key {
  /** From the key's own time to the first listener: the page was busy with something else, or its way was long. */
  readonly waited: number;
  /** The task that took the key and what followed in it. */
  readonly handled: number;
  /** The frame that shows it: callbacks, style, layout, painting. */
  readonly drawn: number;
  /** Both: what the page's thread did for the key, without the wait for the display's beat. */
  readonly busy: number;
  /** From the key's own time to the end of the frame that shows it. */
  readonly painted: number;
}

const keys = new Recording<Key>('typedKeys');
const modifiers = new Set(['Shift', 'Control', 'Alt', 'Meta', 'AltGraph']);

// In the head of the page, so that no other listener comes before this one.
window.addEventListener(
  'keydown',
  ({ key, timeStamp }) => {
    if (!keys.wanted || modifiers.has(key)) return;
    const began = performance.now();
    let handled: number | null = null;
    nextTask(() => {
      handled ??= performance.now();
    });
    nextFrame((frame) => {
      // Where the frame came before the task, the key was handled when the frame began.
      const taken = Math.min(handled ?? frame.began, frame.began) - began;
      const drawn = frame.ended - frame.began;
      keys.add({
        waited: began - timeStamp,
        handled: taken,
        drawn,
        busy: taken + drawn,
        painted: frame.ended - timeStamp,
      });
    });
  },
  { capture: true },
);
