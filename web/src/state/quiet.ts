import type { Clock } from '../time/monotonicClock';
import { workSlice } from '../time/slices';

/** Longer than a fast typist's interval between keys within a word. */
const QUIET_MS = 120;
/** Somebody who has pressed a key in this time is typing. */
const TYPING_MS = 1000;
/** The pause between steps that keep the host from drawing. */
const FRAME_MS = 16;
/** The longest that work runs before it lets a key or a frame through. */
const SLICE_MS = 5;

/** Waits for pauses in typing. */
export class QuietTime {
  readonly #clock: Clock;
  #lastKey = Number.NEGATIVE_INFINITY;

  constructor(clock: Clock) {
    this.#clock = clock;
  }

  /**
   * Does work whose steps cost the host time, too, then calls `run`: with a frame after each step while somebody types,
   * otherwise as fast as events get through. Returns a cancel function.
   */
  spread(work: Iterator<unknown>, run: () => void): () => void {
    const clock = this.#clock;
    const turn = () => {
      const { isTyping } = this;
      const { done } = workSlice(work, isTyping ? 0 : SLICE_MS, () => clock.now());
      if (done) run();
      else timer = clock.setTimer(turn, isTyping ? FRAME_MS : 0);
    };
    let timer = clock.setTimer(turn, 0);
    return () => clock.clearTimer(timer);
  }

  /** Whether a key was pressed in the last second. */
  get isTyping(): boolean {
    return this.#clock.now() - this.#lastKey < TYPING_MS;
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
