import TurndownService from 'turndown';
import { safeAddress } from '../text/address';
import { convertTables } from './htmlTables';
import { styleOf } from './pastedHtml';

const blocks = 'p, div, ul, ol, table, pre, blockquote, h1, h2, h3, h4, h5, h6';
const named = /^(?:B|STRONG|I|EM|S|DEL|STRIKE)$/;
const marked = /^(?:B|STRONG|I|EM|S|DEL|STRIKE|SPAN|FONT|U)$/;

/** The Markdown of a parsed and cleaned body. */
export function toMarkdown(body: HTMLElement): string {
  return service().turndown(body).trim();
}

/** The images that neither an address nor a text stands for, by name. */
export function lostImages(body: HTMLElement, unnamed: string): string[] {
  const lost = Array.from(body.querySelectorAll('img')).filter(
    (image) => !safeAddress(image.getAttribute('src') ?? ''),
  );
  return lost.map((image) => image.getAttribute('alt')?.trim() || fileNameIn(image.getAttribute('src')) || unnamed);
}

function fileNameIn(address: string | null): string {
  return /^(?:file|cid):.*?([^/\\:]+)$/i.exec(address ?? '')?.[1] ?? '';
}

let made: TurndownService | undefined;

function service(): TurndownService {
  made ??= create();
  return made;
}

function create(): TurndownService {
  const turndown = new TurndownService({
    headingStyle: 'atx',
    hr: '---',
    bulletListMarker: '-',
    codeBlockStyle: 'fenced',
    emDelimiter: '*',
  });
  const escaped = turndown.escape.bind(turndown);
  turndown.escape = (text) =>
    escaped(text)
      .replace(/([\p{L}\p{N}])\\_(?=[\p{L}\p{N}])/gu, '$1_')
      .replace(/^(\d{1,9})\)(?=\s)/, '$1\\)')
      .replace(/<(?=[a-z!?/])/gi, '\\<')
      .replace(/&(?=#?\w+;)/g, '\\&')
      .replace(/~~/g, '\\~~');
  convertMarks(turndown);
  convertBlocks(turndown);
  convertLists(turndown);
  convertTables(turndown);
  return turndown;
}

function convertMarks(turndown: TurndownService): void {
  turndown.addRule('marks', {
    filter: (node) => named.test(node.nodeName) || signsOf(node).length > 0,
    replacement: (content, node) => {
      if (!content.trim() || /\n\n/.test(content)) return content;
      const signs = signsOf(node as HTMLElement);
      return signs.join('') + content + signs.reverse().join('');
    },
  });
  turndown.addRule('link', { filter: 'a', replacement: (content, node) => link(content, node as HTMLElement) });
  turndown.addRule('image', { filter: 'img', replacement: (_, node) => image(node as HTMLElement) });
}

function link(content: string, node: HTMLElement): string {
  const address = safeAddress(node.getAttribute('href') ?? '');
  if (address === null || !content.trim()) return content;
  const text = node.querySelector(blocks) ? content.replace(/^#{1,6} |^\s*[->] /gm, '') : content;
  const label = text.trim().replace(/\s+/g, ' ');
  const bare = (node.textContent ?? '').trim();
  if (bare === address || `${bare}/` === address || `mailto:${bare}` === address) return `<${bare}>`;
  return `[${label}](${written(address)})`;
}

/** Notes hold no images: the text stays, and the way to the image. */
function image(node: HTMLElement): string {
  const text = (node.getAttribute('alt') ?? '')
    .trim()
    .replace(/\s+/g, ' ')
    .replace(/[\\[\]<`*_]/g, '\\$&');
  const address = safeAddress(node.getAttribute('src') ?? '');
  if (address === null || !/^https?:/.test(address) || node.closest('a')) return text;
  return text ? `[${text}](${written(address)})` : `<${address}>`;
}

function written(address: string): string {
  return address.replace(/[()\\<>]/g, (sign) => encodeURIComponent(sign).replace('(', '%28').replace(')', '%29'));
}

function convertBlocks(turndown: TurndownService): void {
  turndown.addRule('heading', {
    filter: ['h1', 'h2', 'h3', 'h4', 'h5', 'h6'],
    replacement: (content, node) =>
      `\n\n${'#'.repeat(Number(node.nodeName.charAt(1)))} ${content.trim().replace(/\s*\n\s*/g, ' ')}\n\n`,
  });
  turndown.addRule('lineBreak', {
    filter: 'br',
    replacement: (_, node) => {
      const [before, after] = [beside(node, 'previousSibling'), beside(node, 'nextSibling')];
      if (!before || !after || before.nodeName === 'BR') return '';
      return after.nodeName === 'BR' ? '\n\n' : '  \n';
    },
  });
  turndown.addRule('code', {
    filter: 'pre',
    replacement: (_, node) => {
      const element = node as HTMLElement;
      for (const end of Array.from(element.querySelectorAll('br'))) end.textContent = '\n';
      const text = (element.textContent ?? '').replace(/^\n|\n$/g, '');
      const classes = [element, element.firstElementChild, element.parentElement].map((one) => one?.className ?? '');
      const language = /(?:language|lang|source)-([\w+#-]+)/.exec(classes.join(' '))?.[1] ?? '';
      const longest = Math.max(2, ...(text.match(/^\s*`{3,}/gm) ?? []).map((run) => run.trim().length));
      const fence = '`'.repeat(longest + 1);
      return `\n\n${fence}${language}\n${text}\n${fence}\n\n`;
    },
  });
}

/** What is beside a node, but for blanks. */
function beside(node: Node, side: 'previousSibling' | 'nextSibling'): Node | null {
  let other = node[side];
  while (other?.nodeType === 3 && !other.nodeValue?.trim()) other = other[side];
  return other;
}

function convertLists(turndown: TurndownService): void {
  const counts = new WeakMap<Node, number>();
  turndown.addRule('item', {
    filter: 'li',
    replacement: (content, node) => {
      const item = node as HTMLElement;
      const list = item.parentElement;
      let mark = '- ';
      if (list?.nodeName === 'OL') {
        const number = counts.get(list) ?? Math.max(0, Number.parseInt(list.getAttribute('start') ?? '1', 10) || 1);
        counts.set(list, number + 1);
        mark = `${number}. `;
      }
      const task = item.getAttribute('role') === 'checkbox' ? box(item.getAttribute('aria-checked') === 'true') : '';
      const text = content.replace(/^\n+|\n+$/g, '').replace(/\n(?=[^\n])/g, `\n${' '.repeat(mark.length)}`);
      return `${mark}${task}${text.trimStart().replace(/^(\[[ x]\])\s+/, '$1 ')}${item.nextElementSibling ? '\n' : ''}`;
    },
  });
  turndown.addRule('itemParagraph', {
    filter: (node) => node.nodeName === 'P' && node.parentNode?.nodeName === 'LI',
    replacement: (content, node) =>
      node === node.parentNode?.firstElementChild ? `${content}\n` : `\n\n${content}\n\n`,
  });
  turndown.addRule('task', {
    filter: (node) => node.nodeName === 'INPUT',
    replacement: (_, node) =>
      (node as HTMLElement).closest('li') ? box((node as HTMLElement).hasAttribute('checked')) : '',
  });
  turndown.addRule('wordItem', {
    filter: (node) => node.hasAttribute('data-lead'),
    replacement: (content, node) => {
      const lead = (node as HTMLElement).getAttribute('data-lead') ?? '';
      const isFirst = !(node as HTMLElement).previousElementSibling?.hasAttribute('data-lead');
      const isLast = !(node as HTMLElement).nextElementSibling?.hasAttribute('data-lead');
      return `${isFirst ? '\n\n' : ''}${lead}${content.trim().replace(/\s*\n\s*/g, ' ')}${isLast ? '\n\n' : '\n'}`;
    },
  });
}

function box(checked: boolean): string {
  return checked ? '[x] ' : '[ ] ';
}

type Is = (node: HTMLElement) => boolean;

/** What a style says counts more than the element: some programs wrap everything in a `b` that is not bold. */
const isStrong: Is = (node) => {
  const weight = /font-weight:\s*(\w+)/i.exec(styleOf(node))?.[1];
  if (weight !== undefined) return /^(?:bold|bolder|[6-9]00)$/i.test(weight) && marked.test(node.nodeName);
  return /^(?:B|STRONG)$/.test(node.nodeName);
};

const isEmphasis: Is = (node) => {
  const style = /font-style:\s*(\w+)/i.exec(styleOf(node))?.[1];
  if (style !== undefined) return /^(?:italic|oblique)$/i.test(style) && marked.test(node.nodeName);
  return /^(?:I|EM)$/.test(node.nodeName);
};

const isStruck: Is = (node) =>
  /^(?:S|DEL|STRIKE)$/.test(node.nodeName) ||
  (/text-decoration[\w-]*:[^;]*line-through/i.test(styleOf(node)) && marked.test(node.nodeName));

/** The marks a node adds to those around it. Headings are strong already. */
function signsOf(node: HTMLElement): string[] {
  const adds = (is: Is) => is(node) && !isWithin(node, is);
  return [...(adds(isStrong) ? ['**'] : []), ...(adds(isEmphasis) ? ['*'] : []), ...(adds(isStruck) ? ['~~'] : [])];
}

function isWithin(node: HTMLElement, is: Is): boolean {
  for (let around = node.parentElement; around; around = around.parentElement) {
    if (is(around) || (is === isStrong && /^(?:H[1-6]|TH)$/.test(around.nodeName))) return true;
  }
  return false;
}
