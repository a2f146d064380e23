import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const NOW = Date.now();

/** Opens notes with these texts; the first is shown, and as many as `openTabs` have tabs. */
function openNotes(texts: ReadonlyArray<string>, openTabs = texts.length) {
  const notes = texts.map((text, n) => ({ id: `n${n}`, text, created: NOW - 9000, updated: NOW - 1000 * n }));
  const tabs = { open: notes.slice(0, openTabs).map(({ id }) => id), active: 'n0' };
  return open(browser, { before: fakeHost({ version: 1, notes, tabs }) });
}

const isActive = (page: Page, title: string) =>
  page.waitForFunction(
    (wanted) => document.querySelector('[role=tab][aria-selected=true]')?.textContent === wanted,
    title,
  );

/** Puts the caret at the end of the text. */
async function toEnd(page: Page): Promise<void> {
  await page.focus('.cm-content');
  await page.keyboard.press('Control+End');
}

test('Ctrl and a click follow a link to a note, without moving the caret', async () => {
  const { page, context, trouble } = await openNotes(['Plano\n[[receita|o bolo]]', 'Receita'], 1);
  await page.click('.md-note-link', { modifiers: ['Control'] });
  await isActive(page, 'Receita');
  assert.deepEqual(await noteTexts(page), ['Plano\n[[receita|o bolo]]', 'Receita']);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a key follows the link at the caret, and a missing note is made', async () => {
  const { page, context } = await openNotes(['Plano\n[[Novo tema]]']);
  await toEnd(page);
  await page.keyboard.press('Control+Alt+Enter');
  await isActive(page, 'Novo tema');
  await page.keyboard.type('texto');
  assert.deepEqual(await noteTexts(page), ['Plano\n[[Novo tema]]', '# Novo tema\n\ntexto']);
  await context.close();
});

test('titles are completed after two brackets, the latest first', async () => {
  const { page, context } = await openNotes(['Plano', 'Compras da casa', 'Casa nova'], 1);
  await page.waitForSelector('.cm-line >> text=Plano');
  await toEnd(page);
  const offered = (titles: string) =>
    page.waitForFunction(
      (wanted) =>
        [...document.querySelectorAll('.cm-tooltip-autocomplete li')].map((row) => row.textContent).join() === wanted,
      titles,
    );
  await page.keyboard.type(' [[');
  // Not the note itself, although it is the latest.
  await offered('Compras da casa,Casa nova');
  await page.keyboard.type('casa');
  await offered('Casa nova,Compras da casa');
  await page.keyboard.press('ArrowDown');
  // The library takes no answer in the first moments, so that nobody accepts what was not seen.
  await page.waitForFunction(
    () => document.querySelector('.cm-tooltip-autocomplete [aria-selected]')?.textContent === 'Compras da casa',
  );
  await page.keyboard.press('Enter');
  await page.keyboard.type('!');
  assert.equal((await noteTexts(page))[0], 'Plano [[Compras da casa]]!');
  await context.close();
});

test('tags are completed and listed, and choosing one fills the search field', async () => {
  const { page, context } = await openNotes(['Plano', 'a #casa/cozinha', 'b #casa', 'c `#nada`'], 1);
  await page.waitForSelector('.tag-row');
  assert.deepEqual(await page.$$eval('.tag-row', (rows) => rows.map((row) => row.textContent)), ['casa 2']);
  await toEnd(page);
  await page.keyboard.type(' #co');
  await page.waitForSelector('.cm-tooltip-autocomplete >> text=casa/cozinha');
  await page.keyboard.press('Escape');
  await page.focus('.tags-tree');
  await page.keyboard.press('ArrowRight');
  await page.keyboard.press('ArrowDown');
  await page.waitForFunction(() => {
    const id = document.querySelector('.tags-tree')?.getAttribute('aria-activedescendant') ?? '';
    return document.getElementById(id)?.textContent === 'cozinha 1';
  });
  await page.keyboard.press('Enter');
  assert.equal(await page.inputValue('#searchInput'), 'tag:casa/cozinha');
  await page.click('.tags-head');
  assert.equal(await page.isVisible('.tags-tree'), false);
  await context.close();
});

test('a tag is renamed everywhere, and Undo takes back all of it', async () => {
  const texts = ['Plano #casa', 'a #casa/sala', 'b #casal'];
  const { page, context } = await openNotes(texts, 2);
  await page.waitForSelector('.tag-row');
  await toEnd(page);
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type('rename a tag');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.rename');
  await page.keyboard.type('bad name');
  await page.keyboard.press('Enter');
  assert.match(await page.innerText('#renameProblem'), /letters/);
  await page.fill('.rename input', 'lar');
  await page.keyboard.press('Enter');
  assert.deepEqual(await noteTexts(page), ['Plano #lar', 'a #lar/sala', 'b #casal']);
  await page.click('.toast button');
  assert.deepEqual(await noteTexts(page), texts);
  await context.close();
});

test('links follow a title, also in open notes, which keep their undo histories', async () => {
  const { page, context } = await openNotes(['Plano', 'ver [[Plano]]', 'e [[plano|isto]]'], 2);
  await page.waitForFunction(() => document.querySelector('.backlinks-head')?.textContent === '2 notes link here');
  await page.evaluate('quendoSwitchOpenTab(1)');
  await toEnd(page);
  await page.keyboard.type(' mais');
  await page.evaluate('quendoSwitchOpenTab(-1)');
  await toEnd(page);
  await page.keyboard.type(' B');
  await page.evaluate('quendoSwitchOpenTab(1)');
  await page.waitForSelector('.toast >> text=Links updated in 2 notes');
  assert.deepEqual(await noteTexts(page), ['Plano B', 'ver [[Plano B]] mais', 'e [[Plano B|isto]]']);
  await page.focus('.cm-content');
  await page.keyboard.press('Control+z');
  await page.keyboard.press('Control+z');
  assert.equal((await noteTexts(page))[1], 'ver [[Plano]]');
  await context.close();
});

test('the panel below the text lists links and mentions, and opens them at their places', async () => {
  const { page, context } = await openNotes(['Plano', 'um\ndois [[Plano]]', 'o plano sem link'], 1);
  await page.waitForSelector('.backlinks-head >> text=1 note links here');
  await page.focus('.cm-content');
  await page.keyboard.press('Control+Shift+b');
  assert.equal(await page.innerText('.backlink'), 'um dois Plano');
  await page.click('.backlinks .link-button');
  await page.waitForSelector('text=1 mention without a link');
  assert.equal(await page.evaluate(() => document.activeElement?.textContent), 'o plano sem link o plano sem link');
  await page.click('.backlink >> nth=0');
  await isActive(page, 'um');
  await page.keyboard.type('Outro');
  assert.equal((await noteTexts(page))[1], 'um\ndois [[Outro]]');
  await context.close();
});

test('the outline starts at the current heading, filters and jumps', async () => {
  const { page, context } = await openNotes(['# Um\n\n## Dois\ntexto\n\n# Três\nfim']);
  await page.focus('.cm-content');
  for (let i = 0; i < 3; i++) await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Control+Alt+o');
  assert.equal(await page.innerText('.palette-row[aria-selected=true]'), 'Dois');
  await page.keyboard.type('tre');
  assert.equal(await page.innerText('.palette-row[aria-selected=true]'), 'Três');
  await page.keyboard.press('Enter');
  await page.keyboard.type('X');
  assert.equal((await noteTexts(page))[0], '# Um\n\n## Dois\ntexto\n\nX# Três\nfim');
  await context.close();
});

test('links to notes and tags work in the preview, and a link says where it really leads', async () => {
  const text = 'Plano\n\n[[Receita]] #casa [https://a.example](https://b.example/x) [aqui](https://good@evil.example)';
  const { page, context, trouble } = await openNotes([text, 'Receita'], 1);
  await page.focus('.cm-content');
  await page.keyboard.press('Control+Alt+r');
  await page.waitForSelector('.preview a');
  assert.deepEqual(await page.$$eval('.preview a[href]', (links) => links.map((link) => link.textContent)), [
    'https://a.example (leads to b.example)',
    'aqui (with a user name; leads to evil.example)',
  ]);
  await page.click('.preview a.is-tag');
  assert.equal(await page.inputValue('#searchInput'), 'tag:casa');
  await page.focus('.preview a.is-note');
  await page.keyboard.press('Enter');
  await isActive(page, 'Receita');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('Ctrl and a click open addresses, and only those that the preview would', async () => {
  const { page, context } = await openNotes(['[mau](javascript:alert(1))\nhttps://example.invalid/um']);
  const opened: string[] = [];
  context.on('page', (other) => opened.push(other.url()));
  await page.click('.cm-line >> text=mau', { modifiers: ['Control'], position: { x: 12, y: 8 } });
  await page.waitForSelector('.toast >> text=This address cannot be opened');
  const other = context.waitForEvent('page');
  await page.click('.cm-line >> text=example.invalid', { modifiers: ['Control'], position: { x: 60, y: 8 } });
  await other;
  assert.equal(opened.length, 1);
  await context.close();
});
