import type { Clock } from '../time/monotonicClock';
import { workSlice } from '../time/slices';

/** Longer than a fast typist's interval between keys within a word. */
const QUIET_MS = 120;
/** The longest that work runs before it lets a key or a frame through. */
const SLICE_MS = 5;

/** Waits for pauses in typing. */
export class QuietTime {
  readonly #clock: Clock;
  #lastKey = Number.NEGATIVE_INFINITY;

  constructor(clock: Clock) {
    this.#clock = clock;
  }

  /** Call on every key press. */
  keyPressed(): void {
    this.#lastKey = this.#clock.now();
  }

  /**
   * Does `work` in slices, then calls `run` once no key has been pressed for a moment, or after `longest`
   * milliseconds of continuous typing. Returns a cancel function.
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
