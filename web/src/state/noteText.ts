import { Text } from '@codemirror/state';

/** Texts up to this many characters are escaped in one go. */
const PIECE_CHARACTERS = 50_000;

/**
 * A note's text, which never changes. Only a text that was edited is held as the editor's tree. All others are
 * one string, the JSON in which they are saved: a tree takes several times the memory, and with thousands of
 * notes that is most of what the program needs.
 */
export class NoteText {
  readonly length: number;
  /** The text itself, until its JSON is needed for the first time. */
  #plain: string | null = null;
  #json: string | null = null;
  #edited: Text | null = null;
  /** The tree as long as the editor has it, so that it knows the text it shows. */
  #shown: WeakRef<Text> | null = null;

  /** From the editor, or from outside with any of the common line breaks. */
  static of(text: NoteText | Text | string): NoteText {
    return text instanceof NoteText ? text : new NoteText(text);
  }

  private constructor(text: Text | string) {
    if (typeof text === 'string') this.#plain = text.includes('\r') ? text.replace(/\r\n?/g, '\n') : text;
    else this.#edited = text;
    this.length = (this.#plain ?? text).length;
  }

  /** For the editor. The same one every time, as long as somebody has it. */
  get tree(): Text {
    let tree = this.#tree;
    if (!tree) {
      tree = Text.of(this.toString().split('\n'));
      this.#shown = new WeakRef(tree);
    }
    return tree;
  }

  /** As a JSON string. Only for an edited text it is made of parts; nothing else may take long a second time. */
  get json(): string {
    if (this.#edited) return treeJson(this.#edited);
    this.#json ??= JSON.stringify(this.#plain ?? '');
    this.#plain = null;
    return this.#json;
  }

  /** The same, without putting together the parts of an edited text. */
  *jsonPieces(): Generator<string, void> {
    if (!this.#edited) {
      yield this.json;
      return;
    }
    yield '"';
    yield* treePieces(this.#edited);
    yield '"';
  }

  /** Whether the text is one string. */
  get settled(): boolean {
    return this.#json !== null;
  }

  /** Makes the text one string; for a text that is not being edited. */
  settle(): void {
    const json = this.json;
    if (!this.#edited) return;
    // Looked into, the string is put together, and what it was made of can go.
    json.charCodeAt(json.length >> 1);
    this.#json = json;
    this.#shown = new WeakRef(this.#edited);
    this.#edited = null;
  }

  /** Makes the JSON of a text that is being edited, in short steps. */
  *prepare(): Generator<void, void> {
    if (this.#edited) yield* prepareTree(this.#edited);
    else this.settle();
  }

  toString(): string {
    return this.#edited?.toString() ?? this.#plain ?? (JSON.parse(this.#json ?? '""') as string);
  }

  /** A part, without decoding what is behind it. */
  slice(from: number, to: number): string {
    const end = Math.min(to, this.length);
    const tree = this.#tree;
    if (tree) return tree.sliceString(from, end);
    const json = this.#json;
    if (json === null || end * LONGEST_ESCAPE >= json.length) return this.toString().slice(from, end);
    const start = json.slice(1, 1 + end * LONGEST_ESCAPE);
    return (JSON.parse(`"${start.slice(0, wholeEscapes(start))}"`) as string).slice(from, end);
  }

  /** For reading many parts: decodes the text once. */
  slicer(): (from: number, to: number) => string {
    if (this.#tree) return (from, to) => this.slice(from, to);
    const whole = this.toString();
    return (from, to) => whole.slice(from, to);
  }

  is(tree: Text): boolean {
    return this.#tree === tree;
  }

  eq(other: NoteText): boolean {
    return this === other || (this.length === other.length && this.toString() === other.toString());
  }

  get #tree(): Text | null {
    return this.#edited ?? this.#shown?.deref() ?? null;
  }
}

/** The characters of "\u0000". */
const LONGEST_ESCAPE = 6;

/** The length of the start of `json` that ends with no escape cut in two. */
function wholeEscapes(json: string): number {
  const last = json.lastIndexOf('\\');
  if (last < json.length - LONGEST_ESCAPE) return json.length;
  let first = last;
  while (json[first - 1] === '\\') first--;
  // Backslashes stand in pairs, but for one that begins an escape.
  if ((last - first) % 2 === 1) return json.length;
  return last + (json[last + 1] === 'u' ? LONGEST_ESCAPE : 2) <= json.length ? json.length : last;
}

/**
 * The nodes of a tree never change, so each keeps the inside of its JSON: a key typed into a large note costs
 * its leaf and the path above it.
 */
const nodes = new WeakMap<Text, string>();

function treeJson(tree: Text): string {
  return `"${nodeJson(tree)}"`;
}

/** Leaves are joined by line breaks, and no character spans one, so each can be escaped separately. */
function nodeJson(node: Text): string {
  let json = nodes.get(node);
  if (json === undefined) {
    json = node.children ? chain(node.children.map(nodeJson), '\\n') : JSON.stringify(node.toString()).slice(1, -1);
    nodes.set(node, json);
  }
  return json;
}

function* treePieces(node: Text): Generator<string, void> {
  if (!node.children || node.length <= PIECE_CHARACTERS) {
    yield nodeJson(node);
    return;
  }
  for (const [index, child] of node.children.entries()) {
    if (index > 0) yield '\\n';
    yield* treePieces(child);
  }
}

function* prepareTree(node: Text): Generator<void, void> {
  if (nodes.has(node)) return;
  if (node.children && node.length > PIECE_CHARACTERS) {
    for (const child of node.children) yield* prepareTree(child);
  }
  nodeJson(node);
  yield;
}

/** Concatenates with `+`, which engines do without copying; `join` copies everything at every level. */
export function chain(parts: ReadonlyArray<string>, separator: string): string {
  let whole = parts[0] ?? '';
  for (let i = 1; i < parts.length; i++) whole += separator + parts[i];
  return whole;
}
