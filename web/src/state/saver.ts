/** When the document is sent to be stored, and what may be said about it. */

import type { Clock } from '../time/monotonicClock';

export type SaveStatus = 'saved' | 'unsaved' | 'saving' | 'failed';

interface Prepared {
  readonly serialized: string;
  readonly revision: number;
}

export interface SaverOptions {
  readonly clock: Clock;
  /**
   * Calls back when nobody types, with most of the document made ready, or after `longest`
   * milliseconds all the same; gives the way to call it off.
   */
  readonly whenIdle: (run: () => void, longest: number) => () => void;
  /** The document as JSON, and the revision that was given to it. */
  readonly prepare: () => Prepared;
  /** Posts a document; the answer comes through `answered`. False when nobody took it, and none comes. */
  readonly send: (serialized: string, revision: number) => boolean;
  readonly onStatus: (status: SaveStatus) => void;
}

const PAUSE_MS = 300;
const LONGEST_WAIT_MS = 2000;
/**
 * A quiet moment is waited for this long, and longer where handing over a huge document would be
 * felt: so many times as long as it took the last time, within a limit.
 */
const PATIENCE_MS = 1000;
const PATIENCE_PER_COST = 10;
const LONGEST_PATIENCE_MS = 5000;
const FIRST_RETRY_MS = 1000;
const LAST_RETRY_MS = 60_000;
/** While saving fails, changes alone do not bring on another try sooner than this after the last. */
const CHANGED_RETRY_MS = 5000;
const ANSWER_LIMIT_MS = 30_000;

/**
 * Changes are counted; each sent document remembers the count it covers. Saves go out one at a time,
 * so a burst of changes costs one more save, of the newest state; only `handOver` does not wait for
 * the answer to the one before. Only a positive answer for a revision makes what that revision covers
 * count as saved.
 */
export class Saver {
  readonly #options: SaverOptions;
  #changes = 0;
  #savedChanges = 0;
  #oldestUnsaved = 0;
  /** Documents without an answer yet, oldest first; the last one is the one waited for. */
  #sent: Array<{ revision: number; changes: number }> = [];
  #waiting = false;
  #again: 'at once' | 'when idle' | null = null;
  #failures = 0;
  #retryAt = 0;
  #lastTry = 0;
  /** Milliseconds for which the last document that was sent kept everything else waiting. */
  #cost = 0;
  #timer: unknown = null;
  #cancelIdle: (() => void) | null = null;
  #answerTimer: unknown = null;
  #status: SaveStatus = 'saved';

  constructor(options: SaverOptions) {
    this.#options = options;
  }

  get status(): SaveStatus {
    return this.#status;
  }

  /** Something changed; it is saved after a pause, and while changes go on, every two seconds. */
  changed(): void {
    const now = this.#options.clock.now();
    if (this.#changes === this.#savedChanges) this.#oldestUnsaved = now;
    this.#changes++;
    // A save that only waits for a quiet moment is not put off by what goes on meanwhile.
    if (!this.#cancelIdle) this.#schedule(this.#nextSave() - now);
    this.#report();
  }

  /** Saves what is not saved, now and whatever was waited for. */
  flush(): void {
    if (this.#changes !== this.#savedChanges) this.#attempt(true);
  }

  /**
   * Posts what is not saved before it returns, even while an earlier document is unanswered: for what
   * the host discards once the page has taken it. False when it could not be posted.
   */
  handOver(): boolean {
    return this.#changes === this.#savedChanges || this.#post();
  }

  /** The answer for a document. Answers for older documents than the last count for what they are. */
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
    if (this.#waiting) {
      if (this.#again !== 'at once') this.#again = atOnce ? 'at once' : 'when idle';
      return;
    }
    this.#post();
  }

  /** Posts the document as it is now; false when that failed. */
  #post(): boolean {
    this.#clearTimer();
    const { clock } = this.#options;
    this.#lastTry = clock.now();
    const prepared = this.#prepare();
    if (prepared && this.#send(prepared)) {
      this.#cost = clock.now() - this.#lastTry;
      return true;
    }
    this.#failed();
    this.#report();
    return false;
  }

  /** A document too long to be put together is a failure like any other. */
  #prepare(): Prepared | null {
    try {
      return this.#options.prepare();
    } catch {
      return null;
    }
  }

  #send({ serialized, revision }: Prepared): boolean {
    const { clock, send } = this.#options;
    const sent = { revision, changes: this.#changes };
    this.#sent.push(sent);
    this.#oldestUnsaved = this.#lastTry;
    clock.clearTimer(this.#answerTimer);
    this.#waiting = true;
    this.#again = null;
    this.#answerTimer = clock.setTimer(() => {
      this.#failed();
      this.#report();
    }, ANSWER_LIMIT_MS);
    this.#report();
    if (send(serialized, revision)) return true;
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
    const status = this.#judge();
    if (status === this.#status) return;
    this.#status = status;
    this.#options.onStatus(status);
  }

  #judge(): SaveStatus {
    if (this.#changes === this.#savedChanges) return 'saved';
    if (this.#failures > 0) return 'failed';
    return this.#waiting ? 'saving' : 'unsaved';
  }
}
