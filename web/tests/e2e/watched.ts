import type { Browser, Page } from 'playwright-core';
import { type Opened, open } from './browser';

interface Watched extends Opened {
  /** What the page tried. */
  readonly seen: string[];
}

/** Records anything a note made the page do. */
export async function openWatched(browser: Browser): Promise<Watched> {
  const opened = await open(browser, { before: 'window.ran = () => { window.hasRun = true; };' });
  const { page, context } = opened;
  const seen: string[] = [];
  page.on('dialog', (dialog) => {
    seen.push(`dialog ${dialog.message()}`);
    void dialog.dismiss();
  });
  page.on('request', (request) => seen.push(`request ${request.url()}`));
  page.on('framenavigated', (frame) => seen.push(`navigation ${frame.url()}`));
  context.on('page', (other) => seen.push(`window ${other.url()}`));
  return { ...opened, seen };
}

/** Elements and attributes that can only have come from a note. */
export function foreign(page: Page): Promise<string[]> {
  return page.evaluate(() => {
    const found: string[] = [];
    for (const element of document.querySelectorAll('*')) {
      const shown = element.outerHTML.slice(0, 160);
      if (element.localName === 'script' && !element.getAttribute('src')?.startsWith('assets/')) found.push(shown);
      if (/^(?:iframe|frame|object|embed|base|form|template|video|audio|image|marquee|math)$/.test(element.localName)) {
        found.push(shown);
      }
      const inNote = element.closest('.preview, .cm-content, .list, .tabs');
      if (inNote && /^(?:script|link|meta|style|use|noscript|source)$/.test(element.localName)) found.push(shown);
      // The editor adds an image without an address next to some marks.
      if (element.localName === 'img' && element.hasAttribute('src')) found.push(shown);
      for (const { name, value } of element.attributes) {
        if (/^on|^srcdoc$|^formaction$|^xlink:/.test(name)) found.push(`${name} ${shown}`);
        if (name === 'href' && element.localName === 'a' && !/^(?:https?:|mailto:)/.test(value)) found.push(shown);
      }
    }
    if ((window as unknown as { hasRun?: boolean }).hasRun) found.push('a script ran');
    return found;
  });
}

/** Pastes what a clipboard holds, by type, into the note. */
export function paste(page: Page, flavours: Readonly<Record<string, string>>): Promise<void> {
  return page.evaluate((held) => {
    const clipboardData = new DataTransfer();
    for (const [type, data] of Object.entries(held)) clipboardData.setData(type, data);
    const event = new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true });
    document.querySelector('.cm-content')?.dispatchEvent(event);
  }, flavours);
}
