/** What the measuring scripts share: the moments that a page can see, and a way to hand over what was measured. */

const channel = new MessageChannel();
const waiting: Array<() => void> = [];
channel.port1.onmessage = () => waiting.shift()?.();

/** Runs as a task of its own as soon as the present one has ended; timers would be late by their own rules. */
export function nextTask(run: () => void): void {
  waiting.push(run);
  channel.port2.postMessage(null);
}

export interface Frame {
  readonly began: number;
  readonly ended: number;
}

/** Waits for the next frame and for the task after it: style, layout and painting lie in between. */
export function nextFrame(run: (frame: Frame) => void): void {
  requestAnimationFrame((time) => {
    const began = Math.min(time, performance.now());
    nextTask(() => run({ began, ended: performance.now() }));
  });
}

/** Keeps what is measured while it is wanted. The benchmark starts and takes it by `window[name]`. */
export class Recording<Value> {
  #values: Value[] | null = null;

  constructor(name: string) {
    Object.assign(window, {
      [name]: {
        start: () => {
          this.#values = [];
        },
        count: () => this.#values?.length ?? 0,
        take: () => {
          const values = this.#values ?? [];
          this.#values = null;
          return values;
        },
      },
    });
  }

  get wanted(): boolean {
    return this.#values !== null;
  }

  add(value: Value): void {
    this.#values?.push(value);
  }
}
