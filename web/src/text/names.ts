const MARKDOWN_EXTENSIONS = new Set(['md', 'markdown', 'mdown', 'mkd', 'mkdn']);

export type Format = 'markdown' | 'plain';

/** The extension of a file name, in lower case. */
export function extensionOf(name: string): string {
  const dot = name.lastIndexOf('.');
  return dot > 0 ? name.slice(dot + 1).toLowerCase() : '';
}

export function formatOf(name: string): Format {
  return MARKDOWN_EXTENSIONS.has(extensionOf(name)) ? 'markdown' : 'plain';
}

/** File systems allow 255 bytes in a name, and the host keeps 180 characters. */
const NAME_BYTES = 240;
const NAME_CHARACTERS = 180;
const TITLE_CHARACTERS = 80;

const endings: Record<Format, string> = { markdown: '.md', plain: '.txt' };

/** A file name for a title: characters that file systems reject are replaced, the length is limited. */
export function fileNameFor(title: string, format: Format): string {
  const clean = title.replace(/[/\\:*?"<>|\u0000-\u001f\u007f]+/g, '-').trim();
  const base = shorten(clean, NAME_BYTES - 4, TITLE_CHARACTERS).replace(/^\.+|[.\s]+$/g, '');
  return (base || 'nota') + endings[format];
}

/** The file name with an extension for the format; a suitable one stays. */
export function inFormat(name: string, format: Format): string {
  const extension = extensionOf(name);
  // Text after a dot counts as an extension only if it looks like one, unlike the end of "v1.2".
  const known = /^(?=.*[a-z])[a-z0-9+]{1,10}$/.test(extension);
  if (known && formatOf(name) === format) return name;
  return (known ? name.slice(0, -extension.length - 1) : name) + endings[format];
}

/** The file name cut to a length that can be written, keeping the extension. */
export function shortFileName(name: string): string {
  const ending = /.(\.[a-z0-9+]{1,10})$/i.exec(name)?.[1] ?? '';
  const base = name.slice(0, name.length - ending.length);
  const bytes = NAME_BYTES - utf8Length(ending);
  return shorten(base, bytes, NAME_CHARACTERS - ending.length) + ending;
}

/**
 * The beginning of a text, cut between graphemes. Lone surrogates, which UTF-8 cannot encode, are replaced.
 */
export function shorten(text: string, bytes: number, characters = Number.POSITIVE_INFINITY): string {
  const whole = text.replace(/\p{Cs}/gu, '\ufffd');
  if (whole.length <= characters && utf8Length(whole) <= bytes) return whole;
  let out = '';
  let size = 0;
  let count = 0;
  for (const { segment } of new Intl.Segmenter().segment(whole)) {
    size += utf8Length(segment);
    count++;
    if (size > bytes || count > characters) break;
    out += segment;
  }
  return out;
}

/** Length in UTF-8, the unit of all host limits. */
export function utf8Length(text: string): number {
  let bytes = text.length;
  for (let i = 0; i < text.length; i++) {
    const unit = text.charCodeAt(i);
    if (unit < 0x80) continue;
    if (unit < 0x800) bytes += 1;
    else if (unit >= 0xd800 && unit < 0xdc00 && isLowSurrogate(text.charCodeAt(i + 1))) {
      bytes += 2;
      i++;
    } else bytes += 2;
  }
  return bytes;
}

function isLowSurrogate(unit: number): boolean {
  return unit >= 0xdc00 && unit < 0xe000;
}
