import { workSlice } from '../time/slices';
import type { Clock } from './saver';

/** Longer than a quick writer takes from one key to the next within a word. */
const QUIET_MS = 120;
/** The longest that work goes on before it lets a key or a frame through. */
const SLICE_MS = 5;

/** Finds moments in which nobody is typing. */
export class QuietTime {
  readonly #clock: Clock;
  #lastKey = Number.NEGATIVE_INFINITY;

  constructor(clock: Clock) {
    this.#clock = clock;
  }

  /** A key was pressed. */
  disturbed(): void {
    this.#lastKey = this.#clock.now();
  }

  /**
   * Does `work` bit by bit, then calls `run` once no key has been pressed for a moment. Who types
   * without any pause is waited for so many milliseconds at most. Gives the way to call it off.
   */
  after(work: Iterator<unknown>, longest: number, run: () => void): () => void {
    const clock = this.#clock;
    const until = clock.now() + longest;
    let timer: unknown = null;
    let done = false;
    const turn = () => {
      done ||= workSlice(work, SLICE_MS, () => clock.now()).done === true;
      const now = clock.now();
      const quietAt = Math.min(this.#lastKey + QUIET_MS, until);
      if (done && now >= quietAt) run();
      else timer = clock.setTimer(turn, done ? quietAt - now : 0);
    };
    timer = clock.setTimer(turn, 0);
    return () => clock.clearTimer(timer);
  }
}
