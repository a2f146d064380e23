import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { chooseSetting, fakeHost, lastState, launch, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const style = (page: Page, selector: string, property: string) =>
  page.evaluate(([one, name]) => getComputedStyle(document.querySelector(one) as Element).getPropertyValue(name), [
    selector,
    property,
  ] as const);

test('settings open by their key and by the gear, and the focus returns to the text', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote()');
  await page.keyboard.press('Control+,');
  assert.equal(await page.evaluate('document.activeElement.id'), 'setting-theme');
  await page.keyboard.press('Escape');
  await page.keyboard.type('um');
  assert.equal(await page.innerText('.cm-content'), 'um');
  await page.click('.status [aria-label=Settings]');
  assert.equal(await page.locator('.settings select').count(), 5);
  await context.close();
});

test('what is chosen shows at once and is saved', async () => {
  const { page, context, trouble } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote()');
  const width = () => page.evaluate(() => document.querySelector('.cm-content')?.clientWidth ?? 0);
  const usual = await width();
  await chooseSetting(page, 'lines', 'narrow');
  assert.ok((await width()) < usual);
  await chooseSetting(page, 'lines', 'wide');
  assert.ok((await width()) > usual);
  await chooseSetting(page, 'size', '1.5');
  assert.equal(await style(page, 'html', 'font-size'), '24px');
  await chooseSetting(page, 'face', 'serif');
  assert.match(await style(page, '.cm-content', 'font-family'), /Quendo Serif/);
  await page.waitForSelector(saved);
  const { settings } = (await lastState(page)) as { settings: Record<string, unknown> };
  assert.equal(settings.lineWidth, 'wide');
  assert.equal(settings.textFace, 'serif');
  assert.equal(settings.zoom, 1.5);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a text face is loaded only once it is chosen', async () => {
  const { page, context, trouble } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote()');
  await page.keyboard.type('São três');
  assert.equal(await page.evaluate(() => document.fonts.size), 0);
  for (const [face, family] of [
    ['serif', 'Quendo Serif'],
    ['mono', 'Quendo Mono'],
  ] as const) {
    await chooseSetting(page, 'face', face);
    await page.waitForFunction(
      (name) => [...document.fonts].some((one) => one.family.includes(name) && one.status === 'loaded'),
      family,
    );
  }
  assert.deepEqual(trouble, [], 'the policy allows them');
  await context.close();
});

test('the page tells the colour of its theme', async () => {
  const { page, context } = await open(browser, { colorScheme: 'dark', before: fakeHost() });
  const told = () => page.getAttribute('meta[name=theme-color]', 'content');
  const shown = () =>
    page.evaluate(() => {
      const [r = 0, g = 0, b = 0] = (getComputedStyle(document.body).backgroundColor.match(/\d+/g) ?? []).map(Number);
      return `#${[r, g, b].map((part) => part.toString(16).padStart(2, '0')).join('')}`;
    });
  const dark = await told();
  assert.equal(dark, await shown());
  await chooseSetting(page, 'theme', 'light');
  assert.equal(await told(), await shown());
  assert.notEqual(await told(), dark);
  await page.keyboard.press('Control+,');
  await page.selectOption('.settings .theme', 'system');
  await page.emulateMedia({ colorScheme: 'light' });
  await page.waitForSelector('html[data-theme=light]');
  assert.equal(await told(), await shown());
  await context.close();
});

test('while the dialog is open it shows what is changed by keys and in the host’s menu', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote()');
  await page.keyboard.press('Control+,');
  await page.keyboard.press('Control+=');
  await page.waitForFunction(() => document.querySelector<HTMLSelectElement>('.settings .size')?.value === '1.1');
  await page.evaluate("quendoSetLanguage('es')");
  await page.waitForFunction(() => document.querySelector<HTMLSelectElement>('.settings .language')?.value === 'es');
  assert.equal(await page.innerText('.settings .theme > [value=dark]'), 'Oscura');
  await context.close();
});
