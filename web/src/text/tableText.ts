/** Markdown tables as text: rows of cells between bars, with a delimiter row below the header. */

export type Alignment = 'none' | 'left' | 'center' | 'right';

export interface Table {
  readonly indent: string;
  readonly alignments: ReadonlyArray<Alignment>;
  /** The header first, then the body; every row is padded to the same number of cells. */
  readonly rows: ReadonlyArray<ReadonlyArray<string>>;
}

export interface WrittenTable {
  readonly lines: ReadonlyArray<string>;
  /** Start and end of each cell's text within its line, by row and column. */
  readonly cells: ReadonlyArray<ReadonlyArray<readonly [from: number, to: number]>>;
}

/** Longer cells overflow their column, so one of them does not widen the whole table. */
const WIDEST = 60;
const dashes = /^:?-+:?$/;
const wide =
  /\p{Emoji_Presentation}|[\u1100-\u115f\u2e80-\ua4cf\uac00-\ud7a3\uf900-\ufaff\ufe30-\ufe4f\uff00-\uff60\uffe0-\uffe6\u{20000}-\u{3fffd}]/u;
const graphemes = new Intl.Segmenter();

/** Parses a table; null if the lines are not one. */
export function readTable(lines: ReadonlyArray<string>): Table | null {
  const [head = '', below = ''] = lines;
  const marks = cellsOf(below);
  if (lines.length < 2 || !marks.every((mark) => dashes.test(mark))) return null;
  const rows = [head, ...lines.slice(2)].map(cellsOf);
  const columns = Math.max(marks.length, ...rows.map((row) => row.length));
  return {
    indent: /^\s*/.exec(head)?.[0] ?? '',
    alignments: Array.from({ length: columns }, (_, column) => alignmentOf(marks[column] ?? '-')),
    rows: rows.map((row) => Array.from({ length: columns }, (_, column) => row[column] ?? '')),
  };
}

/** The index of the cell at an offset in a line, from 0. */
export function columnAt(line: string, offset: number): number {
  const start = /^\s*\|?/.exec(line)?.[0].length ?? 0;
  return offset <= start ? 0 : split(line.slice(start, offset)).length - 1;
}

/** Formats a table with aligned columns. */
export function writeTable({ indent, alignments, rows }: Table): WrittenTable {
  const widths = alignments.map((_, column) =>
    Math.min(WIDEST, Math.max(3, ...rows.map((row) => widthOf(row[column] ?? '')))),
  );
  const lines: string[] = [];
  const cells = rows.map((row) => {
    let line = indent;
    const places = row.map((text, column): [number, number] => {
      const room = Math.max(0, (widths[column] ?? 0) - widthOf(text));
      const before = { none: 0, left: 0, center: Math.floor(room / 2), right: room }[alignments[column] ?? 'none'];
      const from = line.length + 2 + before;
      line += `| ${' '.repeat(before)}${text}${' '.repeat(room - before)} `;
      return [from, from + text.length];
    });
    lines.push(`${line}|`);
    return places;
  });
  const below = alignments.map((alignment, column) => ` ${marksOf(alignment, widths[column] ?? 3)} `);
  lines.splice(1, 0, `${indent}|${below.join('|')}|`);
  return { lines, cells };
}

/** Trimmed cells, without the outer bars. */
function cellsOf(line: string): string[] {
  const inside = line.trim().replace(/^\|/, '');
  const cells = split(inside).map((cell) => cell.trim());
  if (cells.length > 1 && cells.at(-1) === '') cells.pop();
  return cells;
}

/** Splits at bars; an escaped bar belongs to the text. */
function split(text: string): string[] {
  const parts = [''];
  for (const [token] of text.matchAll(/\\.|[^\\]|\\$/gsu)) {
    if (token === '|') parts.push('');
    else parts[parts.length - 1] += token;
  }
  return parts;
}

function alignmentOf(mark: string): Alignment {
  if (mark.startsWith(':')) return mark.endsWith(':') ? 'center' : 'left';
  return mark.endsWith(':') ? 'right' : 'none';
}

function marksOf(alignment: Alignment, width: number): string {
  const start = alignment === 'left' || alignment === 'center' ? ':' : '-';
  const end = alignment === 'right' || alignment === 'center' ? ':' : '-';
  return `${start}${'-'.repeat(width - 2)}${end}`;
}

/** The width of a text in columns of a monospaced font. */
function widthOf(text: string): number {
  let width = 0;
  for (const { segment } of graphemes.segment(text)) width += wide.test(segment) ? 2 : 1;
  return width;
}
