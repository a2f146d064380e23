import type { Clock } from '../time/monotonicClock';

/** How long to wait for the host to answer a copy, so a lost answer blocks nothing. */
const COPY_ANSWER_LIMIT_MS = 10_000;

/**
 * The host ends a share thirty minutes after the user picked a service. An older one was lost, and must not
 * block sharing for good.
 */
const SHARE_LIMIT_MS = 40 * 60 * 1000;

/** Copies waiting for the host's answer. Each settles once; other answers are ignored. */
export class PendingCopies {
  readonly #clock: Clock;
  readonly #settlers = new Map<string, (message: string | null) => void>();

  constructor(clock: Clock) {
    this.#clock = clock;
  }

  /** Resolves with the host's message if the copy succeeded, otherwise with null. */
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

/** The one share that may be in progress. */
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

  /** Ends the share in progress; false if the answer belongs to another one. */
  end(attemptId: string): boolean {
    if (this.#attempt?.id !== attemptId) return false;
    this.#attempt = null;
    return true;
  }
}

/** Files that go out one after another, because the host holds few at a time. */
export class PendingFiles {
  #batch = 0;
  #files: ReadonlyArray<OutgoingFile> = [];

  /** In place of those that have not gone out yet. Returns the first. */
  begin(files: ReadonlyArray<Omit<OutgoingFile, 'id'>>): OutgoingFile | null {
    this.#batch++;
    this.#files = files.map((file, at) => ({ ...file, id: `library ${this.#batch} ${at}` }));
    return this.#files[0] ?? null;
  }

  has(id: string): boolean {
    return this.#files[0]?.id === id;
  }

  /** The one after the first; null if there is none or it is not to go. */
  next(isToGo: boolean): OutgoingFile | null {
    this.#files = isToGo ? this.#files.slice(1) : [];
    return this.#files[0] ?? null;
  }
}

export interface OutgoingFile {
  readonly id: string;
  readonly filename: string;
  readonly content: string;
}
