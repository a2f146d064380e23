import type { Text } from '@codemirror/state';
import type { PartialParse, Tree } from '@lezer/common';
import { withoutLongGaps } from '../text/markdown';
import { hasLongParagraph } from '../text/paragraphs';
import { type Block, blocksOf, previewGrammar } from '../text/previewBlocks';
import { h } from '../dom/elements';
import { inSlices } from '../time/slices';
import { isNarrow, onNarrowChange } from './narrow';
import { renderPreviewNode } from './previewDom';

export type PreviewMode = 'beside' | 'instead';

export interface PreviewSource {
  readonly text: Text;
  readonly markdown: boolean;
  /** The language of a text that is not Markdown. */
  readonly label: string;
  /** Offset of the first visible character. */
  readonly top: number;
}

export interface PreviewOptions {
  readonly source: () => PreviewSource | null;
  readonly leave: () => void;
  /** Follows a link to a note, or a tag. */
  readonly follow: (kind: 'note' | 'tag', target: string) => void;
}

/** How much of a text is rendered at once: as much as takes no noticeable time. */
const PART = 120_000;
const PAUSE_MS = 90;
const SLICE_MS = 6;

interface Drawn {
  readonly block: Block;
  readonly element: HTMLElement;
}

/** The rendered note. Follows the text after a pause, in slices, and only while it is open. */
export class Preview {
  readonly element: HTMLElement;
  readonly #page = h('div', { class: 'preview-page' });
  readonly #notice = h('p', { class: 'quiet preview-notice', t: 'preview.part' });
  readonly #options: PreviewOptions;
  #mode: PreviewMode | null = null;
  #drawn: Drawn[] = [];
  #text: Text | null = null;
  #from = 0;
  #cancel = (): void => undefined;

  constructor(options: PreviewOptions) {
    this.#options = options;
    this.element = h(
      'section',
      {
        class: 'preview',
        tLabel: 'preview.label',
        attrs: { id: 'preview', tabindex: '0' },
        on: {
          keydown: (event) => {
            if (event.key === 'Escape') options.leave();
            if (event.key === 'Enter') this.#followLink(event);
          },
          click: (event) => this.#followLink(event),
        },
      },
      this.#notice,
      this.#page,
    );
    this.element.hidden = true;
    onNarrowChange(() => this.#arrange());
  }

  /** Whether it is shown in place of the text. */
  get covers(): boolean {
    return this.#mode === 'instead' || (this.#mode === 'beside' && isNarrow());
  }

  get mode(): PreviewMode | null {
    return this.#mode;
  }

  show(mode: PreviewMode | null): void {
    this.#mode = mode;
    this.#arrange();
    this.element.hidden = true;
    if (mode) this.#begin();
    else this.#forget();
  }

  focus(): void {
    this.element.focus();
  }

  /** Call when the text or the position in it may have changed. */
  changed(): void {
    if (!this.#mode) return;
    this.#cancel();
    const timer = setTimeout(() => this.#begin(), PAUSE_MS);
    this.#cancel = () => clearTimeout(timer);
  }

  /** Redraws everything, for example after a change of language or theme. */
  redraw(): void {
    this.#forget();
    this.changed();
  }

  /** Scrolls to the part the editor shows. */
  follow(): void {
    const source = this.#mode === 'beside' ? this.#options.source() : null;
    if (!source || source.text !== this.#text) return;
    if (partOf(source) !== this.#from) this.changed();
    else this.#scrollTo(source.top);
  }

  #arrange(): void {
    const writing = this.element.parentElement?.contains(document.activeElement) ?? false;
    this.element.parentElement?.setAttribute('data-preview', this.covers ? 'instead' : (this.#mode ?? 'none'));
    if (this.covers && writing) this.focus();
  }

  #followLink(event: Event): void {
    const link = event.target instanceof Element ? event.target.closest<HTMLElement>('a[data-target]') : null;
    if (!link) return;
    event.preventDefault();
    this.#options.follow(link.classList.contains('is-tag') ? 'tag' : 'note', link.dataset.target ?? '');
  }

  #forget(): void {
    this.#cancel();
    this.#drawn = [];
    this.#text = null;
    this.#page.replaceChildren();
  }

  #begin(): void {
    this.#cancel();
    const source = this.#options.source();
    this.element.hidden = source === null;
    if (!source) {
      this.#forget();
      return;
    }
    const from = partOf(source);
    if (source.text === this.#text && from === this.#from) {
      this.#place(source);
      return;
    }
    const to = Math.min(source.text.length, from + PART);
    const part = source.text.sliceString(from, to);
    const done = (blocks: ReadonlyArray<Block>) => {
      this.#text = source.text;
      this.#from = from;
      this.#notice.hidden = source.text.length <= PART;
      this.#draw(blocks);
      this.#place(source);
    };
    if (source.markdown && !hasLongParagraph(part.split('\n'))) this.#parse(part, done);
    else done([plainBlock(part, source)]);
  }

  #place(source: PreviewSource): void {
    if (this.#mode) this.#scrollTo(source.top);
  }

  /** Parses in slices. A change in the meantime cancels this and starts over. */
  #parse(part: string, done: (blocks: ReadonlyArray<Block>) => void): void {
    const parse = previewGrammar.startParse(withoutLongGaps(part));
    this.#cancel = inSlices(stepsOf(parse), {
      slice: SLICE_MS,
      onDone: (tree) => done(blocksOf(part, tree)),
    });
  }

  /** Keeps equal blocks at the start and the end, and rebuilds those in between. */
  #draw(blocks: ReadonlyArray<Block>): void {
    const before = this.#drawn;
    let head = 0;
    while (head < before.length && before[head]?.block.key === blocks[head]?.key) head++;
    let tail = 0;
    const most = Math.min(before.length, blocks.length) - head;
    while (tail < most && before.at(-1 - tail)?.block.key === blocks.at(-1 - tail)?.key) tail++;
    for (const { element } of before.slice(head, before.length - tail)) element.remove();
    const next = before[before.length - tail]?.element ?? null;
    this.#drawn = blocks.map((block, index) => {
      if (index < head) return { block, element: (before[index] as Drawn).element };
      const fromEnd = blocks.length - index;
      if (fromEnd <= tail) return { block, element: (before[before.length - fromEnd] as Drawn).element };
      const element = renderPreviewNode(block.make(), () => this.redraw());
      // A block's first letter decides its direction, except for code and tables.
      if (!element.matches('pre, .table-frame')) element.dir = 'auto';
      this.#page.insertBefore(element, next);
      return { block, element };
    });
    if (!blocks.length) this.#page.replaceChildren(h('p', { class: 'quiet', t: 'preview.empty' }));
    else if (!before.length) for (const stray of this.#page.querySelectorAll(':scope > .quiet')) stray.remove();
  }

  #scrollTo(top: number): void {
    const at = top - this.#from;
    const last = [...this.#drawn].reverse().find(({ block }) => block.from <= at);
    if (!last || top === 0) {
      this.element.scrollTop = 0;
      return;
    }
    const { block, element } = last;
    const share = Math.min(1, (at - block.from) / Math.max(1, block.to - block.from));
    this.element.scrollTop = element.offsetTop + share * element.offsetHeight - 24;
  }
}

function* stepsOf(parse: PartialParse): Generator<undefined, Tree> {
  for (;;) {
    const tree = parse.advance();
    if (tree) return tree;
    yield;
  }
}

/** The start of the shown part of a long text: at a line start, some way above the visible text. */
function partOf({ text, top }: PreviewSource): number {
  if (text.length <= PART) return 0;
  const third = PART / 3;
  const wished = Math.floor(top / third) * third - third;
  return wished <= 0 ? 0 : text.lineAt(wished).from;
}

function plainBlock(part: string, { markdown, label }: PreviewSource): Block {
  const language = markdown ? {} : { language: label };
  return {
    from: 0,
    to: part.length,
    key: `\u0000${part}`,
    make: () => ({ tag: 'pre', children: [part], ...language }),
  };
}
