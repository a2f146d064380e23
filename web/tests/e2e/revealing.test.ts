import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

/** Three hundred notes; two have tabs, and the one far down is active. */
async function opened() {
  const now = Date.now();
  const notes = Array.from({ length: 300 }, (_, n) => ({
    id: `n${n}`,
    text: `${n % 2 ? 'Zebra' : 'Amora'} ${n}\n\ncomum`,
    created: now - n * 1000,
    updated: now - n * 1000,
  }));
  const state = { version: 2, notes, tabs: { open: ['n3', 'n250'], active: 'n250' } };
  const result = await open(browser, { before: fakeHost(state) });
  await result.page.waitForSelector('#sidebar .row');
  return result;
}

/** Waits until a note's row is the one that stands out, and wholly within the list. */
const isShown = (page: Page, id: string) =>
  page.waitForFunction((wanted) => {
    const row = document.querySelector(`#note-${wanted}[aria-selected=true]`)?.getBoundingClientRect();
    const list = document.querySelector('#sidebar .list')?.getBoundingClientRect();
    return row && list && row.top >= list.top - 1 && row.bottom <= list.bottom + 1;
  }, id);

test('the active note is shown in the list from the start, in any order, and after the sidebar was hidden', async () => {
  const { page, context, trouble } = await opened();
  await isShown(page, 'n250');
  await page.selectOption('.sort', 'title');
  await isShown(page, 'n250');
  await page.evaluate('quendoSwitchOpenTab(-1)');
  await isShown(page, 'n3');
  await page.click('[aria-label="Hide the note list"]');
  await page.waitForSelector('#sidebar', { state: 'hidden' });
  await page.click('[aria-label="Show the note list"]');
  await isShown(page, 'n3');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a search begins at its best match, and without it the active note is shown again', async () => {
  const { page, context } = await opened();
  await isShown(page, 'n250');
  await page.fill('#searchInput', 'comum');
  await page.waitForFunction(() => document.querySelector('.outcome')?.textContent === '300 notes found');
  await page.waitForFunction(() => document.querySelector('#sidebar .list')?.scrollTop === 0);
  await page.press('#searchInput', 'Escape');
  await isShown(page, 'n250');
  await context.close();
});

test('rows are chosen one by one with Ctrl and the space bar, as in any list of files', async () => {
  const { page, context } = await opened();
  await page.focus('#sidebar .list');
  await page.keyboard.press('Home');
  await page.keyboard.press('Control+ArrowDown');
  await page.keyboard.press('Control+ArrowDown');
  await page.keyboard.press('Control+Space');
  await page.keyboard.press('Control+ArrowDown');
  await page.keyboard.press('Control+ArrowDown');
  await page.keyboard.press('Control+Space');
  await page.waitForFunction(() => document.querySelector('.outcome')?.textContent === '3 notes selected');
  const selected = page.locator('#sidebar .row[aria-selected=true] .row-title');
  await page.waitForFunction(() => document.querySelectorAll('#sidebar [aria-selected=true]').length === 2);
  assert.deepEqual(await selected.allInnerTexts(), ['Amora 2', 'Amora 4']);
  await context.close();
});
