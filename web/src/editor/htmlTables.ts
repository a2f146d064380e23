import type TurndownService from 'turndown';
import { type Alignment, writeTable } from '../text/tableText';
import { styleOf } from './pastedHtml';

const MOST_COLUMNS = 50;
const blocks = 'table, ul, ol, pre, blockquote, h1, h2, h3, h4, h5, h6, hr';

/** The converted cells, until their table is written. */
const converted = new WeakMap<Node, string>();

/** Tables with data become Markdown tables. Those that only lay out a page become their contents. */
export function convertTables(service: TurndownService): void {
  service.addRule('cell', {
    filter: ['td', 'th'],
    replacement: (content, node) => {
      const table = (node as Element).closest('table');
      if (table && isData(table)) {
        converted.set(
          node,
          content
            .trim()
            .replace(/\s*\n\s*/g, ' ')
            .replace(/\\?\|/g, '\\|'),
        );
        return '';
      }
      return `\n\n${content}\n\n`;
    },
  });
  service.addRule('row', {
    filter: ['tr', 'thead', 'tbody', 'tfoot', 'caption', 'colgroup'],
    replacement: (content) => content,
  });
  service.addRule('table', {
    filter: 'table',
    replacement: (content, node) => {
      const table = node as HTMLTableElement;
      if (!isData(table)) return `\n\n${content}\n\n`;
      const written = writeTable({ indent: '', alignments: alignmentsOf(table), rows: gridOf(table) });
      return `\n\n${content.trim()}\n\n${written.lines.join('\n')}\n\n`;
    },
  });
}

const known = new WeakMap<Element, boolean>();

function isData(table: Element): boolean {
  const before = known.get(table);
  if (before !== undefined) return before;
  const cells = table.querySelectorAll('td, th').length;
  const rows = rowsOf(table);
  const widest = Math.max(0, ...rows.map((row) => row.children.length));
  const isFilled = widest > 1 || (widest === 1 && cells > 1 && !!table.querySelector('th'));
  const is =
    isFilled &&
    widest <= MOST_COLUMNS &&
    table.getAttribute('role') !== 'presentation' &&
    !table.querySelector(blocks) &&
    !table.parentElement?.closest('td, th, li');
  known.set(table, is);
  return is;
}

function rowsOf(table: Element): Element[] {
  return Array.from(table.querySelectorAll('tr')).filter((row) => row.closest('table') === table);
}

/** The cells by row and column; one that spans several leaves the others empty. */
function gridOf(table: Element): string[][] {
  const grid: string[][] = [];
  const taken: number[] = [];
  for (const row of rowsOf(table)) {
    const cells: string[] = [];
    const skip = () => {
      for (; (taken[cells.length] ?? 0) > 0 && cells.length < MOST_COLUMNS; cells.push('')) {
        taken[cells.length] = (taken[cells.length] ?? 0) - 1;
      }
    };
    for (const cell of Array.from(row.children)) {
      skip();
      const [across, down] = [spanOf(cell, 'colspan'), spanOf(cell, 'rowspan')];
      for (let column = 0; column < across && cells.length < MOST_COLUMNS; column++) {
        taken[cells.length] = down - 1;
        cells.push(column === 0 ? (converted.get(cell) ?? '') : '');
      }
    }
    skip();
    if (cells.length) grid.push(cells);
  }
  const widest = Math.max(...grid.map((cells) => cells.length));
  return grid.map((cells) => [...cells, ...Array.from({ length: widest - cells.length }, () => '')]);
}

function spanOf(cell: Element, name: 'colspan' | 'rowspan'): number {
  return Math.min(Math.max(1, Number(cell.getAttribute(name) ?? 1) || 1), 1000);
}

/** A column runs as its first row's cell does. */
function alignmentsOf(table: Element): Alignment[] {
  const [first] = rowsOf(table);
  const named = Array.from(first?.children ?? []).flatMap((cell) => {
    const written = cell.getAttribute('align') ?? /text-align:\s*(\w+)/i.exec(styleOf(cell))?.[1];
    const alignment = written === 'right' || written === 'center' ? written : 'none';
    return Array.from({ length: Math.min(spanOf(cell, 'colspan'), MOST_COLUMNS) }, (): Alignment => alignment);
  });
  const columns = Math.max(...gridOf(table).map((row) => row.length));
  return Array.from({ length: columns }, (_, column) => named[column] ?? 'none');
}
