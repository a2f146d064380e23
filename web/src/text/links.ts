import type { SyntaxNode } from '@lezer/common';

/** The destination of a link, as opposed to an address in its label. */
export function destinationOf(link: SyntaxNode): SyntaxNode | null {
  const close = link.getChildren('LinkMark')[1];
  return (close && link.getChildren('URL').find(({ from }) => from >= close.to)) ?? null;
}

/** How to append an address to its label in formats without hidden links. */
export type Join = (label: string, address: string) => string;

/** A link as plain text. If the label already shows the address, it is written once. */
export function linkText(label: string, url: string, join: Join): string {
  if (url.startsWith('#') || /^data:/i.test(url)) return label;
  const address = url.replace(/^mailto:/i, '');
  if (!label.trim() || bare(label) === bare(url)) return address;
  return address ? join(label, address) : label;
}

/** A link's destination, without angle brackets and with escapes resolved. */
export function addressOf(written: string): string {
  const inner = /^<.*>$/s.test(written) ? written.slice(1, -1) : written;
  return inner.replace(/\\([!-/:-@[-`{-~])/g, '$1');
}

/** The normalised name that matches a reference to its definition; null for footnotes. */
export function referenceName(label: string): string | null {
  const name = label
    .replace(/^\[|\]$/g, '')
    .trim()
    .replace(/\s+/g, ' ')
    .toLowerCase();
  return name === '' || name.startsWith('^') ? null : name;
}

function bare(address: string): string {
  return address
    .trim()
    .replace(/^(?:https?:\/\/|mailto:)/i, '')
    .replace(/\/$/, '')
    .toLowerCase();
}
