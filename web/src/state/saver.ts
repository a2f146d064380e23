/** Decides when the document is saved, and what the user is told about it. */

import type { Clock } from '../time/monotonicClock';

export type SaveStatus = 'saved' | 'unsaved' | 'saving' | 'failed';

interface Prepared {
  readonly serialized: string;
  readonly revision: number;
}

/** A document as it is now, on its way in parts. */
export interface Parts {
  readonly revision: number;
  /** Each step posts a part; throws if that failed. */
  readonly work: Iterator<unknown>;
  /** Posts the document whose parts have been posted; the answer arrives through `answered`. False as for `send`. */
  readonly post: () => boolean;
}

export interface SaverOptions {
  readonly clock: Clock;
  /**
   * Calls `run` during a pause in typing, with most of the document already serialised, or after `longest`
   * milliseconds regardless; returns a cancel function.
   */
  readonly whenIdle: (run: () => void, longest: number) => () => void;
  /** The document as JSON, with its new revision. */
  readonly prepare: () => Prepared;
  /**
   * Posts a document; the answer arrives through `answered`. False if it could not be posted, so no answer
   * comes.
   */
  readonly send: (serialized: string, revision: number) => boolean;
  /** Begins to post a long document in parts; null if it is short or the host takes no parts. */
  readonly beginParts: () => Parts | null;
  /** Does work between keys and frames, then calls `done`; returns a cancel function. */
  readonly inTurns: (work: Iterator<unknown>, done: () => void) => () => void;
  readonly onStatus: (status: SaveStatus) => void;
}

const PAUSE_MS = 300;
const LONGEST_WAIT_MS = 2000;
/**
 * How long to wait for a pause in typing. Longer if posting a huge document would be noticeable: a multiple
 * of what the last one took, up to a limit.
 */
const PATIENCE_MS = 1000;
const PATIENCE_PER_COST = 10;
const LONGEST_PATIENCE_MS = 5000;
const FIRST_RETRY_MS = 1000;
const LAST_RETRY_MS = 60_000;
/** While saving fails, changes do not trigger another attempt sooner than this after the last one. */
const CHANGED_RETRY_MS = 5000;
const ANSWER_LIMIT_MS = 30_000;

/**
 * Changes are counted, and each sent document remembers the count it covers. Saves go out one at a time, so a
 * burst of changes costs one more save, of the latest state; only `handOver` does not wait for the previous
 * answer. Only a positive answer for a revision marks the changes it covers as saved.
 */
export class Saver {
  readonly #options: SaverOptions;
  #changes = 0;
  #savedChanges = 0;
  #oldestUnsaved = 0;
  /** Unanswered documents, oldest first; the last one is the one waited for. */
  #sent: Array<{ revision: number; changes: number }> = [];
  #waiting = false;
  #again: 'at once' | 'when idle' | null = null;
  #failures = 0;
  #retryAt = 0;
  #lastTry = 0;
  /** How long posting the last document blocked the page, in milliseconds. */
  #cost = 0;
  #timer: unknown = null;
  #cancelIdle: (() => void) | null = null;
  /** Only while a document is on its way in parts. */
  #cancelParts: (() => void) | null = null;
  #answerTimer: unknown = null;
  #status: SaveStatus = 'saved';

  constructor(options: SaverOptions) {
    this.#options = options;
  }

  get status(): SaveStatus {
    return this.#status;
  }

  /** Call on every change; saves after a pause, and every two seconds while changes continue. */
  changed(): void {
    const now = this.#options.clock.now();
    if (this.#changes === this.#savedChanges) this.#oldestUnsaved = now;
    this.#changes++;
    // Further changes do not postpone a save that is only waiting for a pause in typing.
    if (!this.#cancelIdle) this.#schedule(this.#nextSave() - now);
    this.#report();
  }

  /** Saves unsaved changes now, without waiting for a pause. */
  flush(): void {
    if (this.#changes !== this.#savedChanges) this.#attempt(true);
  }

  /**
   * Posts unsaved changes before returning, even while an earlier document is unanswered: for content the
   * host discards once the page has accepted it. False if it could not be posted.
   */
  handOver(): boolean {
    return this.#changes === this.#savedChanges || this.#post();
  }

  /** Handles the answer for a document, which may be an older one than the last. */
  answered(success: boolean, revision: number): void {
    const last = this.#sent.at(-1);
    if (success) {
      for (const sent of this.#sent) {
        if (sent.revision <= revision) this.#savedChanges = Math.max(this.#savedChanges, sent.changes);
      }
      this.#sent = this.#sent.filter((sent) => sent.revision > revision);
      if (last && this.#sent.length === 0) this.#succeeded();
    } else if (last && last.revision === revision) {
      this.#sent.pop();
      this.#failed();
    } else {
      this.#sent = this.#sent.filter((sent) => sent.revision !== revision);
    }
    this.#report();
  }

  #nextSave(): number {
    if (this.#failures > 0) return Math.min(this.#retryAt, this.#lastTry + CHANGED_RETRY_MS);
    return Math.min(this.#options.clock.now() + PAUSE_MS, this.#oldestUnsaved + LONGEST_WAIT_MS);
  }

  #attempt(atOnce: boolean): void {
    const isOvertaking = atOnce && this.#cancelParts !== null;
    if (this.#waiting && !isOvertaking) {
      if (this.#again !== 'at once') this.#again = atOnce ? 'at once' : 'when idle';
    } else if (atOnce || this.#failures > 0 || !this.#postParts()) {
      this.#post();
    }
  }

  /** Posts the current document at once, in place of one that is on its way in parts; false if that failed. */
  #post(): boolean {
    this.#begin();
    const prepared = this.#prepare();
    const isPosted =
      prepared !== null &&
      this.#send(prepared.revision, this.#changes, () => this.#options.send(prepared.serialized, prepared.revision));
    return this.#posted(isPosted);
  }

  /** Begins to post the current document in parts; false if it is to be posted as a whole. */
  #postParts(): boolean {
    const parts = this.#options.beginParts();
    if (!parts) return false;
    this.#begin();
    const changes = this.#changes;
    const progress = { failed: false };
    this.#waiting = true;
    this.#cancelParts = this.#options.inTurns(caught(parts.work, progress), () => {
      this.#cancelParts = null;
      this.#posted(!progress.failed && this.#send(parts.revision, changes, parts.post));
    });
    this.#report();
    return true;
  }

  #begin(): void {
    this.#clearTimer();
    this.#cancelParts?.();
    this.#cancelParts = null;
    this.#lastTry = this.#options.clock.now();
  }

  #posted(isPosted: boolean): boolean {
    if (isPosted) {
      this.#cost = this.#options.clock.now() - this.#lastTry;
      return true;
    }
    this.#failed();
    this.#report();
    return false;
  }

  /** A document too long to serialise is a failure like any other. */
  #prepare(): Prepared | null {
    try {
      return this.#options.prepare();
    } catch {
      return null;
    }
  }

  #send(revision: number, changes: number, post: () => boolean): boolean {
    const { clock } = this.#options;
    const sent = { revision, changes };
    this.#sent.push(sent);
    this.#oldestUnsaved = this.#lastTry;
    clock.clearTimer(this.#answerTimer);
    this.#waiting = true;
    if (changes === this.#changes) this.#again = null;
    this.#answerTimer = clock.setTimer(() => {
      this.#failed();
      this.#report();
    }, ANSWER_LIMIT_MS);
    this.#report();
    if (post()) return true;
    this.#sent = this.#sent.filter((one) => one !== sent);
    return false;
  }

  #settle(): void {
    this.#waiting = false;
    this.#options.clock.clearTimer(this.#answerTimer);
  }

  #succeeded(): void {
    this.#settle();
    this.#failures = 0;
    const again = this.#again;
    this.#again = null;
    if (this.#changes === this.#savedChanges) return;
    if (again === 'at once') this.#attempt(true);
    else if (again) this.#schedule(0);
  }

  #failed(): void {
    this.#settle();
    this.#again = null;
    this.#failures++;
    const pause = Math.min(FIRST_RETRY_MS * 2 ** (this.#failures - 1), LAST_RETRY_MS);
    this.#retryAt = this.#options.clock.now() + pause;
    this.#schedule(pause);
  }

  #schedule(delay: number): void {
    this.#clearTimer();
    this.#timer = this.#options.clock.setTimer(
      () => {
        this.#timer = null;
        const longest = Math.min(PATIENCE_MS + PATIENCE_PER_COST * this.#cost, LONGEST_PATIENCE_MS);
        this.#cancelIdle = this.#options.whenIdle(() => {
          this.#cancelIdle = null;
          if (this.#changes !== this.#savedChanges) this.#attempt(false);
        }, longest);
      },
      Math.max(0, delay),
    );
  }

  #clearTimer(): void {
    if (this.#timer !== null) this.#options.clock.clearTimer(this.#timer);
    this.#timer = null;
    this.#cancelIdle?.();
    this.#cancelIdle = null;
  }

  #report(): void {
    const status = this.#currentStatus();
    if (status === this.#status) return;
    this.#status = status;
    this.#options.onStatus(status);
  }

  #currentStatus(): SaveStatus {
    if (this.#changes === this.#savedChanges) return 'saved';
    if (this.#failures > 0) return 'failed';
    return this.#waiting ? 'saving' : 'unsaved';
  }
}

function* caught(work: Iterator<unknown>, progress: { failed: boolean }): Generator<void, void> {
  try {
    while (!work.next().done) yield;
  } catch {
    progress.failed = true;
  }
}
