import path from 'node:path';
import { pathToFileURL } from 'node:url';
import { type Browser, type BrowserContext, chromium, type Page } from 'playwright-core';
import type { Language } from '../../src/i18n/language';

const DIST = path.resolve('dist');
const PAGE_URL = pathToFileURL(path.join(DIST, 'index.html')).href;
const SITE = 'https://quendo.test';

const FLAGS = [
  '--no-sandbox',
  '--disable-gpu',
  '--disable-background-networking',
  '--no-first-run',
  '--disable-component-update',
  '--disable-sync',
];

export function launch(): Promise<Browser> {
  return chromium.launch({ executablePath: '/usr/bin/chromium', args: FLAGS });
}

export interface Opened {
  readonly page: Page;
  readonly context: BrowserContext;
  /** Anything that went wrong in the page: uncaught errors, blocked resources, requests other than file:. */
  readonly trouble: string[];
}

export interface OpenOptions {
  readonly locale?: string;
  readonly colorScheme?: 'light' | 'dark';
  readonly width?: number;
  readonly height?: number;
  /** Runs in the page before its own script. */
  readonly before?: string;
  /**
   * Loads the page from a web site, for tests that reload it: on a busy machine Chromium sometimes shows a
   * reloaded `file:` page empty local storage.
   */
  readonly reloads?: boolean;
}

export async function open(browser: Browser, options: OpenOptions = {}): Promise<Opened> {
  const { locale = 'en-US', colorScheme = 'light', width = 1320, height = 780, reloads = false } = options;
  const context = await browser.newContext({ locale, colorScheme, viewport: { width, height } });
  const page = await context.newPage();
  const trouble: string[] = [];
  page.on('pageerror', (error) => trouble.push(error.message));
  page.on('console', (message) => {
    if (message.type() === 'error') trouble.push(message.text());
  });
  page.on('request', (request) => {
    const own = /^(?:file|data|blob):/.test(request.url()) || request.url().startsWith(`${SITE}/`);
    if (!own) trouble.push(request.url());
  });
  if (reloads) {
    await page.route(`${SITE}/**`, (route) =>
      route.fulfill({ path: path.join(DIST, new URL(route.request().url()).pathname) }),
    );
  }
  if (options.before) await page.addInitScript({ content: options.before });
  await page.goto(reloads ? `${SITE}/index.html` : PAGE_URL);
  return { page, context, trouble };
}

/** Makes the page believe that it runs on a Mac. */
export const asMac = "Object.defineProperty(Navigator.prototype, 'platform', { get: () => 'MacIntel' });";

/** A fake host that records every message and answers saves as `host.answer` says. */
export function fakeHost(state?: unknown, language: Language = 'en'): string {
  const stored = state === undefined ? '' : `window.__QUENDO_NATIVE_STATE__ = ${JSON.stringify(state)};`;
  return `
    window.__QUENDO_IS_MAC__ = true;
    window.__QUENDO_PUBLIC_URL__ = 'https://example.invalid/';
    window.__QUENDO_NATIVE_LANGUAGE__ = '${language}';
    ${stored}
    window.host = { messages: [], answer: true };
    const names = ['State', 'Export', 'SaveAs', 'Clipboard', 'Share', 'Language'];
    window.webkit = { messageHandlers: Object.fromEntries(names.map((name) => ['quendo' + name, {
      postMessage(body) {
        host.messages.push({ name: 'quendo' + name, body });
        if (name === 'State' && host.answer !== null) {
          setTimeout(() => window.quendoNativeSaveDidFinish?.(host.answer, body.revision), 5);
        }
      },
    }])) };`;
}

export interface Message {
  readonly name: string;
  readonly body: Record<string, unknown>;
}

export function messages(page: Page, name: string): Promise<Message[]> {
  return page.evaluate(
    (wanted) =>
      (window as unknown as { host: { messages: Message[] } }).host.messages.filter(
        (message) => message.name === wanted,
      ),
    name,
  );
}

export async function lastState(page: Page): Promise<Record<string, unknown>> {
  const sent = await messages(page, 'quendoState');
  return JSON.parse(String(sent.at(-1)?.body.serialized)) as Record<string, unknown>;
}

/** The whole text of the note, not only the rendered part. */
export async function noteTexts(page: Page): Promise<string[]> {
  const serialized = await page.evaluate(() => {
    const host = window as unknown as {
      quendoPrepareForTermination(): { serialized: string };
      quendoTerminationDidCancel(): void;
    };
    const state = host.quendoPrepareForTermination();
    host.quendoTerminationDidCancel();
    return state.serialized;
  });
  const { notes } = JSON.parse(serialized) as { notes: Array<{ text: string }> };
  return notes.map((note) => note.text);
}

/** Chooses one of the settings in their dialog. */
export async function chooseSetting(page: Page, name: string, value: string): Promise<void> {
  await page.keyboard.press('Control+,');
  await page.selectOption(`.settings .${name}`, value);
  await page.keyboard.press('Escape');
}

export const saved = '#saveState[data-state="saved"]';

/** Leaves the page as if switching windows, and opens it again as if after a restart. */
export async function restart(page: Page): Promise<void> {
  await page.waitForSelector(saved);
  await page.reload();
}

/** How long one typed character blocks the page, in milliseconds: the median of many. */
export function typingCost(page: Page): Promise<number> {
  return page.evaluate(async () => {
    const costs: number[] = [];
    for (let i = 0; i < 21; i++) {
      const started = performance.now();
      document.execCommand('insertText', false, 'x');
      await Promise.resolve();
      costs.push(performance.now() - started);
      await new Promise(requestAnimationFrame);
    }
    return costs.sort((a, b) => a - b)[10] ?? Number.POSITIVE_INFINITY;
  });
}
