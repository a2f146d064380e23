import { forceParsing, Language, ParseContext, foldService, syntaxTree } from '@codemirror/language';
import type { EditorState, Extension, Text } from '@codemirror/state';
import { type EditorView, ViewPlugin, type ViewUpdate } from '@codemirror/view';
import { type Input, type PartialParse, Parser, Tree, TreeFragment } from '@lezer/common';
import { fenceAfterLine, fenceAt } from '../text/fences';

/**
 * From this length on, only the part around the screen is parsed: with a tree of the whole text, every key
 * press would take time proportional to its number of blocks.
 */
const LONG = 100_000;
const MARGIN = 4000;
/** How far to look for a block boundary to start parsing at. */
const REACH = 60_000;

interface Range {
  readonly from: number;
  readonly to: number;
}

const windows = new WeakMap<Tree, Range>();
/** The visible range during a synchronous parse, when the library asks for everything before it too. */
let asked: Range | null = null;

/** A language that parses long texts only around the screen. */
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
      // A text that has become shorter must not reuse a tree with gaps.
      const sound = fragments.some(({ tree }) => windows.has(tree)) ? [] : fragments;
      return this.#whole.startParse(input, sound, ranges);
    }
    const range = windowAround(context.state.doc, asked ?? context.viewport);
    return new WindowParse(
      this.#whole.startParse(input, insideWindows(fragments), [range]),
      range,
      input.length,
      context,
    );
  }
}

/** What of the fragments lies inside the window of its tree; the rest has no nodes because nobody has parsed it. */
function insideWindows(fragments: readonly TreeFragment[]): TreeFragment[] {
  return fragments.flatMap(({ from, to, tree, offset }) => {
    const parsed = windows.get(tree);
    if (!parsed) return [];
    const [start, end] = [Math.max(from, parsed.from - offset), Math.min(to, parsed.to - offset)];
    return start < end ? [new TreeFragment(start, end, tree, offset, true, true)] : [];
  });
}

/** Produces a tree as long as the text, with nothing outside the window. */
class WindowParse implements PartialParse {
  readonly stoppedAt = null;
  /** The whole length: the window is small enough to parse in one go. */
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

  /** Marks everything outside the window to be parsed when it scrolls into view, replacing earlier marks. */
  #skipTheRest(): void {
    const { skipped } = this.#context as unknown as { skipped?: Range[] };
    if (skipped) skipped.length = 0;
    const { from, to } = this.#range;
    if (from > 0) this.#context.skipUntilInView(0, from);
    if (to < this.parsedPos) this.#context.skipUntilInView(to, this.parsedPos);
  }
}

/** Whole lines around a range, starting at a block boundary if one is near. */
function windowAround(text: Text, { from, to }: Range): Range {
  // A request to parse up to a position means the text around that position.
  const near = Math.max(from, to - REACH);
  const end = text.lineAt(Math.min(text.length, to + MARGIN)).to;
  return { from: blockStart(text, Math.max(0, near - MARGIN)), to: end };
}

/**
 * The start of the code block open at a position, otherwise of the next block; the line itself if both are
 * too far away.
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

/** Parses what scrolls into view before it is drawn, so line heights do not change under the reader. */
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

/** A tree that ends below the screen cannot tell how far a heading's section reaches. */
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

/** The end of the last non-blank line before the next heading of the same or a higher level. */
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
