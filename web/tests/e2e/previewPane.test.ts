import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser } from 'playwright-core';
import { fakeHost, launch, noteTexts, open, saved } from './browser';
import { corpus } from './hostile';
import { foreign, openWatched, paste } from './watched';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

test('an imported note cannot run or fetch anything', async () => {
  const { page, context, seen, trouble } = await openWatched(browser);
  const buffer = Buffer.from(corpus.join('\n\n'));
  const name = '<img src=x onerror=ran()>.md';
  await page.setInputFiles('#importFileInput', [
    { name, mimeType: 'text/plain', buffer },
    { name: 'a.html', mimeType: 'text/html', buffer },
  ]);
  await page.waitForSelector('[role=tab] >> text=a.html');
  assert.deepEqual(await foreign(page), []);
  await page.keyboard.press('Control+Alt+p');
  await page.waitForSelector('.preview pre');
  assert.deepEqual(await foreign(page), []);
  await page.locator('[role=tab]').first().click();
  await page.waitForSelector('.preview h1');
  await page.waitForFunction((count) => document.querySelectorAll('.preview-page > *').length > count, 200);
  assert.deepEqual(await foreign(page), []);
  await page.keyboard.press('Control+End');
  await page.keyboard.type('fim');
  await page.waitForSelector('.preview >> text=fim');
  for (const press of ['Control+Alt+r', 'Control+Alt+r']) {
    await page.keyboard.press(press);
    await page.waitForTimeout(100);
    assert.deepEqual(await foreign(page), []);
  }
  await page.evaluate('quendoShowTabOverview()');
  assert.deepEqual(await foreign(page), []);
  assert.deepEqual([...seen, ...trouble], []);
  await context.close();
});

test('pasted text cannot run or fetch anything', async () => {
  const { page, context, seen, trouble } = await openWatched(browser);
  await page.keyboard.press('Alt+n');
  await page.keyboard.press('Control+Alt+p');
  for (const part of corpus) await paste(page, { 'text/plain': `${part}\n\n` });
  await page.keyboard.type('fim');
  await page.waitForSelector('.preview >> text=fim');
  assert.deepEqual(await foreign(page), []);
  assert.deepEqual([...seen, ...trouble], []);
  const [text = ''] = await noteTexts(page);
  assert.ok(text.includes(corpus[0] ?? '') && text.includes(corpus.at(-1) ?? ''), 'all of it is in the note');
  await context.close();
});

test('the preview follows the text and reuses unchanged blocks', async () => {
  const { page, context, trouble } = await open(browser);
  await page.keyboard.press('Alt+n');
  await page.keyboard.insertText('# Um\n\ndois **tres**\n\n- [x] feita\n\n![gato](https://a.invalid/b.png)\n\nfim');
  await page.keyboard.press('Control+Alt+p');
  assert.equal(await page.innerText('.preview h1'), 'Um');
  assert.equal(await page.innerText('.preview strong'), 'tres');
  assert.equal(await page.getAttribute('.preview .is-done', 'aria-label'), 'done');
  assert.equal(await page.innerText('.preview .is-image'), 'image gato');
  await page.evaluate(() => document.querySelector('.preview h1')?.setAttribute('data-kept', ''));
  await page.keyboard.type(' e `mais`');
  await page.waitForSelector('.preview code >> text=mais');
  assert.equal(await page.locator('.preview h1[data-kept]').count(), 1);
  assert.ok(await page.evaluate(() => document.activeElement?.classList.contains('cm-content')));
  await page.keyboard.press('Control+Alt+p');
  assert.equal(await page.locator('.preview').isVisible(), false);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the preview scrolls with the text, even in a long one', async () => {
  const sections = Array.from(
    { length: 4000 },
    (_, i) => `## Parte ${i}\n\nUm texto que diz alguma coisa, e mais outra.`,
  );
  const notes = [{ id: 'a', text: sections.join('\n\n'), updated: 1 }];
  const before = fakeHost({ version: 1, notes, tabs: { open: ['a'], active: 'a' } });
  const { page, context } = await open(browser, { before });
  await page.keyboard.press('Control+Alt+p');
  await page.waitForSelector('.preview >> text=Parte 3');
  await page.waitForSelector('.preview-notice');
  await page.keyboard.press('Control+End');
  const inSight = () =>
    page.waitForFunction(() => {
      const pane = document.querySelector('.preview')?.getBoundingClientRect();
      const [heading] = [...document.querySelectorAll('.preview h2')].filter((h2) => h2.textContent === 'Parte 3995');
      const box = heading?.getBoundingClientRect();
      return !!pane && !!box && box.top > pane.top - 1500 && box.top < pane.bottom + 1500;
    });
  await inSight();
  await context.close();
});

test('the preview in place of the text gets the keys, and Escape goes back', async () => {
  const { page, context } = await open(browser);
  await page.keyboard.press('Alt+n');
  await page.keyboard.type('um');
  await page.click('[aria-label="Note actions"]');
  await page.click('text=Preview instead of the text');
  await page.waitForSelector('.preview p >> text=um');
  await page.keyboard.type('x');
  assert.deepEqual(await noteTexts(page), ['um'], 'nothing is typed into what is hidden');
  await page.keyboard.press('Escape');
  await page.keyboard.type('!');
  assert.deepEqual(await noteTexts(page), ['um!']);
  await page.keyboard.press('Control+Alt+r');
  await page.keyboard.press('Alt+n');
  await page.keyboard.type('novo');
  assert.deepEqual((await noteTexts(page)).sort(), ['novo', 'um!'], 'a new note is written at once');
  await context.close();
});

test('a preview beside the text is open again after a restart, one in its place is not', async () => {
  const { page, context } = await open(browser, { reloads: true });
  await page.keyboard.press('Alt+n');
  await page.keyboard.type('# Título');
  for (const [key, stays] of [
    ['p', true],
    ['r', false],
    ['p', true],
    ['p', false],
  ] as const) {
    await page.keyboard.press(`Control+Alt+${key}`);
    await page.waitForSelector(saved);
    await page.reload();
    await page.waitForSelector('.cm-line >> text=Título');
    assert.equal(await page.isVisible('#preview'), stays, key);
    await page.keyboard.press('End');
    await page.keyboard.type('x');
    assert.match((await noteTexts(page))[0] ?? '', /^# Títulox+$/);
  }
  await context.close();
});
