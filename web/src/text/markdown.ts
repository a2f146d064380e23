import { GFM, parser } from '@lezer/markdown';
import { decodeEntity } from './entities';
import { addressOf, destinationOf, type Join, linkText, referenceName } from './links';
import { hasLongParagraph } from './paragraphs';

/** The marks of another text format. An empty mark leaves the text unmarked. */
export interface Style {
  readonly bold: string;
  readonly italic: string;
  readonly struck: string;
  /** Around inline code. */
  readonly code: string;
  /** The line above and below a code block. */
  readonly fence: string;
  readonly link: Join;
}

const grammar = parser.configure(GFM);
type Node = ReturnType<typeof grammar.parse>['topNode'];

/** Deeper nesting than anyone writes is left as it is instead of overflowing the stack. */
const DEEPEST = 400;
const RULE = '———';

/** The emphasis currently open; the same kind is not marked twice. */
const BOLD = 1;
const ITALIC = 2;
const STRUCK = 4;

/**
 * Converts Markdown's marks and leaves everything else alone: line breaks, indentation and all code. A text
 * too long to parse is returned unchanged.
 */
export function convertMarkdown(markdown: string, style: Style): string {
  const source = markdown.replace(/\r\n?/g, '\n');
  if (hasLongParagraph(source.split('\n'))) return source;
  const converted = new Conversion(source, style).run();
  return converted.replace(/^(?:[ \t]*\n)+/, '').trimEnd();
}

class Conversion {
  readonly #source: string;
  readonly #style: Style;
  readonly #definitions = new Map<string, string>();
  readonly #used = new Set<string>();
  #depth = 0;

  constructor(source: string, style: Style) {
    this.#source = source;
    this.#style = style;
  }

  run(): string {
    const tree = grammar.parse(withoutLongGaps(this.#source));
    tree.iterate({
      enter: (at) => {
        if (at.name === 'LinkReference') this.#define(at.node);
      },
    });
    // Definitions may come before or after the links that use them, so references are collected first.
    if (this.#definitions.size) {
      tree.iterate({
        enter: (at) => {
          if (at.name === 'Link' || at.name === 'Image') this.#use(at.node);
        },
      });
    }
    return this.#children(tree.topNode, 0);
  }

  /** The range from `from` to `to`: children converted, the text around them unchanged. */
  #children(node: Node, active: number, from = node.from, to = node.to): string {
    if (this.#depth >= DEEPEST) return this.#source.slice(from, to);
    this.#depth++;
    let out = '';
    let at = from;
    for (let child = node.firstChild; child && child.from < to; child = child.nextSibling) {
      if (child.from < at) continue;
      const gap = this.#source.slice(at, child.from);
      at = child.to;
      // A table's delimiter row means nothing to a reader.
      if (node.name === 'Table' && child.name === 'TableDelimiter') continue;
      out += gap + this.#node(child, active);
      const next = child.nextSibling;
      // A checkbox replaces the bullet before it.
      if (child.name === 'ListMark' && isTicked(child, next)) at = next?.from ?? at;
      if (child.name === 'QuoteMark' && !/^[\s>]/.test(this.#source.slice(at, at + 1))) out += ' ';
    }
    this.#depth--;
    return out + this.#source.slice(at, to);
  }

  #node(node: Node, active: number): string {
    const written = this.#source.slice(node.from, node.to);
    const { bold, italic, struck } = this.#style;
    switch (node.name) {
      case 'StrongEmphasis':
        return this.#emphasis(node, active, BOLD, bold);
      case 'Emphasis':
        return this.#emphasis(node, active, ITALIC, italic);
      case 'Strikethrough':
        return this.#emphasis(node, active, STRUCK, struck);
      case 'EmphasisMark':
      case 'StrikethroughMark':
      case 'HeaderMark':
        return '';
      case 'InlineCode':
        return this.#code(node, written);
      case 'FencedCode':
        return this.#fenced(node);
      case 'CodeBlock':
        return this.#indented(node);
      case 'Link':
      case 'Image':
        return this.#link(node, active);
      case 'Autolink':
        return linkText('', written.slice(1, -1), this.#style.link);
      case 'LinkReference':
        return this.#isUsed(node) ? '' : written;
      case 'ListMark':
        return this.#listMark(node, written);
      case 'TaskMarker':
        return /x/i.test(written) ? '☑' : '☐';
      case 'HorizontalRule':
        return RULE;
      case 'Escape':
        return written.slice(1);
      case 'Entity':
        return decodeEntity(written);
      case 'HardBreak':
        return '\n';
    }
    if (/^(?:ATX|Setext)Heading/.test(node.name)) return this.#heading(node);
    return this.#children(node, active);
  }

  #emphasis(node: Node, active: number, kind: number, mark: string): string {
    const inner = this.#children(node, active | kind);
    if (active & kind) return inner;
    const before = isWordCharacter(this.#source[node.from - 1]);
    const after = isWordCharacter(this.#source[node.to]);
    if (!before && !after) return wrapLines(inner, mark);
    // Inside a word, as in 2*3*4, the marks are more likely meant literally.
    const sign = this.#source.slice(node.from, node.firstChild?.to);
    const digits = /\d/.test(`${this.#source[node.from - 1]}${this.#source[node.to]}`);
    return before && after && (sign.length === 1 || digits) ? sign + inner + sign : inner;
  }

  /** A heading is bold throughout, on lines of its own. */
  #heading(node: Node): string {
    const last = node.lastChild;
    const to = last?.name === 'HeaderMark' && last.from > node.from ? last.from : node.to;
    const inner = this.#children(node, BOLD, node.from, to);
    return wrapLines(inner.replace(/\n[>\s]*$/, '').trim(), this.#style.bold);
  }

  #code(node: Node, written: string): string {
    const from = node.firstChild?.to ?? node.from;
    const lines = this.#source.slice(from, node.lastChild?.from).split('\n');
    const inner = lines.map((line, i) => (i ? line.replace(/^[\s>]+/, '') : line)).join(' ');
    const { code } = this.#style;
    if (code && inner.includes(code)) return written;
    return code + (code ? inner : inner.replace(/^ (.*\S.*) $/, '$1')) + code;
  }

  /** Code stays verbatim; only the fence changes. */
  #fenced(node: Node): string {
    const { fence } = this.#style;
    let code = '';
    let at = node.firstChild?.to ?? node.from;
    let closed = false;
    for (let child = node.firstChild?.nextSibling; child; child = child.nextSibling) {
      const text = this.#source.slice(child.from, child.to);
      code += this.#source.slice(at, child.from).replace(/[^\n]/g, '');
      if (child.name === 'CodeText') code += text;
      else if (child.name === 'QuoteMark') code += '> ';
      closed = child.name === 'CodeMark';
      at = child.to;
    }
    if (fence) return `${fence}${code}${closed ? '' : '\n'}${fence}`;
    const lines = code.split('\n').slice(1, closed ? -1 : undefined);
    return lines.join('\n').slice(quotesBefore(node) * '> '.length);
  }

  #indented(node: Node): string {
    const { fence } = this.#style;
    const code = node.getChildren('CodeText').map(({ from, to }) => this.#source.slice(from, to));
    return fence ? `${fence}\n${code.join('')}\n${fence}` : this.#source.slice(node.from, node.to);
  }

  #link(node: Node, active: number): string {
    const url = this.#urlOf(node);
    if (url === null) return this.#children(node, active);
    const [open, close] = node.getChildren('LinkMark');
    const label = this.#children(node, active, open?.to, close?.from);
    return linkText(label, url, this.#style.link);
  }

  #urlOf(node: Node): string | null {
    const url = destinationOf(node);
    if (url) return addressOf(this.#source.slice(url.from, url.to));
    if (node.getChildren('LinkMark').length > 2) return '';
    const reference = this.#reference(node);
    return reference === null ? null : (this.#definitions.get(reference) ?? null);
  }

  /** The definition of a reference link. */
  #reference(node: Node): string | null {
    const [open, close, ...address] = node.getChildren('LinkMark');
    if (!open || !close || address.length) return null;
    const label = node.getChild('LinkLabel');
    const named = label ? referenceName(this.#source.slice(label.from, label.to)) : null;
    const name = named ?? referenceName(this.#source.slice(open.to, close.from));
    return name !== null && this.#definitions.has(name) ? name : null;
  }

  #define(node: Node): void {
    const name = this.#nameOf(node);
    const url = node.getChild('URL');
    if (name === null || !url || this.#definitions.has(name)) return;
    this.#definitions.set(name, addressOf(this.#source.slice(url.from, url.to)));
  }

  #use(link: Node): void {
    const reference = this.#reference(link);
    if (reference !== null) this.#used.add(reference);
  }

  #isUsed(node: Node): boolean {
    const name = this.#nameOf(node);
    return name !== null && this.#used.has(name);
  }

  #nameOf(node: Node): string | null {
    const label = node.getChild('LinkLabel');
    return label ? referenceName(this.#source.slice(label.from, label.to)) : null;
  }

  #listMark(node: Node, written: string): string {
    if (/\d/.test(written)) return written.replace(')', '.');
    return isTicked(node, node.nextSibling) ? '' : '-';
  }
}

/**
 * The parser looks ahead from every space in a run, which is slow for long runs. Replacing them with other
 * blanks parses the same without that; the output is taken from the original source.
 */
export function withoutLongGaps(source: string): string {
  return source.replace(
    /(\S)( {100,})(?=\S)/g,
    (_, before: string, run: string) => before + '\u00a0'.repeat(run.length),
  );
}

/** The quote marks of a code block's first line, already written before its fence. */
function quotesBefore(block: Node): number {
  const first = block.getChild('CodeText')?.from ?? block.from;
  return block.getChildren('QuoteMark').filter(({ from }) => from < first).length;
}

function isTicked(mark: Node, next: Node | null): boolean {
  return next?.name === 'Task' && mark.to - mark.from === 1;
}

function isWordCharacter(character: string | undefined): boolean {
  return character !== undefined && /[\p{L}\p{N}]/u.test(character);
}

/**
 * Marks do not span lines, so each line gets its own. An address at the end of a line stays outside: the
 * closing mark would be taken as part of it.
 */
function wrapLines(text: string, mark: string): string {
  if (!mark) return text;
  const lines = text.split('\n').map((line) => {
    const start = /^[\s>]*/.exec(line)?.[0] ?? '';
    const rest = line.slice(start.length).trimEnd();
    const address = /(?:: )?(?:https?:\/\/|www\.)\S+$/.exec(rest)?.[0] ?? '';
    const body = rest.slice(0, rest.length - address.length);
    const bare = body.trimEnd();
    return bare ? start + mark + bare + mark + body.slice(bare.length) + address : line;
  });
  return lines.join('\n');
}
