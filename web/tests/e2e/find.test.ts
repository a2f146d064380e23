import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { chooseSetting, launch, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

/** Opens a page with one note and the caret at its beginning. */
async function withNote(text: string, options: Parameters<typeof open>[1] = {}) {
  const opened = await open(browser, options);
  await opened.page.keyboard.press('Alt+n');
  await opened.page.keyboard.insertText(text);
  await opened.page.keyboard.press('Control+Home');
  return opened;
}

const count = (page: Page, shown: string) =>
  page.waitForFunction((text) => document.querySelector('.find-count')?.textContent === text, shown);

test('matches are found, counted and stepped through', async () => {
  const { page, context, trouble } = await withNote('Casa, casa e casarão\nação');
  await page.keyboard.press('Control+f');
  await page.keyboard.type('casa');
  await count(page, '3 in the text');
  await page.keyboard.press('Enter');
  await count(page, '1 of 3');
  await page.keyboard.press('Shift+Enter');
  await count(page, '3 of 3');
  await page.click('[aria-label="Whole word"]');
  await count(page, '2 in the text');
  await page.click('[aria-label="Match case"]');
  await count(page, '1 in the text');
  assert.equal(await page.getAttribute('[aria-label="Match case"]', 'aria-pressed'), 'true');
  await page.fill('.find-what', 'a');
  await page.click('[aria-label="Match case"]');
  await page.click('[aria-label="Whole word"]');
  await page.fill('.find-what', 'acao');
  await count(page, 'Nothing found');
  await page.fill('.find-what', 'aca');
  await count(page, 'Nothing found');
  await page.focus('.find-what');
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('.find').count(), 0);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('regular expressions replace with groups, and invalid ones are reported', async () => {
  const { page, context } = await withNote('2024-01-02\n2025-03-04');
  await page.keyboard.press('Control+h');
  await page.click('[aria-label="Regexp"]');
  await page.fill('.find-what', '(\\d+');
  await count(page, 'Incomplete expression');
  await page.fill('.find-what', '(\\d+)-(\\d+)-(\\d+)');
  await count(page, '2 in the text');
  await page.fill('.find-with', '$3/$2/$1');
  await page.click('text=Replace all');
  assert.deepEqual(await noteTexts(page), ['02/01/2024\n04/03/2025']);
  await page.keyboard.press('Escape');
  await page.keyboard.press('Control+z');
  assert.deepEqual(await noteTexts(page), ['2024-01-02\n2025-03-04'], 'in one step');
  await context.close();
});

test("the find panel uses the page's language", async () => {
  const { page, context } = await withNote('casa', { locale: 'es-AR' });
  await page.keyboard.press('Control+h');
  await page.keyboard.type('casa');
  await count(page, '1 en el texto');
  await chooseSetting(page, 'language', 'pt');
  assert.equal(await page.getAttribute('.find-what', 'placeholder'), 'Procurar');
  assert.equal(await page.getAttribute('.find-regexp', 'aria-label'), 'Expressão regular');
  await context.close();
});

test('go to line', async () => {
  const { page, context } = await withNote('um\ndois\ntres');
  await page.keyboard.press('Control+Alt+g');
  await page.keyboard.type('2');
  await page.keyboard.press('Enter');
  await page.keyboard.type('>');
  assert.deepEqual(await noteTexts(page), ['um\n>dois\ntres']);
  await context.close();
});

test('several carets type at once', async () => {
  const { page, context, trouble } = await withNote('um dois um tres um');
  for (let i = 0; i < 3; i++) await page.keyboard.press('Control+d');
  await page.keyboard.type('x');
  assert.deepEqual(await noteTexts(page), ['x dois x tres x']);
  await page.keyboard.press('Escape');
  await page.keyboard.press('Control+a');
  await page.keyboard.insertText('aa\nbb\ncc');
  await page.keyboard.press('Control+Home');
  await page.keyboard.press('Control+Alt+ArrowDown');
  await page.keyboard.press('Control+Alt+ArrowDown');
  await page.waitForFunction(() => document.querySelectorAll('.cm-otherCursor').length === 2);
  await page.keyboard.type('- ');
  assert.deepEqual(await noteTexts(page), ['- aa\n- bb\n- cc']);
  await page.keyboard.press('Escape');
  const lines = page.locator('.cm-line');
  await lines.nth(0).click({ position: { x: 0, y: 8 } });
  await lines.nth(2).click({ position: { x: 0, y: 8 }, modifiers: ['Alt'] });
  await page.keyboard.type('|');
  assert.deepEqual(await noteTexts(page), ['|- aa\n- bb\n|- cc']);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('dragging selects a column', async () => {
  const { page, context } = await withNote('aa1\nbb2\ncc3');
  const box = await page.locator('.cm-line').nth(0).boundingBox();
  const last = await page.locator('.cm-line').nth(2).boundingBox();
  assert.ok(box && last);
  await page.keyboard.down('Alt');
  await page.keyboard.down('Shift');
  await page.mouse.move(box.x + 1, box.y + 10);
  await page.mouse.down();
  await page.mouse.move(last.x + 12, last.y + 14, { steps: 4 });
  await page.mouse.up();
  await page.keyboard.up('Shift');
  await page.keyboard.up('Alt');
  await page.keyboard.type('x');
  const [text = ''] = await noteTexts(page);
  assert.match(text, /^xa?1\nxb?2\nxc?3$/);
  await context.close();
});

test('lines are moved, duplicated and joined', async () => {
  const { page, context } = await withNote('um\ndois\ntres');
  await page.keyboard.press('Alt+ArrowDown');
  assert.deepEqual(await noteTexts(page), ['dois\num\ntres']);
  await page.keyboard.press('Alt+Shift+ArrowDown');
  assert.deepEqual(await noteTexts(page), ['dois\num\num\ntres']);
  await page.keyboard.press('Control+j');
  assert.deepEqual(await noteTexts(page), ['dois\num\num tres']);
  await context.close();
});

test('a section folds by key and unfolds by a click', async () => {
  const { page, context } = await withNote('# Um\n\ntexto\n\n# Dois\n\nfim');
  await page.keyboard.press('Control+Alt+BracketLeft');
  await page.waitForSelector('.fold-rest');
  assert.doesNotMatch(await page.innerText('.cm-content'), /texto/);
  assert.match(await page.innerText('.cm-content'), /fim/);
  await page.click('[aria-label="Show what is folded"]');
  assert.match(await page.innerText('.cm-content'), /texto/);
  await context.close();
});

test('a mark beside its line folds a section, and follows what is typed', async () => {
  const { page, context } = await withNote('# Um\n\ntexto\n\n# Dois\n\nfim');
  const marks = page.locator('.cm-gutterElement:has(.fold-mark):visible');
  const besides = async (index: number, text: string) => {
    const mark = await marks.nth(index).boundingBox();
    const line = await page.locator('.cm-line', { hasText: text }).boundingBox();
    assert.ok(mark && line);
    const middle = mark.y + mark.height / 2;
    assert.ok(line.y < middle && middle < line.y + line.height, text);
    assert.ok(mark.x + mark.width <= line.x && line.x < mark.x + mark.width + 20, text);
  };
  await besides(0, 'Um');
  await besides(1, 'Dois');
  await page.keyboard.type('inicio\n');
  await page.locator('.cm-line', { hasText: 'Dois' }).click();
  await page.keyboard.press('End');
  await page.keyboard.type('\n\n## Novo\n\noutro');
  await page.waitForFunction(() => document.querySelectorAll('.cm-gutterElement .fold-mark').length >= 4);
  await besides(2, 'Novo');
  await page.hover('.cm-gutters');
  await marks.nth(2).click();
  await page.waitForSelector('.fold-rest');
  assert.doesNotMatch(await page.innerText('.cm-content'), /outro/);
  assert.match(await page.innerText('.cm-content'), /texto/);
  await marks.nth(2).click();
  assert.match(await page.innerText('.cm-content'), /outro/);
  await context.close();
});

test('words are counted in the text and in the selection', async () => {
  const { page, context } = await withNote('um dois tres\nquatro');
  const shown = (text: string) =>
    page.waitForFunction((wanted) => document.querySelector('#textCount')?.textContent === wanted, text);
  await shown('4 words · 19 characters');
  await page.keyboard.press('Shift+End');
  await shown('selected: 3 words · 12 characters');
  await context.close();
});
