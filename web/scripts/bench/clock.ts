/** Shared by the benchmark scripts: timing points visible to a page, and a way to return measurements. */

const channel = new MessageChannel();
const waiting: Array<() => void> = [];
channel.port1.onmessage = () => waiting.shift()?.();

/** Runs as a separate task right after the current one; timers would be delayed by clamping. */
export function nextTask(run: () => void): void {
  waiting.push(run);
  channel.port2.postMessage(null);
}

export interface Frame {
  readonly began: number;
  readonly ended: number;
}

/** Calls back in the task after the next frame, so style, layout and painting are included. */
export function nextFrame(run: (frame: Frame) => void): void {
  requestAnimationFrame((time) => {
    const began = Math.min(time, performance.now());
    nextTask(() => run({ began, ended: performance.now() }));
  });
}

/** Collects measurements on request. The benchmark starts it and takes the values through `window[name]`. */
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
