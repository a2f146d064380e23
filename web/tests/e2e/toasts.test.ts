import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser } from 'playwright-core';
import { launch, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function openNotes(...texts: string[]) {
  const opened = await open(browser);
  for (const text of texts) {
    await opened.page.keyboard.press('Alt+n');
    await opened.page.keyboard.type(text);
  }
  const deleteNote = async () => {
    await opened.page.click('#noteMenuButton');
    await opened.page.click('[data-command=delete]');
  };
  return { ...opened, deleteNote, toasts: opened.page.locator('.toast') };
}

test('an offer to undo goes when that was undone another way', async () => {
  const { page, context, toasts, deleteNote } = await openNotes('um', 'dois');
  await deleteNote();
  assert.match(await toasts.innerText(), /dois.*Undo/s);
  await page.keyboard.press('Alt+Shift+t');
  assert.equal(await toasts.count(), 0);
  await page.keyboard.press('Control+Alt+w');
  assert.equal(await toasts.count(), 1);
  await page.keyboard.press('Alt+n');
  assert.equal(await toasts.count(), 1, 'another change leaves it');
  await page.keyboard.press('Alt+Shift+t');
  assert.equal(await toasts.count(), 0);
  await context.close();
});

test('what was said about the same thing before gives way', async () => {
  const { page, context, toasts } = await openNotes('a');
  await page.keyboard.press('Control+Equal');
  await page.keyboard.press('Control+Equal');
  await page.keyboard.press('Control+0');
  assert.deepEqual(await toasts.allInnerTexts(), ['Text at 100%']);
  await context.close();
});

test('equal messages replace each other, and three are the most', async () => {
  const { page, context, toasts, deleteNote } = await openNotes('a', 'b', 'c', 'd');
  await page.keyboard.press('Control+0');
  await page.keyboard.press('Control+0');
  assert.deepEqual(await toasts.allInnerTexts(), ['Text at 100%']);
  await deleteNote();
  await page.focus('.toast button');
  await page.evaluate("for (const word of ['um', 'dois', 'três']) showToast(word)");
  assert.equal(await toasts.count(), 3);
  assert.match((await toasts.allInnerTexts())[0] ?? '', /“d” deleted/, 'the one in use stays');
  await context.close();
});

test('a message goes by itself, but not while it is read', async () => {
  const { page, context, toasts } = await openNotes('a');
  await page.clock.install();
  await page.keyboard.press('Control+0');
  await page.clock.fastForward(3000);
  assert.equal(await toasts.count(), 1);
  await toasts.hover();
  await page.clock.fastForward(60_000);
  assert.equal(await toasts.count(), 1);
  await page.mouse.move(0, 0);
  await page.clock.fastForward(5000);
  assert.equal(await toasts.count(), 0);
  await context.close();
});
