import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, open } from './browser';
import { stored, views, wordsIn } from './views';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const withText = async (text: string, width = 1320, settings = {}): Promise<Page> => {
  const state = { version: 1, notes: [{ id: 'a', text }], tabs: { open: ['a'], active: 'a' }, settings };
  const { page } = await open(browser, { width, before: fakeHost(state) });
  await page.waitForSelector('.cm-line');
  return page;
};

const openPreview = async (page: Page) => {
  await page.focus('.cm-content');
  await page.keyboard.press('Control+Alt+p');
  await page.waitForSelector('.preview-page > *');
};

test('all dialogs begin at one height and end in the window', async () => {
  const heights = new Map<string, number>();
  for (const name of ['guide', 'palette', 'overview', 'quick capture', 'bin', 'emptying the bin', 'settings']) {
    const { page, context } = await open(browser, { width: 880, height: 600, before: fakeHost(stored) });
    await views[name]?.(page, wordsIn('en'));
    await page.waitForSelector('dialog[open]');
    const { top = 0, bottom = 0 } = await page.evaluate(() => {
      const box = document.querySelector('dialog[open]')?.getBoundingClientRect();
      return { top: box?.top, bottom: box?.bottom };
    });
    heights.set(name, Math.round(top));
    assert.ok(bottom > top && bottom < 600, `${name} ends at ${bottom}`);
    await context.close();
  }
  assert.equal(new Set(heights.values()).size, 1, JSON.stringify([...heights]));
});

test('a bin with two notes is no taller than they are', async () => {
  const { page, context } = await open(browser, { before: fakeHost(stored) });
  await views.bin?.(page, wordsIn('en'));
  await page.waitForFunction(() => document.querySelectorAll('.bin .row').length === 2);
  const left = await page.evaluate(() => {
    const list = document.querySelector('.bin .list')?.getBoundingClientRect();
    const last = [...document.querySelectorAll('.bin .row')].at(-1)?.getBoundingClientRect();
    return (list?.bottom ?? 0) - (last?.bottom ?? 0);
  });
  assert.ok(left >= 0 && left < 10, String(left));
  await context.close();
});

test('every button without a word has a drawn icon', async () => {
  const { page, context } = await open(browser, { before: fakeHost(stored) });
  await views['replace in the text']?.(page, wordsIn('en'));
  const bare = await page.evaluate(() =>
    [...document.querySelectorAll('.icon-button, .find-step, .find-switch, .tab-close')]
      .filter((button) => button.textContent || !button.querySelector('svg path'))
      .map((button) => button.outerHTML),
  );
  assert.deepEqual(bare, []);
  assert.ok((await page.locator('.find-step, .find-switch').count()) >= 8);
  await context.close();
});

test('the strike of a done task begins with its text', async () => {
  const page = await withText('- [x] feita');
  assert.equal(await page.textContent('.md-done'), 'feita');
  await page.context().close();
});

test('only the first and the last line of a code block round its corners', async () => {
  const page = await withText('antes\n\n```js\nlet a;\n```\n\ndepois');
  const lines = (name: string) => page.locator(`.cm-line.${name}`).allInnerTexts();
  assert.deepEqual(await lines('md-line-code'), ['```js', 'let a;', '```']);
  assert.deepEqual(await lines('md-line-code-first'), ['```js']);
  assert.deepEqual(await lines('md-line-code-last'), ['```']);
  await page.context().close();
});

test('the first line is equally high in editor and preview', async () => {
  for (const text of ['um texto', '# Um título', '## Outro', '- [ ] tarefa', '- item']) {
    const page = await withText(text);
    await openPreview(page);
    const bottoms = await page.evaluate(() =>
      ['.cm-line', '.preview-page > *'].map((selector) => {
        const texts = document.createTreeWalker(document.querySelector(selector) as Element, NodeFilter.SHOW_TEXT);
        let last: Node | null = null;
        while (texts.nextNode()) last = texts.currentNode;
        const range = document.createRange();
        range.selectNodeContents(last as Node);
        return range.getBoundingClientRect().bottom;
      }),
    );
    const [editor = 0, preview = 0] = bottoms;
    assert.ok(Math.abs(editor - preview) <= 1, `${text}: ${editor} and ${preview}`);
    await page.context().close();
  }
});

test('the text of a task begins where other items do, in every face', async () => {
  for (const textFace of ['sans', 'serif', 'mono']) {
    const page = await withText('- [ ] um\n- [x] dois\n\n1. item', 1320, { textFace });
    await openPreview(page);
    await page.evaluate(() => document.fonts.ready);
    const places = await page.$$eval('.preview li', (items) =>
      items.map((item) => {
        const texts = document.createTreeWalker(item, NodeFilter.SHOW_TEXT);
        const range = document.createRange();
        range.selectNodeContents(texts.nextNode() as Node);
        return Math.round(range.getBoundingClientRect().left);
      }),
    );
    assert.equal(places.length, 3);
    assert.equal(new Set(places).size, 1, `${textFace}: ${places}`);
    await page.context().close();
  }
});

test('code in a heading is equally large in editor and preview', async () => {
  const page = await withText('# Um `a`\n\n## Dois `b`\n\n### Três `c`\n\nquatro `d`');
  await openPreview(page);
  const sizes = (selector: string) =>
    page.$$eval(selector, (codes) =>
      codes.map((code) => Number.parseFloat(getComputedStyle(code).fontSize).toFixed(1)),
    );
  const shown = await sizes('.preview code');
  assert.equal(new Set(shown).size, 4);
  assert.deepEqual(await sizes('.cm-line .md-code'), shown);
  await page.context().close();
});

test('a table in the preview breaks no words but scrolls', async () => {
  const word = 'Donaudampfschifffahrtsgesellschaft';
  const row = `| ${[word, word, word].join(' | ')} |`;
  const page = await withText([row, '| - | - | - |', row].join('\n'));
  await openPreview(page);
  const table = await page.evaluate(() => {
    const frame = document.querySelector('.table-frame');
    const page = document.querySelector('.preview');
    return {
      scrolls: (frame?.scrollWidth ?? 0) > (frame?.clientWidth ?? 0),
      pageFits: (page?.scrollWidth ?? 0) <= (page?.clientWidth ?? 0),
      rowHeight: document.querySelector('.preview tr')?.getBoundingClientRect().height ?? 0,
    };
  });
  assert.ok(table.scrolls && table.pageFits, JSON.stringify(table));
  assert.ok(table.rowHeight < 50, 'one line');
  await page.focus('.table-frame');
  await page.context().close();
});

test('the active tab differs from the others in its line only', async () => {
  const { page, context } = await open(browser, { before: fakeHost(stored) });
  const looks = await page.evaluate(() =>
    [...document.querySelectorAll('.tab-frame')].map((frame) => {
      const { backgroundColor, color, fontWeight } = getComputedStyle(frame);
      return { look: [backgroundColor, color, fontWeight].join(), line: getComputedStyle(frame, '::after').height };
    }),
  );
  assert.equal(new Set(looks.map(({ look }) => look)).size, 1);
  assert.deepEqual(
    looks.map(({ line }) => line === '2px'),
    [true, false, false],
  );
  await context.close();
});
