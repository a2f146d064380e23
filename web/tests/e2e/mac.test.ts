import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import type { Language } from '../../src/i18n/language';
import { asMac, fakeHost, launch, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function openOnMac(language: Language = 'en') {
  return open(browser, { before: asMac + fakeHost(undefined, language) });
}

const isPaletteOpen = (page: Page) => page.evaluate(() => document.querySelector('dialog.palette') !== null);

for (const language of ['pt', 'en', 'es'] as const) {
  test(`the guide on a Mac shows a Mac's keys (${language})`, async () => {
    const { page, context, trouble } = await openOnMac(language);
    await page.evaluate('createNote(); quendoOpenShortcutGuide()');
    const shown = await page.locator('.guide-row kbd:not([data-t])').allInnerTexts();
    for (const keys of shown) {
      const one = String.raw`⌥?⇧?⌘?(?:F\d+|[A-Z0-9+−,[\]←→↑↓↩⇥⎋⇞⇟])`;
      assert.match(keys, new RegExp(`^${one}(?:(?: · | )${one})*$`));
    }
    for (const keys of ['⌘K', '⇧⌘S', '⇧⌘Z', '⇧⌘P', '⌥⇧⌘W', '⇧⌘[', '⌥⌘↑ ↓', '⌘↩', '⇥ · ⇧⇥', '⎋ ⇥']) {
      assert.ok(shown.includes(keys), `${keys} in ${shown.join(', ')}`);
    }
    assert.deepEqual(trouble, []);
    await context.close();
  });
}

test('commands are on Command and not on Control', async () => {
  const { page, context } = await openOnMac();
  await page.evaluate('createNote()');
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.press('Control+Alt+f');
  await page.keyboard.press('Control+h');
  assert.equal(await isPaletteOpen(page), false);
  assert.equal(await page.locator('.find').count(), 0);
  await page.keyboard.press('Meta+Shift+p');
  assert.equal(await isPaletteOpen(page), true);
  await page.keyboard.press('Escape');
  await page.keyboard.press('Meta+Alt+f');
  assert.equal(await page.locator('.find').count(), 1);
  await context.close();
});

test('Control moves and deletes in the text as everywhere on a Mac', async () => {
  const { page, context } = await openOnMac();
  await page.evaluate('createNote()');
  await page.keyboard.type('um dois');
  await page.keyboard.press('Control+a');
  await page.keyboard.type('>');
  await page.keyboard.press('Control+e');
  await page.keyboard.type('<');
  assert.deepEqual(await noteTexts(page), ['>um dois<']);
  // These letters with Command belong to the host's menu.
  for (const key of ['Control+a', 'Control+f', 'Control+f', 'Control+f', 'Control+k']) await page.keyboard.press(key);
  assert.deepEqual(await noteTexts(page), ['>um']);
  await page.keyboard.press('Control+h');
  assert.deepEqual(await noteTexts(page), ['>u']);
  await page.keyboard.press('Control+b');
  await page.keyboard.press('Control+d');
  assert.deepEqual(await noteTexts(page), ['>']);
  await page.keyboard.type('v');
  await page.keyboard.press('Meta+a');
  await page.keyboard.press('Meta+b');
  assert.deepEqual(await noteTexts(page), ['**>v**']);
  await page.keyboard.press('Meta+z');
  assert.deepEqual(await noteTexts(page), ['>v']);
  await page.keyboard.press('Meta+Shift+z');
  assert.deepEqual(await noteTexts(page), ['**>v**']);
  await context.close();
});

test("keys of the host's menu are left to the host on a Mac", async () => {
  const { page, context } = await openOnMac();
  await page.evaluate('createNote()');
  for (const letter of ['k', 's', 'p', 'm', 'h', 'n', 'w']) {
    const prevented = await page.evaluate((key) => {
      const code = `Key${key.toUpperCase()}`;
      const init = { key, code, keyCode: key.toUpperCase().charCodeAt(0), metaKey: true };
      const event = new KeyboardEvent('keydown', { ...init, bubbles: true, cancelable: true });
      return !document.querySelector('.cm-content')?.dispatchEvent(event);
    }, letter);
    assert.equal(prevented, false, letter);
  }
  await context.close();
});

test("a Mac's delete key closes tabs in the overview, as its hint says", async () => {
  const { page, context } = await openOnMac();
  await page.evaluate('createNote()');
  await page.keyboard.type('um');
  await page.evaluate('createNote()');
  await page.keyboard.type('dois');
  await page.evaluate('quendoShowTabOverview()');
  assert.match(await page.innerText('dialog p.quiet'), /⌫/);
  await page.keyboard.press('Backspace');
  await page.keyboard.press('Escape');
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['um']);
  await context.close();
});

test('quick capture keeps its note on Command and Return only', async () => {
  const { page, context } = await openOnMac();
  await page.evaluate('openCapture()');
  assert.match(await page.innerText('.capture .quiet'), /^⌘↩ .*⎋/);
  await page.keyboard.type('ideia');
  await page.keyboard.press('Control+Enter');
  assert.equal(await page.locator('dialog.capture').count(), 1);
  await page.keyboard.press('Meta+Enter');
  await page.waitForSelector('dialog', { state: 'detached' });
  assert.deepEqual(
    (await noteTexts(page)).map((text) => text.trim()),
    ['ideia'],
  );
  await context.close();
});

test('Return that ends a composition chooses nothing', async () => {
  const { page, context } = await openOnMac();
  await page.evaluate('createNote()');
  await page.keyboard.press('Meta+Shift+p');
  const press = (keyCode: number) =>
    page.evaluate((code) => {
      const init = { key: 'Enter', code: 'Enter', keyCode: code, bubbles: true, cancelable: true };
      document.activeElement?.dispatchEvent(new KeyboardEvent('keydown', init));
    }, keyCode);
  await press(229);
  assert.equal(await isPaletteOpen(page), true);
  await press(13);
  assert.equal(await isPaletteOpen(page), false);
  await context.close();
});
