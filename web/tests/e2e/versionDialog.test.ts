// Never retried: these tests are about losing text.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, lastState, launch, noteTexts, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const LONG = Array.from({ length: 60 }, (_, i) => `linha ${i}, com mais algumas palavras`);

async function showVersions(page: Page): Promise<void> {
  await page.click('#noteMenuButton');
  await page.click('[data-command=versions]');
  await page.waitForSelector('.versions');
}

/** A note with one version, in which two lines were others. */
function stored() {
  const before = LONG.slice();
  before[3] = 'linha de antes';
  before[40] = 'outra de antes';
  const versions = [{ taken: Date.now() - 3_600_000, text: before.join('\n') }];
  const notes = [{ id: 'a', text: LONG.join('\n'), versions, created: 1, updated: 2 }];
  return { notes, before };
}

function openStored() {
  const { notes, before } = stored();
  const state = { version: 2, notes, tabs: { open: ['a'], active: 'a' } };
  return { before, opening: open(browser, { before: fakeHost(state) }) };
}

test('a note that was emptied comes back from its versions, as one step', async () => {
  const { page, context, trouble } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote()');
  await page.keyboard.insertText(LONG.join('\n'));
  await page.keyboard.press('Control+a');
  await page.keyboard.press('Delete');
  await showVersions(page);
  await page.waitForSelector('.versions .row');
  assert.match(await page.innerText('.versions .row'), /Before a large deletion/);
  await page.click('text=Restore the whole version');
  assert.deepEqual(await noteTexts(page), [LONG.join('\n')]);
  await page.keyboard.press('Control+z');
  assert.deepEqual(await noteTexts(page), [''], 'one step back');
  await page.waitForSelector(saved);
  const { notes, version } = (await lastState(page)) as { notes: Array<{ versions: unknown[] }>; version: number };
  assert.equal(version, 2);
  assert.ok((notes[0]?.versions.length ?? 0) >= 1);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('passages are restored one by one, by keyboard, and each can be undone', async () => {
  const { before, opening } = openStored();
  const { page, context } = await opening;
  await page.focus('.cm-content');
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type('versions of');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.passage');
  assert.deepEqual(await page.locator('.passage h3').allInnerTexts(), ['Line 4', 'Line 41']);
  assert.match(await page.locator('.passage').first().innerText(), /In this version\s+linha de antes\s+Now\s+linha 3,/);
  await page.keyboard.press('Tab');
  await page.keyboard.press('Tab');
  await page.keyboard.press('Enter');
  await page.waitForFunction(() => document.querySelectorAll('.passage').length === 1);
  const onButton = await page.evaluate(() => document.activeElement?.closest('.passage') !== null);
  assert.ok(onButton, 'the focus goes on to the next passage');
  await page.keyboard.press('Enter');
  await page.waitForSelector('text=The current text is the same as this version.');
  await page.keyboard.press('Escape');
  assert.deepEqual(await noteTexts(page), [before.join('\n')]);
  await page.keyboard.press('Control+z');
  assert.notEqual((await noteTexts(page))[0], before.join('\n'));
  await page.keyboard.press('Control+z');
  assert.deepEqual(await noteTexts(page), [LONG.join('\n')]);
  await context.close();
});

test('what was there before a version was restored is a version, too', async () => {
  const { before, opening } = openStored();
  const { page, context } = await opening;
  await showVersions(page);
  await page.click('text=Restore the whole version');
  assert.deepEqual(await noteTexts(page), [before.join('\n')]);
  await showVersions(page);
  await page.waitForFunction(() => document.querySelectorAll('.versions .row').length === 2);
  await page.click('text=Restore the whole version');
  assert.deepEqual(await noteTexts(page), [LONG.join('\n')]);
  await context.close();
});

test('versions in a newer document can be read and not restored', async () => {
  const { notes } = stored();
  const state = { version: 99, notes, tabs: { open: ['a'], active: 'a' } };
  const { page, context } = await open(browser, { before: fakeHost(state) });
  await showVersions(page);
  await page.waitForSelector('.passage');
  assert.equal(await page.locator('.versions .dialog-foot button, .passage button').count(), 0);
  await context.close();
});
