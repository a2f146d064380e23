/** Measures pauses and time limits, and runs timers. */
export interface Clock {
  /** Milliseconds since an arbitrary moment. Monotonic, so it cannot tell the date. */
  now(): number;
  setTimer(run: () => void, delay: number): unknown;
  clearTimer(timer: unknown): void;
}

/** The engine's own monotonic clock, which setting the desktop's clock does not affect. */
export const pageClock: Clock = {
  now: () => performance.now(),
  setTimer: (run, delay) => setTimeout(run, delay),
  clearTimer: (timer) => clearTimeout(timer as number),
};
