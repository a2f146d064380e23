import type { Clock } from '../time/monotonicClock';

/** A host that never answers must not hold up what waits for a copy. */
const COPY_ANSWER_LIMIT_MS = 10_000;

/**
 * The host ends a share thirty minutes after a service was chosen. One that is older than this got
 * lost, and must not keep the user from ever sharing again.
 */
const SHARE_LIMIT_MS = 40 * 60 * 1000;

/** Copies that wait for the host's answer. Each is settled once; other answers are ignored. */
export class PendingCopies {
  readonly #clock: Clock;
  readonly #settlers = new Map<string, (message: string | null) => void>();

  constructor(clock: Clock) {
    this.#clock = clock;
  }

  /** Settles with the host's word about a copy that was made, else with null. */
  open(requestId: string): Promise<string | null> {
    return new Promise((resolve) => {
      const timer = this.#clock.setTimer(() => this.settle(requestId, null), COPY_ANSWER_LIMIT_MS);
      this.#settlers.set(requestId, (message) => {
        this.#clock.clearTimer(timer);
        resolve(message);
      });
    });
  }

  settle(requestId: string, message: string | null): void {
    const settler = this.#settlers.get(requestId);
    this.#settlers.delete(requestId);
    settler?.(message);
  }
}

/** The one share that may be under way. */
export class PendingShare {
  readonly #now: () => number;
  #attempt: { readonly id: string; readonly since: number } | null = null;

  constructor(now: () => number) {
    this.#now = now;
  }

  get busy(): boolean {
    return this.#attempt !== null && this.#now() - this.#attempt.since < SHARE_LIMIT_MS;
  }

  begin(): string {
    const id = crypto.randomUUID();
    this.#attempt = { id, since: this.#now() };
    return id;
  }

  /** Ends the share under way; false when the answer is for another one. */
  end(attemptId: string): boolean {
    if (this.#attempt?.id !== attemptId) return false;
    this.#attempt = null;
    return true;
  }
}
