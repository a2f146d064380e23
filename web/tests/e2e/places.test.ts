// Never retried: these tests are about losing the user's place.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, type lastState, launch, noteTexts, open, restart } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

/** Waits until the editor has drawn and scrolling has settled. */
function settled(page: Page): Promise<void> {
  return page.evaluate(async () => {
    const top = () => document.querySelector('.cm-scroller')?.scrollTop;
    for (let still = 0, last = top(); still < 10; last = top()) {
      await new Promise(requestAnimationFrame);
      still = top() === last ? still + 1 : 0;
    }
  });
}

const LINES = Array.from({ length: 400 }, (_, i) => `linha ${i}`).join('\n');

/** A document with a long note open in the first tab and a short one in the second. */
const longAndShort = {
  version: 1,
  notes: [
    { id: 'long', text: LINES },
    { id: 'other', text: 'outra' },
  ],
  tabs: { open: ['long', 'other'], active: 'long' },
};

/** The line at the editor's top edge. */
function topLine(page: Page): Promise<string | null | undefined> {
  return page.evaluate(() => {
    const top = (document.querySelector('.cm-scroller')?.getBoundingClientRect().top ?? 0) + 25;
    const line = [...document.querySelectorAll('.cm-line')].find((one) => one.getBoundingClientRect().bottom > top);
    return line?.textContent;
  });
}

test('caret and scroll position survive tab switches and a restart', async () => {
  const { page, context } = await open(browser, {
    reloads: true,
    before: `localStorage['quendo-state'] ??= ${JSON.stringify(JSON.stringify(longAndShort))};`,
  });
  await page.focus('.cm-content');
  for (let i = 0; i < 6; i++) await page.keyboard.press('PageDown');
  await page.keyboard.press('ArrowRight');
  await settled(page);
  const first = await topLine(page);
  assert.notEqual(first, 'linha 0');
  await page.keyboard.press('Control+Shift+BracketRight');
  assert.equal(await page.innerText('[role=tab][aria-selected=true]'), 'outra');
  await page.keyboard.press('Control+Shift+BracketLeft');
  await settled(page);
  assert.equal(await topLine(page), first);
  for (let i = 0; i < 3; i++) {
    await restart(page);
    await page.waitForFunction(
      (wanted) => document.querySelector('.cm-content')?.textContent?.includes(wanted ?? ''),
      first,
    );
    await settled(page);
    assert.equal(await topLine(page), first, `restart ${i}`);
  }
  await page.keyboard.type('AQUI');
  const [long = ''] = await noteTexts(page);
  assert.match(long, /^l(?:inha \d+\n)*l?AQUIinha/m);
  assert.ok(long.indexOf('AQUI') > 100);
  await context.close();
});

test('a note left before its first frame keeps its scroll position', async () => {
  const { page, context } = await open(browser, { before: fakeHost({ ...longAndShort, revision: 1 }) });
  await page.focus('.cm-content');
  for (let i = 0; i < 6; i++) await page.keyboard.press('PageDown');
  await settled(page);
  const first = await topLine(page);
  assert.notEqual(first, 'linha 0');
  await page.evaluate('for (let i = 0; i < 5; i++) quendoSwitchOpenTab(1)');
  assert.equal(await page.innerText('[role=tab][aria-selected=true]'), 'outra');
  await page.evaluate('quendoSwitchOpenTab(1)');
  await settled(page);
  assert.equal(await topLine(page), first);
  await context.close();
});

test("quick capture does not change the note's caret, selection or scroll position", async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote()');
  await page.keyboard.type('antes meio depois');
  await page.keyboard.press('Home');
  for (let i = 0; i < 4; i++) await page.keyboard.press('Shift+ArrowRight');
  await page.evaluate('openCapture()');
  await page.keyboard.type('uma ideia');
  await page.evaluate("quendoOpenNativeFiles([{name:'a.md',content:'chegou'}])");
  await page.evaluate('quendoSwitchOpenTab(-1)');
  await page.keyboard.type('X');
  const state = (await page.evaluate('JSON.parse(quendoPrepareForTermination().serialized)')) as Awaited<
    ReturnType<typeof lastState>
  >;
  assert.equal(state.captureDraft, 'uma ideia');
  assert.equal((state.notes as Array<{ text: string }>)[0]?.text, 'Xs meio depois');
  await context.close();
});
