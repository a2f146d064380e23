import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { launch, noteTexts, open, restart } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function openNote(text: string) {
  const opened = await open(browser, { reloads: true });
  await opened.page.keyboard.press('Alt+n');
  await opened.page.keyboard.insertText(text);
  return opened;
}

async function choose(page: Page, query: string): Promise<void> {
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type(query);
  await page.keyboard.press('Enter');
}

test('focus mode shows the current paragraph in full colours, also after a restart', async () => {
  const { page, context, trouble } = await openNote('a\n\nb\nc\n\nd');
  const current = async () => (await page.locator('.cm-currentParagraph').allInnerTexts()).map((text) => text.trim());
  assert.deepEqual(await current(), []);
  await choose(page, 'distraction');
  assert.deepEqual(await current(), ['d']);
  await page.keyboard.press('ArrowUp');
  await page.keyboard.press('ArrowUp');
  assert.deepEqual(await current(), ['b', 'c']);
  await page.keyboard.type('x');
  assert.deepEqual(await current(), ['b', 'cx']);
  await page.keyboard.press('Enter');
  await page.keyboard.press('Enter');
  assert.deepEqual(await current(), ['']);
  const colour = (line: number) =>
    page
      .locator('.cm-line')
      .nth(line)
      .evaluate((element) => getComputedStyle(element).color);
  assert.notEqual(
    await colour(0),
    await page.locator('.cm-currentParagraph').evaluate((e) => getComputedStyle(e).color),
  );
  await restart(page);
  await page.waitForSelector('.cm-currentParagraph');
  await choose(page, 'focus mode');
  assert.deepEqual(await current(), []);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('typewriter scrolling keeps the line in the middle', async () => {
  const { page, context, trouble } = await openNote(Array.from({ length: 80 }, (_, i) => `line ${i}`).join('\n'));
  await choose(page, 'typewriter');
  const distance = () =>
    page.evaluate(() => {
      const caret = getSelection()?.getRangeAt(0).startContainer.parentElement?.closest('.cm-line');
      const view = document.querySelector('.cm-scroller')?.getBoundingClientRect();
      const line = caret?.getBoundingClientRect();
      return line && view ? Math.abs(line.top + line.height / 2 - view.top - view.height / 2) : Infinity;
    });
  const isCentred = async () => {
    await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
    assert.ok((await distance()) < 30, `${await distance()} pixels from the middle`);
  };
  await page.keyboard.type('x');
  await isCentred();
  for (let i = 0; i < 30; i++) await page.keyboard.press('ArrowUp');
  await isCentred();
  await page.keyboard.press('Control+Home');
  await isCentred();
  assert.deepEqual(trouble, []);
  await context.close();
});

test('typing a mark over selected text wraps it, and each is undone in one step', async () => {
  const { page, context } = await openNote('word');
  const text = async () => (await noteTexts(page))[0];
  await page.keyboard.press('Control+a');
  await page.keyboard.type('**');
  assert.equal(await text(), '**word**');
  await page.keyboard.press('Control+z');
  assert.equal(await text(), '*word*');
  await page.keyboard.press('Control+z');
  assert.equal(await text(), 'word');
  await page.keyboard.press('Control+Slash');
  assert.equal(await text(), 'word', 'and there are no comments in prose');
  await context.close();
});

test('Markdown is written from the palette, and lists are undone in one step', async () => {
  const { page, context } = await openNote('1. a\n2. b\n3. c');
  const text = async () => (await noteTexts(page))[0];
  await page.keyboard.press('Alt+ArrowUp');
  assert.equal(await text(), '1. a\n2. c\n3. b');
  await page.keyboard.press('Control+z');
  assert.equal(await text(), '1. a\n2. b\n3. c');
  await page.keyboard.press('Control+a');
  await page.keyboard.insertText('Plan');
  await choose(page, 'heading 2');
  assert.equal(await text(), '## Plan');
  assert.ok(await page.evaluate(() => document.activeElement?.classList.contains('cm-content')));
  await context.close();
});

test('the palette shows the word that a command was found by', async () => {
  const { page, context } = await openNote('a');
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type('night');
  const row = page.locator('.palette-row').first();
  assert.match(await row.innerText(), /Dark appearance\s+night/);
  assert.equal(await row.locator('.palette-alias mark').count(), 5);
  await context.close();
});
