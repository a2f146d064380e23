import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { lessons } from '../../src/commands/lessons';
import { catalogue } from '../../src/i18n/catalogue';
import { asMac, fakeHost, launch, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const text = (page: Page) =>
  page.evaluate(() => [...document.querySelectorAll('.practice .cm-line')].map((line) => line.textContent).join('\n'));
const outcome = (page: Page) => page.innerText('.practice-outcome');

/** The keys from the guide, pressed as instructed. */
const solutions: ReadonlyArray<readonly string[]> = [
  ['Control+d', 'Control+d', 'Control+d', 'x'],
  ['Control+Alt+ArrowDown', 'Control+Alt+ArrowDown', '-', 'Space'],
  ['Alt+ArrowUp', 'Alt+ArrowUp'],
  ['Alt+Shift+ArrowDown'],
  ['Control+j', 'Control+j'],
  ['Control+Enter', 'ArrowDown', 'Control+Enter'],
  ['Control+b'],
];

const places = [
  ['pt-BR', 0, false],
  ['en-US', 1, false],
  ['es-ES', 2, false],
  ['en-US', 1, true],
] as const;

for (const [locale, index, mac] of places) {
  test(`every lesson of the guide can be done with its keys in ${locale}${mac ? ' on a Mac' : ''}`, async () => {
    const { page, context, trouble } = await open(browser, { locale, ...(mac ? { before: asMac } : {}) });
    await page.evaluate('createNote()');
    await page.keyboard.type('A nota');
    await page.evaluate('quendoOpenShortcutGuide()');
    for (const [step, keys] of solutions.entries()) {
      assert.equal(await text(page), catalogue[lessons[step]?.text ?? 'close'][index]);
      for (const key of keys) {
        assert.equal(await outcome(page), '', `lesson ${step}`);
        await page.keyboard.press(mac ? key.replace('Control', 'Meta') : key);
      }
      const wanted = step === solutions.length - 1 ? 'practice.allDone' : 'practice.done';
      assert.equal(await outcome(page), catalogue[wanted][index], `lesson ${step}: ${await text(page)}`);
      // From the text, Tab moves to the restart button, then to the next button.
      for (const key of ['Tab', 'Tab', 'Enter']) await page.keyboard.press(key);
    }
    assert.equal(solutions.length, lessons.length);
    assert.equal(await outcome(page), '', 'after the last lesson comes the first again');
    await page.keyboard.press('Escape');
    await page.waitForSelector('dialog', { state: 'detached' });
    await page.keyboard.type('!');
    assert.deepEqual(await noteTexts(page), ['A nota!'], 'nothing of it is in the note');
    assert.deepEqual(trouble, []);
    await context.close();
  });
}

test('a lesson is not done by anything else and can be restarted', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.evaluate('quendoOpenShortcutGuide()');
  await page.keyboard.type('x');
  assert.equal(await outcome(page), '');
  await page.click('text=Start over');
  assert.equal(await text(page), 'tea with milk, iced tea, black tea');
  await page.click('.practice-step >> nth=4');
  assert.equal(await page.locator('.practice-step[aria-current=step]').count(), 1);
  await page.keyboard.press('Control+j');
  assert.equal(await outcome(page), '');
  await page.keyboard.press('Control+j');
  assert.equal(await outcome(page), 'Done!');
  await context.close();
});
