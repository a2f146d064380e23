import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const openNote = async () => {
  const opened = await open(browser, { before: fakeHost() });
  await opened.page.evaluate('createNote()');
  return opened;
};
const isMenuOpen = (page: Page) => page.isVisible('#noteMenu');
/** Whether the element is what a click in its middle would hit. */
const isInFront = (page: Page, selector: string) =>
  page.evaluate((wanted) => {
    const element = document.querySelector(wanted);
    const { x, y, width, height } = element?.getBoundingClientRect() ?? new DOMRect();
    return element?.contains(document.elementFromPoint(x + width / 2, y + height / 2)) ?? false;
  }, selector);

test('a toast is in front of a dialog, and its button works there', async () => {
  const { page, context } = await openNote();
  await page.keyboard.type('fica');
  await page.click('#noteMenuButton');
  await page.click('[data-command=delete]');
  assert.ok(await isInFront(page, '.toast button'));
  await page.evaluate('quendoOpenShortcutGuide()');
  assert.ok(await isInFront(page, '.toast button'), 'a dialog that opens later does not hide it');
  await page.evaluate("showToast('outra')");
  assert.ok(await isInFront(page, '.toast:last-child'));
  await page.evaluate('quendoPrepareForTermination()');
  assert.equal(
    await page.evaluate("document.querySelector('.toasts').closest('[inert]')"),
    null,
    'it is still read out',
  );
  await page.evaluate('quendoTerminationDidCancel()');
  await page.evaluate('openCapture()');
  assert.equal(await page.locator('.toasts').count(), 1, 'it changes from one dialog to the next');
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('.toast').count(), 2, 'nor does it go with the dialog');
  await page.click('.toast button');
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['fica']);
  await context.close();
});

test('the note menu is in front of the editor and closes when the user turns elsewhere', async () => {
  const { page, context } = await openNote();
  await page.keyboard.press('Control+Alt+f');
  await page.click('#noteMenuButton');
  for (const at of [1, 3, 6]) assert.ok(await isInFront(page, `[role=menuitem]:nth-child(${at})`));
  await page.mouse.click(400, 400);
  assert.equal(await isMenuOpen(page), false, 'a click elsewhere');
  await page.click('#noteMenuButton');
  await page.evaluate('openCapture()');
  assert.equal(await isMenuOpen(page), false, 'a dialog');
  await page.keyboard.press('Escape');
  await page.click('#noteMenuButton');
  assert.equal(await page.getAttribute('#noteMenuButton', 'aria-expanded'), 'true');
  await page.click('#noteMenuButton');
  assert.equal(await isMenuOpen(page), false, 'its button');
  assert.equal(await page.getAttribute('#noteMenuButton', 'aria-expanded'), 'false');
  assert.equal(await page.evaluate('document.activeElement.id'), 'noteMenuButton');
  await page.keyboard.press('Enter');
  await page.waitForSelector('[role=menuitem]:focus');
  await page.evaluate("document.querySelector('[role=menuitem]:focus').blur()");
  assert.equal(await isMenuOpen(page), true, 'a press on an entry may take the focus from it');
  await context.close();
});
