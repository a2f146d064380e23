import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const inEditor = (page: Page) =>
  page.evaluate(
    () => document.activeElement?.matches('.cm-content') === true && !document.activeElement.closest('dialog'),
  );

async function write(page: Page, ...texts: string[]): Promise<void> {
  for (const text of texts) {
    await page.keyboard.press('Alt+n');
    await page.keyboard.type(text);
  }
}

test('the first note is one key press away', async () => {
  const { page, context } = await open(browser);
  await page.keyboard.press('Enter');
  await page.keyboard.type('olá');
  assert.deepEqual(await noteTexts(page), ['olá']);
  await context.close();
});

test('Escape leaves every panel for the text', async () => {
  const { page, context } = await open(browser);
  await write(page, 'um', 'dois');
  const panels = [
    () => page.evaluate('quendoShowTabOverview()'),
    () => page.evaluate('quendoOpenShortcutGuide()'),
    () => page.keyboard.press('Control+k'),
    () => page.keyboard.press('Control+p'),
    () => page.keyboard.press('Control+f'),
    () => page.focus('.list'),
    () => page.focus('[role=tab][tabindex="0"]'),
    async () => {
      await page.focus('[aria-label="Note actions"]');
      await page.keyboard.press('Enter');
      await page.waitForSelector('[role=menuitem]:focus');
    },
  ];
  for (const [index, show] of panels.entries()) {
    await show();
    assert.equal(await inEditor(page), false, `panel ${index} takes the focus`);
    await page.keyboard.press('Escape');
    await page.waitForFunction(
      () => document.activeElement?.matches('.cm-content') && !document.querySelector('dialog'),
    );
  }
  assert.equal(await page.locator('dialog').count(), 0);
  await context.close();
});

test('a dialog keeps the focus inside', async () => {
  const { page, context } = await open(browser);
  await write(page, 'um');
  await page.keyboard.press('Control+k');
  for (let i = 0; i < 8; i++) {
    await page.keyboard.press('Tab');
    const outside = await page.evaluate(() => {
      const active = document.activeElement;
      return active !== document.body && !active?.closest('dialog');
    });
    assert.equal(outside, false);
  }
  await context.close();
});

test('arrow keys move through the list, the tabs and the overview', async () => {
  const { page, context } = await open(browser);
  await write(page, 'um', 'dois', 'tres');
  const active = () => page.innerText('[role=tab][aria-selected=true]');

  await page.keyboard.press('Control+p');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('End');
  await page.keyboard.press('Enter');
  assert.equal(await active(), 'um');
  assert.ok(await inEditor(page));

  await page.focus('[role=tab][tabindex="0"]');
  await page.keyboard.press('ArrowRight');
  await page.keyboard.press('Enter');
  assert.equal(await active(), 'dois');

  await page.focus('[role=tab][tabindex="0"]');
  await page.keyboard.press('Delete');
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['um', 'tres']);

  await page.evaluate('quendoShowTabOverview()');
  await page.keyboard.press('ArrowLeft');
  await page.keyboard.press('Delete');
  await page.keyboard.press('Enter');
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['tres']);
  assert.equal(await active(), 'tres');
  await context.close();
});

test('arrow keys move through the note menu', async () => {
  const { page, context } = await open(browser);
  await write(page, 'fica');
  await page.focus('[aria-label="Note actions"]');
  await page.keyboard.press('Enter');
  await page.waitForSelector('[role=menuitem]:focus');
  await page.keyboard.press('ArrowUp');
  assert.equal(await page.innerText('[role=menuitem]:focus span'), 'Delete note');
  await page.keyboard.press('Enter');
  assert.deepEqual(await noteTexts(page), []);
  await context.close();
});

test('every clickable element has an accessible name', async () => {
  const { page, context } = await open(browser);
  await write(page, 'um', 'dois');
  const nameless = await page.evaluate(() =>
    [...document.querySelectorAll('button, input, select, [role]')]
      .filter((element) => !element.closest('[aria-hidden=true], [hidden], [role=presentation]'))
      .filter((element) => !['presentation', 'status'].includes(element.getAttribute('role') ?? ''))
      .filter((element) => !(element.getAttribute('aria-label') ?? element.textContent)?.trim())
      .map((element) => element.outerHTML.slice(0, 120)),
  );
  assert.deepEqual(nameless, []);
  const unlabelled = await page.evaluate(() =>
    [...document.querySelectorAll('aside, [role=tablist], [role=listbox], [role=tabpanel], [role=menu]')]
      .filter((element) => !element.getAttribute('aria-label'))
      .map((element) => element.outerHTML.slice(0, 120)),
  );
  assert.deepEqual(unlabelled, []);
  await context.close();
});

test('Escape in a dialog restores the focus before the next key press', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote(); openCapture()');
  const focused = await page.evaluate(() => {
    const press = new KeyboardEvent('keydown', { key: 'Escape', bubbles: true, cancelable: true });
    document.activeElement?.dispatchEvent(press);
    return [document.activeElement?.className.includes('cm-content'), document.querySelector('dialog')];
  });
  assert.deepEqual(focused, [true, null]);
  // Nothing else happens, and the browser's own shortcut does not run either.
  await page.evaluate('openCapture()');
  await page.keyboard.press('Escape');
  await page.keyboard.type('a');
  assert.deepEqual(await noteTexts(page), ['a']);
  await context.close();
});
