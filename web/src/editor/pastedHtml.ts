/** Longer or fuller clipboards would take too long to convert; their text is taken as it is. */
const LONGEST = 1_000_000;
const MOST_ELEMENTS = 20_000;

/** What has nothing to read in it, or would act. */
const unwanted = [
  'script, style, noscript, noembed, noframes, template, iframe, frame, frameset, object, embed, applet, link, meta',
  'base, title, audio, video, canvas, svg, annotation, annotation-xml, map, button, select, textarea, datalist',
  'input:not([type=checkbox]), [hidden]',
].join();
const hiding = /(?:^|[;\s])(?:display:\s*none|mso-hide:\s*all|visibility:\s*hidden)/i;

/**
 * Parses what a program put on the clipboard, in a document of its own, which loads nothing and runs nothing. What the
 * policy of the page would report even there is renamed before: inline styles, handlers, base addresses.
 */
export function parseHtml(html: string): HTMLElement {
  return new DOMParser().parseFromString(disarmed(html), 'text/html').documentElement;
}

export function disarmed(html: string): string {
  return html
    .replace(/<(style|script)\b[^<>]*>[\s\S]*?(?:<\/\1\s*>|$)/gi, '')
    .replace(/<(\/?)base\b/gi, '<$1data-base')
    .replace(/<[a-z][^<>]*>/gi, (tag) => tag.replace(/([\s"'/])(style|on[a-z]+)(?=\s*=)/gi, '$1data-$2'));
}

export function isTooLong(html: string): boolean {
  return html.length > LONGEST;
}

export function isTooFull(body: HTMLElement): boolean {
  return body.getElementsByTagName('*').length > MOST_ELEMENTS;
}

export function styleOf(element: Element): string {
  return element.getAttribute('data-style') ?? '';
}

/** Removes what is not text and mends what programs write askew. */
export function clean(body: HTMLElement): void {
  // A form has its fields as properties, by name: one called `parentNode` would lead every walk in circles.
  for (const element of all(body, '[name]:not(form), [id]:not(form)')) {
    element.removeAttribute('name');
    element.removeAttribute('id');
  }
  for (const element of all(body, unwanted)) element.remove();
  for (const element of all(body, '[data-style]')) {
    if (hiding.test(styleOf(element))) element.remove();
  }
  nestLists(body);
  markWordLists(body);
  const texts = body.ownerDocument.createTreeWalker(body, 4);
  for (let node = texts.nextNode(); node; node = texts.nextNode()) {
    if (node.nodeValue?.includes('\u00a0')) node.nodeValue = node.nodeValue.replaceAll('\u00a0', ' ');
  }
}

/** Whether all of it is one piece of code, whose plain text is better than any conversion. */
export function isCode(body: HTMLElement): boolean {
  let only: Element = body;
  for (;;) {
    const [child, ...others] = Array.from(only.children).filter(({ nodeName }) => !/^(?:HEAD|META)$/.test(nodeName));
    if (!child || others.length || only.textContent?.trim() !== child.textContent?.trim()) return false;
    only = child;
    const style = styleOf(only);
    const isTyped = /white-space:\s*pre\s*(?:;|$)/i.test(style) && /mono|consolas|courier|menlo/i.test(style);
    if (only.nodeName === 'PRE' || isTyped) return true;
  }
}

function all(body: HTMLElement, selector: string): Element[] {
  return Array.from(body.querySelectorAll(selector));
}

/** Some programs write a nested list beside the item that it belongs to. */
function nestLists(body: HTMLElement): void {
  for (const list of all(body, 'ul > ul, ul > ol, ol > ul, ol > ol')) {
    const item = list.previousElementSibling;
    if (item?.nodeName === 'LI') item.appendChild(list);
  }
}

/** Word's lists are paragraphs with a written mark; the mark becomes the attribute `data-lead` of the paragraph. */
function markWordLists(body: HTMLElement): void {
  const widths: number[] = [];
  for (const sign of all(body, '[data-style*="mso-list"]')) {
    if (!/mso-list:\s*ignore/i.test(styleOf(sign))) continue;
    const paragraph = sign.closest('p, h1, h2, h3, h4, h5, h6, div');
    const level = Number(/mso-list:[^;]*\blevel(\d)/i.exec(paragraph ? styleOf(paragraph) : '')?.[1] ?? 1);
    const written = sign.textContent?.trim() ?? '';
    const number = /^(\d{1,9})[.)]$/.exec(written)?.[1] ?? (/^\p{L}+[.)]$/u.test(written) ? '1' : null);
    const mark = number === null ? '- ' : `${number}. `;
    const indent = Array.from({ length: level - 1 }, (_, above) => widths[above + 1] ?? 2);
    widths[level] = mark.length;
    paragraph?.setAttribute('data-lead', ' '.repeat(indent.reduce((sum, width) => sum + width, 0)) + mark);
    sign.remove();
  }
}
