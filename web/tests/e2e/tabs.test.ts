import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, lastState, launch, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function withTabs(...titles: string[]): Promise<Page> {
  const notes = titles.map((text) => ({ id: text, text }));
  const state = { version: 1, notes, tabs: { open: titles, active: titles[0] } };
  const { page } = await open(browser, { before: fakeHost(state) });
  await page.waitForSelector('[role=tab]');
  return page;
}

const titles = (page: Page) => page.locator('[role=tab]').allInnerTexts();
const active = (page: Page) => page.innerText('[role=tab][aria-selected=true]');

async function middleOf(page: Page, selector: string): Promise<readonly [number, number]> {
  const { x, y, width, height } = (await page.locator(selector).boundingBox()) ?? { x: 0, y: 0, width: 0, height: 0 };
  return [x + width / 2, y + height / 2];
}

test('a tab is dragged to another place, which is saved and opens nothing', async () => {
  const page = await withTabs('a', 'b', 'c');
  const [from, y] = await middleOf(page, '[role=tab] >> nth=1');
  const [to] = await middleOf(page, '[role=tab] >> nth=2');
  await page.mouse.move(from, y);
  await page.mouse.down();
  await page.mouse.move(to + 20, y, { steps: 8 });
  assert.deepEqual(await titles(page), ['a', 'b', 'c'], 'only once it is let go');
  await page.mouse.up();
  assert.deepEqual(await titles(page), ['a', 'c', 'b']);
  assert.equal(await active(page), 'a');
  await page.click('[role=tab] >> nth=1');
  assert.equal(await active(page), 'c', 'a click still opens');
  await page.waitForSelector(saved);
  const { tabs } = (await lastState(page)) as { tabs: { open: string[] } };
  assert.deepEqual(tabs.open, ['a', 'c', 'b']);
  await page.context().close();
});

test('keys move the active tab, and the focus stays in the text', async () => {
  const page = await withTabs('a', 'b', 'c');
  await page.focus('.cm-content');
  await page.keyboard.press('Control+Shift+PageDown');
  assert.deepEqual(await titles(page), ['b', 'a', 'c']);
  await page.keyboard.press('Control+Shift+PageUp');
  await page.keyboard.press('Control+Shift+PageUp');
  assert.deepEqual(await titles(page), ['a', 'b', 'c']);
  assert.equal(await page.evaluate("document.activeElement.matches('.cm-content')"), true);
  await page.focus('[role=tab][aria-selected=true]');
  await page.keyboard.press('Control+Shift+PageDown');
  assert.equal(await page.evaluate('document.activeElement.textContent'), 'a', 'a moved tab keeps the focus');
  await page.context().close();
});

test("a tab's menu acts on that tab, by mouse and by keyboard", async () => {
  const page = await withTabs('a', 'b', 'c');
  await page.click('[role=tab] >> nth=1', { button: 'right' });
  await page.click('.menu:not([hidden]) [data-command=pin]');
  assert.equal(await page.locator('#sidebar .pin').count(), 1);
  assert.equal(await active(page), 'a');
  await page.focus('[role=tab][aria-selected=true]');
  await page.keyboard.press('Shift+F10');
  await page.waitForSelector('.menu:not([hidden]) [role=menuitem]:focus');
  await page.keyboard.press('Escape');
  assert.equal(await page.evaluate('document.activeElement.textContent'), 'a', 'back on the tab');
  await page.click('[role=tab] >> nth=1', { button: 'right' });
  await page.click('.menu:not([hidden]) [data-command=closeRight]');
  assert.deepEqual(await titles(page), ['a', 'b']);
  await page.click('[role=tab] >> nth=1', { button: 'right' });
  await page.click('.menu:not([hidden]) [data-command=closeOthers]');
  assert.deepEqual(await titles(page), ['b']);
  await page.context().close();
});

test('tabs that do not fit are in a list at the end of the row', async () => {
  const names = Array.from({ length: 30 }, (_, n) => `nota ${n}`);
  const page = await withTabs(...names);
  await page.click('.tabs-extras > button');
  assert.deepEqual(await page.locator('#tabList .menu-item .menu-text').allInnerTexts(), names);
  assert.equal(await page.innerText('#tabList [aria-checked=true] .menu-text'), 'nota 0');
  await page.click('text=nota 29 >> nth=-1');
  assert.equal(await active(page), 'nota 29');
  const isSeen = () => {
    const [row, tab] = ['.tabs', '[role=tab][aria-selected=true]'].map((one) => document.querySelector(one));
    return (tab?.getBoundingClientRect().right ?? 1e9) <= (row?.getBoundingClientRect().right ?? 0) + 1;
  };
  await page.waitForFunction(isSeen);
  await page.setViewportSize({ width: 880, height: 600 });
  await page.evaluate("quendoOpenNativeFiles([{ name: 'outra.md', content: 'nota' }])");
  await page.waitForFunction(isSeen);
  await page.evaluate("quendoRequestCloseTabs('others')");
  await page.waitForSelector('.tabs-extras > button', { state: 'hidden' });
  await page.context().close();
});

test('of many files opened at once, ten get tabs and the others are in the list', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  const opened = await page.evaluate(() => {
    const host = window as unknown as { quendoOpenNativeFiles(files: unknown): number };
    return host.quendoOpenNativeFiles(Array.from({ length: 13 }, (_, n) => ({ name: `${n}.md`, content: 'nota' })));
  });
  assert.equal(opened, 10);
  assert.equal((await titles(page)).length, 10);
  assert.match(await page.innerText('.toast'), /^3 more files/);
  await page.waitForSelector(saved);
  const { notes } = (await lastState(page)) as { notes: unknown[] };
  assert.equal(notes.length, 13);
  await context.close();
});

test('the sidebar is made wider by mouse and by keys, and a double click puts it back', async () => {
  const page = await withTabs('a');
  const width = () => page.evaluate(() => document.querySelector<HTMLElement>('#sidebar')?.offsetWidth);
  const told = () => page.getAttribute('.splitter', 'aria-valuenow');
  const usual = await width();
  assert.equal(usual, 272);
  const [x, y] = await middleOf(page, '.splitter');
  await page.mouse.move(x, y);
  await page.mouse.down();
  await page.mouse.move(x + 60, y, { steps: 4 });
  await page.mouse.up();
  const dragged = (await width()) ?? 0;
  assert.ok(Math.abs(dragged - 332) <= 1, String(dragged));
  assert.equal(await told(), String(dragged));
  await page.focus('.splitter');
  await page.keyboard.press('ArrowLeft');
  assert.equal(await width(), dragged - 16);
  await page.keyboard.press('End');
  assert.equal(await told(), '560');
  await page.waitForSelector(saved);
  const { settings } = (await lastState(page)) as { settings: Record<string, unknown> };
  assert.equal(settings.sidebarWidth, 560);
  await page.dblclick('.splitter');
  assert.equal(await width(), usual);
  await page.context().close();
});

test('in a narrow window the list lies over the text until a note is chosen, and the preview replaces the text', async () => {
  const page = await withTabs('a', 'b');
  await page.keyboard.press('Control+Alt+p');
  await page.waitForSelector('[data-preview=beside]');
  await page.setViewportSize({ width: 600, height: 700 });
  await page.waitForSelector('[data-preview=instead]');
  await page.waitForSelector('.sidebar', { state: 'hidden' });
  const text = () => page.evaluate(() => document.querySelector<HTMLElement>('.main')?.offsetWidth);
  assert.equal(await text(), 600);
  await page.click('header .icon-button');
  assert.equal(await text(), 600, 'over the text, not beside it');
  await page.click('.row >> text=b');
  await page.waitForSelector('.sidebar', { state: 'hidden' });
  assert.equal(await active(page), 'b');
  await page.setViewportSize({ width: 1000, height: 700 });
  await page.waitForSelector('[data-preview=beside]');
  await page.waitForSelector('.sidebar', { state: 'visible' });
  await page.context().close();
});

test('where no note is open, three things to do are offered with their keys', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  const offered = (await page.locator('.start-item').allInnerTexts()).map((text) => text.replace(/\s+/g, ' ').trim());
  assert.deepEqual(offered, ['New note Ctrl+N', 'Open a copy of a file… Ctrl+O', 'Shortcut guide F1']);
  await page.keyboard.press('F1');
  await page.waitForSelector('dialog .guide');
  await page.keyboard.press('Escape');
  await page.keyboard.press('Enter');
  assert.equal(await page.locator('[role=tab]').count(), 1, 'the first has the focus');
  await context.close();
});
