import { h } from '../dom/elements';

export interface Heading {
  /** The index of the first item below it. */
  readonly at: number;
  readonly text: string;
}

/** Where the headings of a list are, between rows of equal height. */
export class ListHeadings {
  readonly all: ReadonlyArray<Heading>;

  /** One heading wherever the text of an item differs from the one before. */
  constructor(texts: Iterable<string> = []) {
    const all: Heading[] = [];
    let at = 0;
    for (const text of texts) {
      if (text !== all.at(-1)?.text) all.push({ at, text });
      at++;
    }
    this.all = all;
  }

  /** How many there are above an item. */
  above(index: number): number {
    let low = 0;
    let high = this.all.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if ((this.all[middle]?.at ?? 0) <= index) low = middle + 1;
      else high = middle;
    }
    return low;
  }

  /** The heading right above an item; empty if there is none. */
  textAt(index: number): string {
    const heading = this.all[this.above(index) - 1];
    return heading?.at === index ? heading.text : '';
  }

  /** The last of `count` items that begins at or above a position. */
  itemAt(position: number, count: number, rowHeight: number, headingHeight: number): number {
    let low = 0;
    let high = count - 1;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (middle * rowHeight + this.above(middle) * headingHeight <= position) low = middle;
      else high = middle - 1;
    }
    return low;
  }

  /** The headings above some of the items. */
  elements(first: number, last: number, topOf: (index: number) => number): ReadonlyArray<HTMLElement> {
    const shown = this.all.filter(({ at }) => at >= first && at < last);
    return shown.map(({ at, text }) => {
      const element = h('div', { class: 'list-heading' }, text);
      element.style.transform = `translateY(${topOf(at)}px)`;
      return element;
    });
  }
}
