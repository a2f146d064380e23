import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, lastState, launch, messages, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const DAY = 86_400_000;
const NOW = Date.now();

/** Opens a page with these notes, the first one edited last and open. */
async function withNotes(texts: ReadonlyArray<string>, settings: object = {}) {
  const notes = texts.map((text, i) => ({
    id: `n${i}`,
    text,
    created: NOW - i * 40 * DAY,
    updated: NOW - i * 40 * DAY,
  }));
  const state = { version: 1, notes, tabs: { open: ['n0'], active: 'n0' }, settings };
  const opened = await open(browser, { before: fakeHost(state) });
  await opened.page.waitForSelector('#sidebar .row');
  return opened;
}

const titles = (page: Page) => page.locator('#sidebar .row-title').allInnerTexts();
const shown = (page: Page, wanted: ReadonlyArray<string>) =>
  page.waitForFunction(
    (text) => [...document.querySelectorAll('#sidebar .row-title')].map((row) => row.textContent).join() === text,
    wanted.join(),
  );
const outcome = (page: Page, wanted: string) =>
  page.waitForFunction((text) => document.querySelector('.outcome')?.textContent === text, wanted);
const selected = (page: Page) => page.locator('#sidebar .row[aria-selected=true] .row-title').allInnerTexts();

test('the whole title comes first among hundreds of notes with the word', async () => {
  const many = Array.from({ length: 440 }, (_, i) => `Trip ${i}\n\nbring the passport`);
  const { page, context } = await withNotes([...many, 'Passport\n\nnumber']);
  await page.fill('#searchInput', 'passport');
  await outcome(page, '441 notes found');
  assert.equal((await titles(page))[0], 'Passport');
  await context.close();
});

test('words that the row does not show of a long title are shown below it', async () => {
  const long = 'Uma frase que vai longe até chegar ao passaporte, e por isso é cortada';
  const { page, context } = await withNotes(['Outra', `${long}\n\noutro texto`, 'Passaporte\n\no número']);
  await page.fill('#searchInput', 'passaporte');
  await shown(page, ['Passaporte', long]);
  const below = await page.locator('#sidebar .row-excerpt').allInnerTexts();
  assert.equal(below[0], 'o número');
  assert.match(below[1] ?? '', /^….{0,12}passaporte/);
  await context.close();
});

test('words, tags, exclusions and dates narrow the list, and the help for them shows while the field is empty', async () => {
  const { page, context, trouble } = await withNotes([
    'Um\nmar azul #praia',
    'Dois\nazul do mar',
    'Três\nmar #praia/sul',
  ]);
  await page.focus('#searchInput');
  assert.ok(await page.isVisible('.search-hint'));
  await page.fill('#searchInput', 'azul mar');
  await shown(page, ['Um', 'Dois']);
  assert.ok(await page.isHidden('.search-hint'));
  for (const [query, wanted] of [
    ['tag:praia', ['Um', 'Três']],
    ['mar -azul', ['Três']],
    ['etiqueta:praia "mar azul"', ['Um']],
    ['mar edited:<50d -#praia', ['Dois']],
    ['título:do', ['Dois']],
  ] as const) {
    await page.fill('#searchInput', query);
    await shown(page, wanted);
  }
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a match opens at its best line with all hits marked; F3 goes on, Escape takes the marks away', async () => {
  const far = 'linha\n'.repeat(200);
  const { page, context } = await withNotes(['Outra', `Nota\n\n${far}um pão\n${far}pão e **vinho**\n${far}vinho`]);
  await page.fill('#searchInput', 'vinho pao');
  await shown(page, ['Nota']);
  assert.doesNotMatch(await page.innerText('.row-excerpt'), /\*/);
  await page.press('#searchInput', 'Enter');
  const chosen = () => page.evaluate(() => String(getSelection()));
  const around = () =>
    page.evaluate(() => getSelection()?.anchorNode?.parentElement?.closest('.cm-line')?.textContent ?? '');
  await page.waitForFunction(() => String(getSelection()) === 'pão');
  assert.equal(await around(), 'pão e **vinho**');
  assert.deepEqual(await page.locator('.hit').allInnerTexts(), ['pão', 'vinho']);
  await page.keyboard.press('F3');
  await page.waitForFunction(() => String(getSelection()) === 'vinho');
  await page.keyboard.press('Control+g');
  await page.waitForFunction(
    () => getSelection()?.anchorNode?.parentElement?.closest('.cm-line')?.textContent === 'vinho',
  );
  await page.keyboard.press('F3');
  await page.waitForFunction(
    () => getSelection()?.anchorNode?.parentElement?.closest('.cm-line')?.textContent === 'um pão',
  );
  await page.keyboard.press('Shift+F3');
  await page.waitForFunction(() => String(getSelection()) === 'vinho');
  assert.equal(await chosen(), 'vinho');
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('.hit').count(), 0);
  await context.close();
});

test('the switcher opens a note by its title, or creates it', async () => {
  const { page, context, trouble } = await withNotes(['Aberta', 'Compras', 'Contas']);
  await page.keyboard.press('Control+Shift+o');
  await page.waitForSelector('.palette-row');
  assert.deepEqual(await page.locator('.palette-row > span:first-child').allInnerTexts(), ['Compras', 'Contas']);
  await page.keyboard.type('cts');
  await page.keyboard.press('Enter');
  assert.equal(await page.innerText('[role=tab][aria-selected=true]'), 'Contas');
  await page.keyboard.press('Control+Shift+o');
  await page.keyboard.type('Zebra');
  await page.waitForSelector('text=Create “Zebra”');
  await page.keyboard.press('Enter');
  await page.keyboard.type('texto');
  assert.deepEqual((await noteTexts(page)).at(-1), 'Zebra\ntexto');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the list is ordered by edit or by title, below headings that are said with their first row', async () => {
  const { page, context } = await withNotes(['banana', 'Ameixa', 'água']);
  await outcome(page, '3 notes');
  assert.equal(await page.locator('.list-heading').first().innerText(), 'Today');
  assert.equal(await page.locator('#sidebar .row .unseen').first().textContent(), 'Today: ');
  await page.selectOption('.sort', 'title');
  await shown(page, ['água', 'Ameixa', 'banana']);
  assert.deepEqual(await page.locator('.list-heading').allInnerTexts(), ['A', 'B']);
  await page.waitForSelector('#saveState[data-state=saved]');
  assert.equal(((await lastState(page)).settings as { sort: string }).sort, 'title');
  await context.close();
});

test('the note that becomes active is shown in the list', async () => {
  const texts = Array.from({ length: 300 }, (_, i) => `Nota ${i}`);
  const { page, context } = await withNotes(texts);
  await page.keyboard.press('Control+Shift+o');
  await page.keyboard.type('nota 250');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#note-n250[aria-selected=true]');
  const [row, list] = [
    await page.locator('#note-n250').boundingBox(),
    await page.locator('#sidebar .list').boundingBox(),
  ];
  assert.ok(row && list && row.y >= list.y && row.y + row.height <= list.y + list.height + 1);
  await context.close();
});

test('several notes are selected by mouse and keyboard, and deleted in one step that is undone in one', async () => {
  const { page, context } = await withNotes(['um', 'dois', 'três', 'quatro', 'cinco']);
  const row = (title: string) => page.locator('#sidebar .row', { hasText: title });
  await row('três').click({ modifiers: ['Control'] });
  await outcome(page, '2 notes selected');
  await page.waitForFunction(() => document.querySelectorAll('#sidebar [aria-selected=true]').length === 2);
  assert.deepEqual(await selected(page), ['um', 'três']);
  await row('cinco').click({ modifiers: ['Shift'] });
  await outcome(page, '3 notes selected');
  await page.keyboard.press('Escape');
  await outcome(page, '5 notes');
  await page.keyboard.press('Home');
  await page.keyboard.press('Shift+ArrowDown');
  await page.keyboard.press('Shift+ArrowDown');
  await outcome(page, '3 notes selected');
  await page.keyboard.press('Shift+ArrowUp');
  await outcome(page, '2 notes selected');
  await page.keyboard.press('Delete');
  await shown(page, ['três', 'quatro', 'cinco']);
  await page.click('.toast button');
  await shown(page, ['um', 'dois', 'três', 'quatro', 'cinco']);
  assert.equal(await page.innerText('[role=tab][aria-selected=true]'), 'um');
  await page.focus('#sidebar .list');
  // What the host's menu does for Ctrl+A.
  await page.evaluate(() => document.execCommand('selectAll'));
  await outcome(page, '5 notes selected');
  await page.keyboard.press('Control+Shift+o');
  await page.keyboard.type('quatro');
  await page.keyboard.press('Enter');
  await outcome(page, '5 notes');
  await context.close();
});

test('the menu of a row pins, copies a link and deletes, by mouse and keyboard', async () => {
  const { page, context, trouble } = await withNotes(['um', 'dois', 'três']);
  await page.locator('#sidebar .row', { hasText: 'três' }).click({ button: 'right' });
  await page.click('.menu [data-command=pin]');
  await shown(page, ['três', 'um', 'dois']);
  await page.focus('#sidebar .list');
  await page.keyboard.press('End');
  await page.keyboard.press('Shift+F10');
  await page.waitForSelector('main > .menu');
  for (let n = 0; n < 3; n++) await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Enter');
  assert.equal((await messages(page, 'quendoClipboard')).at(-1)?.body.text, '[[dois]]');
  await page.keyboard.press('ContextMenu');
  await page.waitForSelector('main > .menu');
  await page.keyboard.press('Escape');
  assert.ok(await page.evaluate(() => document.activeElement?.matches('#sidebar .list')));
  assert.ok(await page.isHidden('main > .menu'));
  assert.deepEqual(trouble, []);
  await context.close();
});
