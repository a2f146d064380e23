/** How an address is written after its label, where a link cannot be hidden behind a word. */
export type Join = (label: string, address: string) => string;

/** A link as plain text. An address that the label already shows is written once. */
export function linkText(label: string, url: string, join: Join): string {
  if (url.startsWith('#') || /^data:/i.test(url)) return label;
  const address = url.replace(/^mailto:/i, '');
  if (!label.trim() || bare(label) === bare(url)) return address;
  return address ? join(label, address) : label;
}

/** The address between a link's marks: without angle brackets, escapes resolved. */
export function addressOf(written: string): string {
  const inner = /^<.*>$/s.test(written) ? written.slice(1, -1) : written;
  return inner.replace(/\\([!-/:-@[-`{-~])/g, '$1');
}

/** The name under which a reference and its definition find each other; null for footnotes. */
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
