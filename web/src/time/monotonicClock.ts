/** A monotonic clock with timers, for delays and time limits. */
export interface Clock {
  /** Milliseconds since an arbitrary point in time. Monotonic, so not a date. */
  now(): number;
  setTimer(run: () => void, delay: number): unknown;
  clearTimer(timer: unknown): void;
}

/** The engine's monotonic clock, unaffected by changes to the system time. */
export const pageClock: Clock = {
  now: () => performance.now(),
  setTimer: (run, delay) => setTimeout(run, delay),
  clearTimer: (timer) => clearTimeout(timer as number),
};
