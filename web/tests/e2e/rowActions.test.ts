import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, messages, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function withNotes(texts: ReadonlyArray<string>) {
  const notes = texts.map((text, n) => ({ id: `n${n}`, text, created: 1, updated: Date.now() - n }));
  const state = { version: 2, notes, tabs: { open: ['n0'], active: 'n0' } };
  const opened = await open(browser, { before: fakeHost(state) });
  await opened.page.waitForSelector('#sidebar .row');
  return opened;
}

/** Selects the first rows and opens their menu, all by keys. */
async function menuOfFirst(page: Page, count: number): Promise<void> {
  await page.focus('#sidebar .list');
  await page.keyboard.press('Home');
  for (let n = 1; n < count; n++) await page.keyboard.press('Shift+ArrowDown');
  await page.keyboard.press('Shift+F10');
  await page.waitForSelector('main > .menu:not([hidden])');
}

/** The last file that was handed over to be saved. */
const lastFile = async (page: Page) => (await messages(page, 'quendoSaveAs')).at(-1)?.body as Record<string, string>;

test('selected notes get a tag, known or new, and one Undo takes it from all of them', async () => {
  const texts = ['Um\n\ntexto #casa', 'Dois\n\n#rua', '# Três\n```\naberto', 'Quatro #casa/sala'];
  const { page, context, trouble } = await withNotes(texts);
  await page.waitForSelector('.tag-row');
  await menuOfFirst(page, 4);
  await page.click('.menu:not([hidden]) [data-command=tag]');
  await page.keyboard.type('cas');
  await page.waitForSelector('.palette-row >> text=casa');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.toast >> text=#casa added to 1 note');
  assert.deepEqual(await noteTexts(page), [texts[0], 'Dois\n\n#rua #casa', texts[2], texts[3]]);
  await menuOfFirst(page, 2);
  await page.click('.menu:not([hidden]) [data-command=tag]');
  await page.keyboard.type('#novo/tema');
  await page.waitForSelector('.palette-row >> text=Create #novo/tema');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.toast >> text=#novo/tema added to 2 notes');
  assert.deepEqual((await noteTexts(page)).slice(0, 2), [`${texts[0]}\n\n#novo/tema`, 'Dois\n\n#rua #casa #novo/tema']);
  await page.click('.toast >> nth=-1 >> button');
  assert.deepEqual((await noteTexts(page)).slice(0, 2), [texts[0], 'Dois\n\n#rua #casa']);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('selected notes are exported as one Markdown file, or as JSON that can be brought in again', async () => {
  const { page, context } = await withNotes(['# Um\n\na', '# Dois\n\nb', '# Três\n\nc']);
  await menuOfFirst(page, 2);
  await page.click('.menu:not([hidden]) [data-command=exportMarkdown]');
  assert.equal((await lastFile(page)).content, '# Um\n\na\n\n---\n\n# Dois\n\nb\n');
  await menuOfFirst(page, 2);
  await page.click('.menu:not([hidden]) [data-command=exportJson]');
  const { filename, content } = await lastFile(page);
  assert.match(filename ?? '', /\.json$/);
  const library = JSON.parse(content ?? '') as { notes: Array<{ id: string }>; bin: unknown[] };
  assert.deepEqual([library.notes.map(({ id }) => id), library.bin], [['n0', 'n1'], []]);
  await menuOfFirst(page, 1);
  await page.click('.menu:not([hidden]) [data-command=exportMarkdown]');
  const [sent] = await messages(page, 'quendoExport');
  assert.deepEqual([sent?.body.filename, sent?.body.content], ['Um.md', '# Um\n\na']);
  await context.close();
});

test('one Undo takes back what pinning several notes has changed', async () => {
  const { page, context } = await withNotes(['Um', 'Dois', 'Três']);
  const pinned = () => page.$$eval('#sidebar .row:has(.pin) .row-title', (rows) => rows.map((row) => row.textContent));
  await page.click('#sidebar .row >> text=Dois', { button: 'right' });
  await page.click('.menu:not([hidden]) [data-command=pin]');
  await menuOfFirst(page, 3);
  await page.click('.menu:not([hidden]) [data-command=pin]');
  await page.waitForSelector('.toast >> text=3 notes pinned');
  assert.equal((await pinned()).length, 3);
  await page.click('.toast >> nth=-1 >> button');
  await page.waitForFunction(() => document.querySelectorAll('#sidebar .row .pin').length === 1);
  assert.deepEqual(await pinned(), ['Dois']);
  await context.close();
});

test('the copied link leads to the note, whatever its title; without one there is none', async () => {
  const { page, context } = await withNotes(['# A [b] | c', '\n']);
  await page.click('#sidebar .row >> nth=0', { button: 'right' });
  await page.click('.menu:not([hidden]) [data-command=copyLink]');
  const [copied] = await messages(page, 'quendoClipboard');
  assert.equal(copied?.body.text, '[[A b c]]');
  await page.click('#sidebar .row >> nth=1', { button: 'right' });
  await page.focus('.menu:not([hidden]) [data-command=copyLink][aria-disabled=true]');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.toast >> text=A note without a title cannot be linked to');
  assert.equal((await messages(page, 'quendoClipboard')).length, 1);
  await context.close();
});
