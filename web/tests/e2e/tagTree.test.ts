import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function withNotes(texts: ReadonlyArray<string>) {
  const notes = texts.map((text, n) => ({ id: `n${n}`, text, created: 1, updated: Date.now() - n }));
  const opened = await open(browser, {
    before: fakeHost({ version: 2, notes, tabs: { open: ['n0'], active: 'n0' } }),
  });
  await opened.page.waitForSelector('.tag-row');
  return opened;
}

/** Waits until the keys are at this row. */
const at = (page: Page, wanted: string) =>
  page.waitForFunction((text) => {
    const id = document.activeElement?.getAttribute('aria-activedescendant') ?? '';
    return document.getElementById(id)?.textContent === text;
  }, wanted);

test('of thousands of tags only those near the visible ones are drawn, and the keys reach all', async () => {
  const { page, context, trouble } = await withNotes([
    Array.from({ length: 3000 }, (_, n) => `#tag${n}/below`).join(' '),
  ]);
  await page.focus('.tags-tree');
  await at(page, 'tag0 1');
  await page.keyboard.press('End');
  await at(page, 'tag2999 1');
  const [tree, row] = [
    await page.locator('.tags-tree').boundingBox(),
    await page.locator('.tag-row.is-current').boundingBox(),
  ];
  assert.ok(tree && row && row.y >= tree.y && row.y + row.height <= tree.y + tree.height);
  await page.keyboard.press('ArrowRight');
  await page.keyboard.press('ArrowRight');
  await at(page, 'below 1');
  assert.ok((await page.locator('.tag-row').count()) < 60);
  await page.keyboard.press('PageUp');
  await page.keyboard.press('Home');
  await at(page, 'tag0 1');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the menu of a tag renames it everywhere by the keyboard, and one Undo takes that back', async () => {
  const texts = ['Plano #casa', 'a #Casa/sala'];
  const { page, context } = await withNotes(texts);
  await page.focus('.tags-tree');
  await page.keyboard.press('Shift+F10');
  await page.waitForSelector('.menu [data-command=renameTag]');
  await page.keyboard.press('Escape');
  await at(page, 'casa 2');
  await page.keyboard.press('ContextMenu');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Enter');
  await page.fill('.rename input', 'lar/doce');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.toast >> text=Tag renamed in 2 notes');
  assert.deepEqual(await noteTexts(page), ['Plano #lar/doce', 'a #lar/doce/sala']);
  await page.click('.toast button');
  assert.deepEqual(await noteTexts(page), texts);
  await page.click('.tag-row', { button: 'right' });
  await page.click('.menu [data-command=showTag]');
  assert.equal(await page.inputValue('#searchInput'), 'tag:casa');
  await context.close();
});

test('a click meant for a tag, while the hint of the search shows, is one on that tag', async () => {
  const { page, context } = await withNotes(['Plano #casa #casa/sala #viagem']);
  await page.focus('#searchInput');
  await page.waitForSelector('.search-hint');
  const tag = page.locator('.tag-row', { hasText: 'viagem' });
  const before = await tag.boundingBox();
  await tag.click();
  assert.equal(await page.inputValue('#searchInput'), 'tag:viagem');
  assert.deepEqual(await tag.boundingBox(), before);
  await page.fill('#searchInput', '');
  await tag.click({ button: 'right' });
  await page.waitForSelector('.menu [data-command=showTag]');
  await context.close();
});
