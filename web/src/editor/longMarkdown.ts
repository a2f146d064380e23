import { forceParsing, Language, ParseContext, foldService, syntaxTree } from '@codemirror/language';
import type { EditorState, Extension, Text } from '@codemirror/state';
import { type EditorView, ViewPlugin, type ViewUpdate } from '@codemirror/view';
import { type Input, type PartialParse, Parser, Tree, type TreeFragment } from '@lezer/common';
import { fenceAfterLine, fenceAt } from '../text/fences';

/**
 * From this length on, only what is around the screen is parsed: with a tree of the whole text, each key would
 * take time for all of its blocks.
 */
const LONG = 100_000;
const MARGIN = 4000;
/** How far a block of code or a blank line is looked for, to begin at the edge of a block. */
const REACH = 60_000;

interface Range {
  readonly from: number;
  readonly to: number;
}

const windows = new WeakMap<Tree, Range>();
/** What is on screen, while it is parsed at once: the library asks for all that comes before it as well. */
let asked: Range | null = null;

/** A language that parses a long text only around the screen. */
export function windowed({ data, parser, name }: Language): Language {
  return new Language(data, new WindowedParser(parser), [longFolds, followScreen], name);
}

class WindowedParser extends Parser {
  readonly #whole: Parser;

  constructor(whole: Parser) {
    super();
    this.#whole = whole;
  }

  createParse(input: Input, fragments: readonly TreeFragment[], ranges: readonly Range[]): PartialParse {
    const context = ParseContext.get();
    if (!context || input.length < LONG || ranges.length > 1) {
      // A text that has become shorter must not take over the holes of the tree that it had.
      const sound = fragments.some(({ tree }) => windows.has(tree)) ? [] : fragments;
      return this.#whole.startParse(input, sound, ranges);
    }
    const range = windowAround(context.state.doc, asked ?? context.viewport);
    return new WindowParse(this.#whole.startParse(input, [], [range]), range, input.length, context);
  }
}

/** Ends with a tree as long as the text, in which there is nothing outside of the window. */
class WindowParse implements PartialParse {
  readonly stoppedAt = null;
  /** The parse is short, so that it is always taken as a whole. */
  readonly parsedPos: number;
  readonly #parse: PartialParse;
  readonly #range: Range;
  readonly #context: ParseContext;

  constructor(parse: PartialParse, range: Range, length: number, context: ParseContext) {
    this.#parse = parse;
    this.#range = range;
    this.parsedPos = length;
    this.#context = context;
  }

  advance(): Tree | null {
    const tree = this.#parse.advance();
    if (!tree) return null;
    const { from } = this.#range;
    const positions = tree.positions.map((position) => position + from);
    const whole = new Tree(tree.type, tree.children, positions, this.parsedPos);
    windows.set(whole, this.#range);
    this.#skipTheRest();
    return whole;
  }

  stopAt(): void {}

  /** Has the rest parsed when it comes on screen. What was said for the last window is taken back. */
  #skipTheRest(): void {
    const { skipped } = this.#context as unknown as { skipped?: Range[] };
    if (skipped) skipped.length = 0;
    const { from, to } = this.#range;
    if (from > 0) this.#context.skipUntilInView(0, from);
    if (to < this.parsedPos) this.#context.skipUntilInView(to, this.parsedPos);
  }
}

/** Whole lines around a part of the text, from the edge of a block on if there is one near. */
function windowAround(text: Text, { from, to }: Range): Range {
  // Up to some place means around that place.
  const near = Math.max(from, to - REACH);
  const end = text.lineAt(Math.min(text.length, to + MARGIN)).to;
  return { from: blockStart(text, Math.max(0, near - MARGIN)), to: end };
}

/**
 * The beginning of the block of code that is open at a place, else of the first block after it; the next line
 * when all that is too far away.
 */
function blockStart(text: Text, position: number): number {
  if (position === 0) return 0;
  const first = text.lineAt(position);
  const fence = fenceAt(text, first.from);
  if (fence) {
    for (let line = first; line.number > 1 && first.from - line.from < REACH; ) {
      line = text.line(line.number - 1);
      if (line.text.trim().startsWith(fence) && !fenceAt(text, line.from)) return line.from;
    }
    return first.from;
  }
  for (let line = first; line.number < text.lines && line.from - first.from < MARGIN / 2; ) {
    const next = text.line(line.number + 1);
    if (!line.text.trim() && /^\S/.test(next.text)) return next.from;
    line = next;
  }
  return first.from;
}

/** Parses what comes on screen before it is drawn, so that nothing changes its height under the reader's eyes. */
const followScreen = ViewPlugin.fromClass(
  class {
    #gone = false;

    constructor(view: EditorView) {
      this.#follow(view);
    }

    update({ view, viewportChanged }: ViewUpdate): void {
      if (viewportChanged) this.#follow(view);
    }

    destroy(): void {
      this.#gone = true;
    }

    #follow(view: EditorView): void {
      const parsed = windows.get(syntaxTree(view.state));
      const { from, to } = view.viewport;
      if (!parsed || (parsed.from <= from && to <= parsed.to)) return;
      queueMicrotask(() => {
        if (this.#gone) return;
        asked = view.viewport;
        try {
          forceParsing(view);
        } finally {
          asked = null;
        }
      });
    }
  },
);

/** How far a heading reaches cannot be told from a tree that ends below the screen. */
const longFolds: Extension = foldService.of((state, from, to) => {
  if (state.doc.length < LONG) return null;
  const level = headingLevel(state.doc.lineAt(from).text);
  if (!level || fenceAt(state.doc, from)) return null;
  const end = sectionEnd(state, from, level);
  return end > to ? { from: to, to: end } : null;
});

function headingLevel(line: string): number {
  return /^ {0,3}(#{1,6})(?:\s|$)/.exec(line)?.[1]?.length ?? 0;
}

/** The end of the last line with anything in it before the next heading of this level or a higher one. */
function sectionEnd({ doc }: EditorState, from: number, level: number): number {
  const { number } = doc.lineAt(from);
  let fence = '';
  let at = doc.line(number).to;
  let end = at;
  for (const line of doc.iterLines(number + 1)) {
    const other = fence ? 0 : headingLevel(line);
    if (other && other <= level) break;
    fence = fenceAfterLine(fence, line);
    at += line.length + 1;
    if (line.trim()) end = at;
  }
  return end;
}
