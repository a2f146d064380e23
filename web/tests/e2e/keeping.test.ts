// Never retried: these tests are about losing text.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { chooseSetting, fakeHost, launch, noteTexts, open, restart } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function write(page: Page, ...texts: string[]): Promise<void> {
  for (const text of texts) {
    await page.keyboard.press('Alt+n');
    await page.keyboard.type(text);
  }
}

const tabs = (page: Page) => page.locator('[role=tab]').allInnerTexts();
const rows = (page: Page) => page.locator('#sidebar .row-title').allInnerTexts();

test('closed tabs can be reopened after a restart, deleted notes too', async () => {
  const { page, context } = await open(browser, { reloads: true });
  await write(page, 'um', 'dois', 'tres');
  await page.keyboard.press('Alt+w');
  await page.evaluate('quendoSwitchOpenTab(-1)');
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type('delete note');
  await page.keyboard.press('Enter');
  assert.deepEqual(await tabs(page), ['dois']);
  await restart(page);
  await page.evaluate('quendoReopenClosedTab()');
  await page.evaluate('quendoReopenClosedTab()');
  assert.deepEqual((await tabs(page)).sort(), ['dois', 'tres', 'um']);
  await context.close();
});

test('a pinned note stays first in the list', async () => {
  const { page, context } = await open(browser, { reloads: true });
  await write(page, 'fixa', 'dois');
  await page.evaluate('quendoSwitchOpenTab(-1)');
  await page.click('#noteMenuButton');
  await page.click('[data-command=pin]');
  await write(page, 'tres');
  assert.deepEqual(await rows(page), ['fixa', 'tres', 'dois']);
  assert.equal(await page.getAttribute('.row .pin', 'aria-label'), 'Pinned:');
  await restart(page);
  await page.waitForSelector('.row .pin');
  assert.deepEqual(await rows(page), ['fixa', 'tres', 'dois']);
  await page.click('.row >> text=fixa');
  await page.click('#noteMenuButton');
  await page.click('text=Unpin note');
  await page.waitForFunction(() => !document.querySelector('.row .pin'));
  await context.close();
});

test('the bin restores notes, and is emptied only after confirmation', async () => {
  const { page, context } = await open(browser);
  await write(page, 'um', 'dois', 'tres');
  for (let i = 0; i < 2; i++) {
    await page.click('#noteMenuButton');
    await page.click('[data-command=delete]');
  }
  await page.click('.bin-button');
  await page.waitForFunction(() => document.querySelectorAll('.bin .row').length === 2);
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Enter');
  assert.equal((await noteTexts(page)).length, 2);
  assert.equal(await page.locator('dialog').count(), 0);
  await page.click('.bin-button');
  await page.click('text=Empty the bin…');
  assert.equal(await page.innerText('.question'), 'Delete 1 note for good?');
  await page.keyboard.press('Enter');
  await page.waitForFunction(() => !document.querySelector('dialog'));
  await page.click('.bin-button');
  await page.waitForSelector('.bin .row');
  await page.click('text=Empty the bin…');
  await page.click('text=Delete for good');
  await page.click('.bin-button');
  await page.waitForSelector('text=The bin is empty. Deleted notes');
  await context.close();
});

test('the palette runs what it finds, from anywhere, under the host too', async () => {
  for (const before of [undefined, fakeHost()]) {
    const { page, context, trouble } = await open(browser, before ? { before } : {});
    await page.evaluate('createNote()');
    await page.keyboard.type('texto');
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('dark appe');
    const first = '.palette-row[aria-selected=true]';
    assert.match(await page.innerText(first), /Dark appearance/);
    assert.ok((await page.locator(`${first} mark`).count()) >= 8);
    assert.equal(await page.getAttribute('.palette-field', 'aria-activedescendant'), 'palette-themeDark');
    await page.keyboard.press('Enter');
    assert.equal(await page.getAttribute('html', 'data-theme'), 'dark');
    await page.keyboard.type('!');
    assert.deepEqual(await noteTexts(page), ['texto!'], 'the focus is back in the text');
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('xyzzy');
    await page.waitForSelector('text=No command like “xyzzy”.');
    await page.keyboard.press('Enter');
    await page.keyboard.press('Escape');
    assert.deepEqual(trouble, []);
    await context.close();
  }
});

test('theme and text size are saved, and the theme follows the system if set to', async () => {
  const { page, context } = await open(browser, { reloads: true, colorScheme: 'light' });
  const theme = () => page.getAttribute('html', 'data-theme');
  const size = () => page.evaluate(() => Number.parseFloat(getComputedStyle(document.body).fontSize));
  await write(page, 'um');
  assert.equal(await theme(), 'light');
  await page.emulateMedia({ colorScheme: 'dark' });
  await page.waitForSelector('html[data-theme=dark]');
  await chooseSetting(page, 'theme', 'light');
  assert.equal(await theme(), 'light');
  await page.keyboard.press('Control+Equal');
  await page.keyboard.press('Control+Shift+Equal');
  assert.equal(await size(), 14 * 1.25);
  await restart(page);
  assert.equal(await theme(), 'light');
  await page.keyboard.press('Control+,');
  assert.equal(await page.inputValue('.theme'), 'light');
  await page.keyboard.press('Escape');
  assert.equal(await size(), 14 * 1.25);
  await page.keyboard.press('Control+Minus');
  assert.ok(Math.abs((await size()) - 14 * 1.1) < 0.01);
  await page.keyboard.press('Control+0');
  assert.equal(await size(), 14);
  await context.close();
});

test('a click lands where it points after zooming in', async () => {
  const { page, context } = await open(browser);
  await page.keyboard.press('Alt+n');
  for (let i = 0; i < 12; i++) await page.keyboard.type(`linha ${i}\n`);
  for (let i = 0; i < 4; i++) await page.keyboard.press('Control+Equal');
  const line = page.locator('.cm-line').nth(8);
  const box = await line.boundingBox();
  assert.ok(box);
  await page.mouse.click(box.x + box.width - 5, box.y + box.height / 2);
  await page.keyboard.type('!');
  assert.match((await noteTexts(page))[0] ?? '', /linha 8!\n/);
  await context.close();
});

test('everything stays reachable with large text in a small window', async () => {
  const { page, context } = await open(browser, { width: 880, height: 600 });
  await write(page, 'uma nota com um título um tanto comprido', 'dois');
  for (let i = 0; i < 6; i++) await page.keyboard.press('Control+Equal');
  const outside = await page.evaluate(() =>
    [...document.querySelectorAll('button, select, input, .cm-content')]
      .filter((element) => element.checkVisibility())
      .filter((element) => {
        const { left, right, top, bottom } = element.getBoundingClientRect();
        const clipped = element.closest('.tabs, .toasts, .cm-editor, [aria-hidden]');
        return !clipped && (left < 0 || right > innerWidth + 1 || top < 0 || bottom > innerHeight + 1);
      })
      .map((element) => element.outerHTML.slice(0, 100)),
  );
  assert.deepEqual(outside, []);
  await context.close();
});

test('animations stop if the system asks for reduced motion', async () => {
  const { page, context } = await open(browser);
  const moving = () =>
    page.evaluate(
      () =>
        [...document.querySelectorAll('*')].filter((element) => {
          const { animationName, transitionDuration } = getComputedStyle(element);
          return animationName !== 'none' || !/^0s(, 0s)*$/.test(transitionDuration);
        }).length,
    );
  await page.keyboard.press('Control+k');
  assert.ok((await moving()) > 0);
  await page.emulateMedia({ reducedMotion: 'reduce' });
  assert.equal(await moving(), 0);
  await context.close();
});

test('an emptied note comes back with its text, one that never had text is removed', async () => {
  const { page, context } = await open(browser, { reloads: true });
  await write(page, 'Rascunho', '');
  await page.keyboard.press('Alt+w');
  assert.deepEqual(await tabs(page), ['Rascunho']);
  assert.equal((await noteTexts(page)).length, 1, 'the untouched note is gone');
  await page.keyboard.press('Control+a');
  await page.keyboard.press('Delete');
  await page.keyboard.press('Alt+w');
  assert.deepEqual(await tabs(page), []);
  assert.deepEqual(await noteTexts(page), ['']);
  assert.deepEqual(await rows(page), ['Untitled']);
  await page.keyboard.press('Alt+Shift+t');
  assert.deepEqual(await tabs(page), ['Untitled']);
  await page.keyboard.press('Control+z');
  assert.deepEqual(await noteTexts(page), ['Rascunho']);
  // After a restart there is no undo history, but it still counts as a note.
  await page.keyboard.press('Control+a');
  await page.keyboard.press('Delete');
  await restart(page);
  await page.keyboard.press('Alt+w');
  await page.keyboard.press('Alt+Shift+t');
  assert.deepEqual(await tabs(page), ['Untitled']);
  assert.deepEqual(await noteTexts(page), ['']);
  await context.close();
});
