import type { SyntaxNode, Tree } from '@lezer/common';
import { GFM, parser } from '@lezer/markdown';
import { safeAddress } from './address';
import { decodeEntity } from './entities';
import { addressOf, destinationOf, referenceName } from './links';
import { noteMarks, partsOfLink } from './noteMarks';
import { type Surprise, surpriseOf } from './trueAddress';

export const previewGrammar = parser.configure([GFM, noteMarks]);

/** Every element a preview may contain. */
// biome-ignore format: readable as a block
export type Tag =
  | 'h1' | 'h2' | 'h3' | 'h4' | 'h5' | 'h6' | 'p' | 'blockquote' | 'ul' | 'ol' | 'li' | 'pre' | 'hr' | 'div'
  | 'table' | 'thead' | 'tbody' | 'tr' | 'th' | 'td' | 'em' | 'strong' | 's' | 'code' | 'a' | 'br' | 'span';

export interface PreviewNode {
  readonly tag: Tag;
  readonly children: ReadonlyArray<PreviewNode | string>;
  readonly kind?: 'image' | 'done' | 'toDo' | 'raw' | 'end' | 'center' | 'note' | 'tag';
  /** Links only, and only addresses that are safe to follow. */
  readonly href?: string;
  /** Web links only: what their label hides. */
  readonly surprise?: Surprise;
  /** The title of the note that a link leads to, or the name of a tag. */
  readonly target?: string;
  /** The first number of an ordered list. */
  readonly start?: number;
  /** The info string of a code block. */
  readonly language?: string;
}

export interface Block {
  readonly from: number;
  readonly to: number;
  /** Blocks with equal keys render alike. */
  readonly key: string;
  readonly make: () => PreviewNode;
}

/** Deeper nesting than anyone writes is shown as text instead of overflowing the stack. */
const DEEPEST = 100;

/** The blocks of a parsed text. A block's content is built only on demand. */
export function blocksOf(source: string, tree: Tree): Block[] {
  const definitions = definitionsOf(source, tree);
  const context = [...definitions].join('\n');
  const blocks: Block[] = [];
  for (let node = tree.topNode.firstChild; node; node = node.nextSibling) {
    const { from, to } = node;
    if (node.name === 'LinkReference') continue;
    const block = node;
    const key = `${source.slice(from, to)}\u0000${context}`;
    blocks.push({ from, to, key, make: () => new BlockBuilder(source, definitions).block(block, 0) });
  }
  return blocks;
}

function definitionsOf(source: string, tree: Tree): Map<string, string> {
  const found = new Map<string, string>();
  tree.iterate({
    enter: ({ name, node }) => {
      if (name === 'Paragraph') return false;
      if (name !== 'LinkReference') return;
      const label = node.getChild('LinkLabel');
      const url = node.getChild('URL');
      const key = label && referenceName(source.slice(label.from, label.to));
      if (key && url && !found.has(key)) found.set(key, source.slice(url.from, url.to));
    },
  });
  return found;
}

class BlockBuilder {
  constructor(
    readonly source: string,
    readonly definitions: ReadonlyMap<string, string>,
  ) {}

  block(node: SyntaxNode, depth: number): PreviewNode {
    if (depth > DEEPEST) return { tag: 'p', children: [this.text(node)] };
    const heading = /^(?:ATX|Setext)Heading([1-6])$/.exec(node.name);
    if (heading) return { tag: `h${heading[1]}` as Tag, children: trimmed(this.inline(node, depth)) };
    switch (node.name) {
      case 'Blockquote':
        return { tag: 'blockquote', children: this.blocks(node, depth) };
      case 'BulletList':
        return { tag: 'ul', children: this.blocks(node, depth) };
      case 'OrderedList': {
        const mark = node.firstChild?.getChild('ListMark');
        const start = mark ? Number.parseInt(this.text(mark), 10) : 1;
        return { tag: 'ol', children: this.blocks(node, depth), start };
      }
      case 'ListItem':
        return { tag: 'li', children: this.blocks(node, depth) };
      case 'FencedCode':
      case 'CodeBlock':
        return this.code(node);
      case 'HorizontalRule':
        return { tag: 'hr', children: [] };
      case 'Table':
        return this.table(node, depth);
      case 'Task':
        return { tag: 'p', children: trimmed(this.inline(node, depth)) };
      case 'Paragraph':
        return { tag: 'p', children: this.inline(node, depth) };
      default:
        return { tag: 'div', kind: 'raw', children: [this.text(node)] };
    }
  }

  text({ from, to }: SyntaxNode): string {
    return this.source.slice(from, to);
  }

  blocks(node: SyntaxNode, depth: number): PreviewNode[] {
    const out: PreviewNode[] = [];
    for (let child = node.firstChild; child; child = child.nextSibling) {
      if (/^(?:ListMark|QuoteMark|LinkReference)$/.test(child.name)) continue;
      out.push(this.block(child, depth + 1));
    }
    return out;
  }

  /** Code verbatim, without its fence or the quote and list marks around it. */
  code(node: SyntaxNode): PreviewNode {
    const info = node.getChild('CodeInfo');
    const lines = node.getChildren('CodeText').map((part) => this.text(part));
    const language = info ? { language: this.text(info) } : {};
    return { tag: 'pre', children: [lines.join('')], ...language };
  }

  table(node: SyntaxNode, depth: number): PreviewNode {
    const delimiter = node.getChild('TableDelimiter');
    const sides = delimiter
      ? this.text(delimiter)
          .replace(/^\s*\||\|\s*$/g, '')
          .split('|')
          .map(sideOf)
      : [];
    const row = (line: SyntaxNode, tag: Tag): PreviewNode => ({
      tag: 'tr',
      children: sides.map((side, index) => {
        const cell = cellsOf(line)[index];
        return { tag, children: cell ? this.inline(cell, depth + 1) : [], ...side };
      }),
    });
    const head = node.getChildren('TableHeader').map((line) => row(line, 'th'));
    const body = node.getChildren('TableRow').map((line) => row(line, 'td'));
    return {
      tag: 'table',
      children: [
        { tag: 'thead', children: head },
        { tag: 'tbody', children: body },
      ],
    };
  }

  inline(node: SyntaxNode, depth: number, from = node.from, to = node.to): Array<PreviewNode | string> {
    if (depth > DEEPEST) return [this.source.slice(from, to)];
    const out: Array<PreviewNode | string> = [];
    let at = from;
    for (let child = node.firstChild; child && child.from < to; child = child.nextSibling) {
      if (child.from < at) continue;
      if (child.from > at) out.push(this.source.slice(at, child.from));
      out.push(...this.span(child, depth + 1));
      at = child.to;
    }
    if (at < to) out.push(this.source.slice(at, to));
    return out;
  }

  span(node: SyntaxNode, depth: number): Array<PreviewNode | string> {
    const written = this.text(node);
    switch (node.name) {
      case 'Emphasis':
        return [{ tag: 'em', children: this.inline(node, depth) }];
      case 'StrongEmphasis':
        return [{ tag: 'strong', children: this.inline(node, depth) }];
      case 'Strikethrough':
        return [{ tag: 's', children: this.inline(node, depth) }];
      case 'InlineCode': {
        const inner = this.source.slice(node.firstChild?.to ?? node.from, node.lastChild?.from ?? node.to);
        return [{ tag: 'code', children: [inner.replace(/\n[\s>]*/g, ' ').replace(/^ (.*\S.*) $/, '$1')] }];
      }
      case 'Link':
        return this.link(node, depth);
      case 'Image': {
        const label = this.label(node, depth);
        return [{ tag: 'span', kind: 'image', children: label }];
      }
      case 'Autolink':
        return [linkTo(written.slice(1, -1), [written.slice(1, -1)])];
      case 'URL':
        return [linkTo(written, [written])];
      case 'NoteLink': {
        const { title, label } = partsOfLink(written);
        return [{ tag: 'a', kind: 'note', target: title, children: [label] }];
      }
      case 'NoteTag':
        return [{ tag: 'a', kind: 'tag', target: written.slice(1), children: [written] }];
      case 'HardBreak':
        return ['\n'];
      case 'Escape':
        return [written.slice(1)];
      case 'Entity':
        return [decodeEntity(written)];
      case 'TaskMarker':
        return [{ tag: 'span', kind: /x/i.test(written) ? 'done' : 'toDo', children: [] }];
      case 'HTMLTag':
      case 'Comment':
      case 'ProcessingInstruction':
        return [{ tag: 'span', kind: 'raw', children: [written] }];
    }
    return /Mark$/.test(node.name) ? [] : this.inline(node, depth);
  }

  label(node: SyntaxNode, depth: number): Array<PreviewNode | string> {
    const [open, close] = node.getChildren('LinkMark');
    return this.inline(node, depth, open?.to, close?.from);
  }

  link(node: SyntaxNode, depth: number): Array<PreviewNode | string> {
    const url = destinationOf(node);
    const target = url ? this.text(url) : this.definitions.get(this.reference(node) ?? '');
    // A bracketed label without a target is plain text.
    if (target === undefined) return [this.text(node)];
    return [linkTo(addressOf(target), this.label(node, depth).flatMap(unlinked))];
  }

  reference(node: SyntaxNode): string | null {
    const [open, close] = node.getChildren('LinkMark');
    const label = node.getChild('LinkLabel');
    const named = label ? referenceName(this.text(label)) : null;
    return named ?? (open && close ? referenceName(this.source.slice(open.to, close.from)) : null);
  }
}

function linkTo(address: string, label: ReadonlyArray<PreviewNode | string>): PreviewNode {
  const href = safeAddress(address);
  if (href === null) return { tag: 'span', children: label };
  const surprise = surpriseOf(label.map(lettersOf).join(''), href);
  return { tag: 'a', href, children: label, ...(surprise ? { surprise } : {}) };
}

/** What stands in the label of a link leads nowhere by itself. */
function unlinked(node: PreviewNode | string): Array<PreviewNode | string> {
  if (typeof node === 'string') return [node];
  const children = node.children.flatMap(unlinked);
  return node.tag === 'a' ? children : [{ ...node, children }];
}

function lettersOf(node: PreviewNode | string): string {
  return typeof node === 'string' ? node : node.children.map(lettersOf).join('');
}

/** The cells of a row, including empty ones between two bars. */
function cellsOf(row: SyntaxNode): Array<SyntaxNode | null> {
  const cells: Array<SyntaxNode | null> = [];
  let cell: SyntaxNode | null = null;
  for (let child = row.firstChild; child; child = child.nextSibling) {
    if (child.name === 'TableCell') cell = child;
    else if (child.name === 'TableDelimiter' && (child.from > row.from || cell)) {
      cells.push(cell);
      cell = null;
    }
  }
  if (cell) cells.push(cell);
  return cells;
}

function sideOf(dashes: string): { readonly kind?: 'end' | 'center' } {
  const text = dashes.trim();
  if (!text.endsWith(':')) return {};
  return { kind: text.startsWith(':') ? 'center' : 'end' };
}

/** Trims the blanks between the text and the surrounding marks. */
function trimmed(nodes: ReadonlyArray<PreviewNode | string>): Array<PreviewNode | string> {
  const out = [...nodes];
  if (typeof out[0] === 'string') out[0] = out[0].trimStart();
  const last = out.length - 1;
  if (typeof out[last] === 'string') out[last] = (out[last] as string).trimEnd();
  return out;
}
