import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { launch, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function write(page: Page, text: string): Promise<void> {
  await page.keyboard.press('Alt+n');
  await page.keyboard.type(text);
}

/** Opens this many notes one after the other and closes all tabs. */
async function passThrough(page: Page, count: number): Promise<void> {
  await page.evaluate((many) => {
    const host = window as unknown as {
      quendoOpenNativeFiles(files: unknown): number;
      quendoRequestCloseTabs(scope: string): void;
    };
    for (let n = 0; n < many; n++) host.quendoOpenNativeFiles([{ name: `${n}.md`, content: 'nota' }]);
    host.quendoRequestCloseTabs('all');
  }, count);
}

async function goTo(page: Page, title: string): Promise<void> {
  await page.keyboard.press('Control+Shift+o');
  await page.keyboard.type(title);
  await page.locator('.palette-row', { hasText: title }).first().waitFor();
  await page.keyboard.press('Enter');
  await page.waitForSelector('.cm-content:focus');
}

test('a note without a tab keeps its undo history while it is among the last few dozen', async () => {
  const { page, context } = await open(browser);
  await write(page, 'primeira');
  const text = () => noteTexts(page).then(([first]) => first);
  await passThrough(page, 20);
  await goTo(page, 'primeira');
  await page.keyboard.press('Control+z');
  assert.equal(await text(), '');
  await page.keyboard.press('Control+Shift+z');
  assert.equal(await text(), 'primeira');
  await passThrough(page, 45);
  await goTo(page, 'primeira');
  await page.keyboard.press('Control+z');
  assert.equal(await text(), 'primeira', 'what the editor had of it is gone');
  await page.keyboard.type('!');
  assert.equal(await text(), 'primeira!', 'where it was left is remembered');
  await context.close();
});

test('an open tab keeps its undo history, however many others are visited', async () => {
  const { page, context } = await open(browser);
  await write(page, 'primeira');
  await page.evaluate((count) => {
    const host = window as unknown as { quendoOpenNativeFiles(files: unknown): number };
    for (let n = 0; n < count; n++) host.quendoOpenNativeFiles([{ name: `${n}.md`, content: 'nota' }]);
  }, 60);
  await goTo(page, 'primeira');
  await page.keyboard.press('Control+z');
  assert.equal((await noteTexts(page))[0], '');
  await context.close();
});

test('the editor keeps nothing of a deleted note, which reopens where it was left', async () => {
  const { page, context } = await open(browser);
  await write(page, 'segredo');
  await page.keyboard.press('ArrowLeft');
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type('Delete note');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.toast');
  assert.equal(await page.textContent('.cm-content'), '');
  await page.click('.toast button');
  await page.keyboard.press('Control+z');
  assert.deepEqual(await noteTexts(page), ['segredo']);
  await page.keyboard.type('!');
  assert.deepEqual(await noteTexts(page), ['segred!o']);
  await context.close();
});
