import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import axe from 'axe-core';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const NOW = Date.now();
const notes = [
  { id: 'a', text: '# Plano\n\n**forte** e _leve_, ~~fora~~ `código`\n\n- [ ] tarefa\n- [x] feita\n\n> dito\n\n[ponte](https://example.org)\n\n```js\nlet a = 1; // um\n```', pinned: true, updated: NOW },
  { id: 'b', text: 'Compras\npão e maçã', updated: NOW - 1 },
  { id: 'c', text: '', updated: NOW - 2 },
];
const bin = [{ id: 'd', text: 'Apagada\ne mais', deleted: NOW }, { id: 'e', text: '', deleted: NOW - 9 }];
const stored = { version: 1, notes, bin, tabs: { open: ['a', 'b', 'c'], active: 'a' } };

/** What one can come to see, each with the way there. */
const views: Record<string, (page: Page) => Promise<unknown>> = {
  writing: (page) => page.focus('.cm-content'),
  'find in the text': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+f');
    await page.keyboard.type('a');
  },
  'replace in the text': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Alt+f');
    await page.keyboard.type('a');
  },
  'preview beside': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Alt+p');
    await page.waitForSelector('.preview h1');
  },
  'preview instead': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Alt+r');
    await page.waitForSelector('.preview h1');
  },
  search: async (page) => {
    await page.fill('#searchInput', 'maca');
    await page.waitForFunction(() => document.querySelectorAll('#sidebar .row').length === 1);
  },
  'search without finds': async (page) => {
    await page.fill('#searchInput', 'zzz');
    await page.waitForSelector('text=Nothing found');
  },
  'folded sidebar': (page) => page.click('[aria-label="Hide the note list"]'),
  'note menu': (page) => page.click('#noteMenuButton'),
  palette: async (page) => {
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('co');
  },
  'palette without finds': async (page) => {
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('zzz');
  },
  guide: (page) => page.evaluate('quendoOpenShortcutGuide()'),
  overview: (page) => page.evaluate('quendoShowTabOverview()'),
  'quick capture': (page) => page.evaluate('openCapture()'),
  'closing many tabs': async (page) => {
    await page.evaluate("quendoOpenNativeFiles(Array.from({ length: 51 }, (_, n) => ({ name: n + '.md', content: 'nota' })))");
    await page.evaluate("quendoRequestCloseTabs('all')");
    await page.waitForSelector('dialog[open] .question');
  },
  bin: async (page) => {
    await page.click('.bin-button');
    await page.waitForSelector('.bin .row');
  },
  'emptying the bin': async (page) => {
    await page.click('.bin-button');
    await page.click('text=Empty the bin…');
  },
  'a toast with a button': async (page) => {
    await page.click('#noteMenuButton');
    await page.click('[data-command=delete]');
    await page.waitForSelector('.toast button');
  },
  'failed saving': async (page) => {
    await page.evaluate('host.answer = false');
    await page.focus('.cm-content');
    await page.keyboard.type('x');
    await page.waitForSelector('#saveState[data-state="failed"]');
  },
  'no tab': async (page) => {
    await page.evaluate("quendoRequestCloseTabs('all')");
    await page.waitForSelector('.empty');
  },
};

async function violations(page: Page): Promise<string[]> {
  // Colours are judged as they come to rest.
  await page.evaluate(() => Promise.allSettled(document.getAnimations().map((animation) => animation.finished)));
  await page.evaluate(axe.source);
  return page.evaluate(async () => {
    const { axe: checker } = window as unknown as { axe: typeof import('axe-core') };
    const result = await checker.run(document, { resultTypes: ['violations'] });
    return result.violations.flatMap(({ id, nodes }) =>
      nodes.map((node) => `${id}: ${node.html.slice(0, 140)} ${node.any[0]?.message ?? ''}`),
    );
  });
}

for (const colorScheme of ['light', 'dark'] as const) {
  for (const [name, show] of Object.entries(views)) {
    test(`${name}, ${colorScheme}: nothing stands in anybody's way`, async () => {
      const { page, context } = await open(browser, { colorScheme, before: fakeHost(stored) });
      await show(page);
      assert.deepEqual(await violations(page), []);
      await context.close();
    });
  }
  test(`first start and read-only, ${colorScheme}`, async () => {
    for (const state of [undefined, { ...stored, version: 99 }]) {
      const { page, context } = await open(browser, { colorScheme, before: fakeHost(state) });
      assert.deepEqual(await violations(page), []);
      await context.close();
    }
  });
}

test('wherever the Tab key leads, the focus is seen', async () => {
  const { page, context } = await open(browser, { before: fakeHost(stored) });
  await page.focus('#searchInput');
  const seen = new Set<string>();
  for (let i = 0; i < 14; i++) {
    // In the text the Tab key indents, unless Escape was pressed before it.
    if (await page.evaluate(() => document.activeElement?.classList.contains('cm-content'))) {
      await page.keyboard.press('Escape');
    }
    await page.keyboard.press('Tab');
    // The list marks its row with the next frame.
    await page.evaluate(() => new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve))));
    const focus = await page.evaluate(() => {
      const active = document.activeElement as HTMLElement;
      const marked = active.querySelector('.is-current') ?? active;
      const { outlineStyle, outlineWidth } = getComputedStyle(marked);
      const name = `${active.tagName}.${active.className}`;
      return { name, seen: outlineStyle !== 'none' && Number.parseFloat(outlineWidth) >= 2 };
    });
    if (focus.name.startsWith('BODY') || focus.name.includes('cm-content')) continue;
    assert.ok(focus.seen, focus.name);
    seen.add(focus.name);
  }
  assert.ok(seen.size >= 7, [...seen].join());
  await context.close();
});
