// Never retried: these tests are about losing text.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser } from 'playwright-core';
import { fakeHost, launch, messages, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

test('quitting never replaces a newer document, even one without a revision to stay below', async () => {
  for (const revision of [undefined, 1, 'later']) {
    const stored = { version: 99, revision, notes: [{ id: 'a', text: 'futuro' }], tabs: { open: ['a'] } };
    const { page, context } = await open(browser, { before: fakeHost(stored) });
    await page.keyboard.press('Control+Equal');
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('pin note');
    await page.keyboard.press('Enter');
    await page.click('#sidebar');
    await page.evaluate("window.dispatchEvent(new Event('blur')); window.dispatchEvent(new Event('pagehide'))");
    const final = (await page.evaluate('quendoPrepareForTermination()')) as { serialized: string; revision: number };
    const document = JSON.parse(final.serialized) as Record<string, unknown>;
    // The host uses the revision passed with the document if it is 1 or more, otherwise the document's own.
    assert.ok(final.revision < 1 && Number(document.revision) < 0, final.serialized);
    assert.deepEqual({ ...document, revision }, { ...stored, revision });
    await page.evaluate('quendoTerminationDidCancel()');
    await page.waitForTimeout(400);
    assert.deepEqual(await messages(page, 'quendoState'), []);
    await context.close();
  }
});

test('a save key retries immediately after a failure', async () => {
  const { page, context } = await open(browser, { before: `${fakeHost()} host.answer = false;` });
  await page.evaluate('createNote()');
  await page.keyboard.type('x');
  await page.waitForSelector('#saveState[data-state="failed"]');
  // In a single task, and between two attempts: none of the page's own attempts may come first.
  const sent = await page.waitForFunction(
    () => {
      const { host } = window as unknown as { host: { answer: boolean; messages: unknown[]; seen?: number } };
      const before = host.messages.length;
      const quiet = host.seen === before;
      host.seen = before;
      if (!quiet || before < 3) return undefined;
      host.answer = true;
      (window as unknown as { flushPendingSave(): void }).flushPendingSave();
      return [before, host.messages.length];
    },
    undefined,
    { polling: 100 },
  );
  const [first, then] = (await sent.jsonValue()) as [number, number];
  assert.equal(then, first + 1);
  await page.waitForSelector(saved);
  assert.match((await page.locator('.toast').allInnerTexts()).join(), /Everything is saved again/);
  await context.close();
});

test('setting the system clock never keeps text from being saved', async () => {
  const before = `
    let set = 0;
    const { now } = Date;
    Date.now = () => now() + set;
    window.setWallClock = (by) => { set += by; };
    ${fakeHost()}`;
  for (const step of [-3_600_000, 3_600_000]) {
    const { page, context } = await open(browser, { before });
    await page.evaluate('createNote()');
    await page.waitForSelector(saved);
    const count = (await messages(page, 'quendoState')).length;
    await page.keyboard.type('before ');
    await page.evaluate(`setWallClock(${step})`);
    // Without a pause long enough to save in.
    const texts = await page.evaluate(async (sentBefore) => {
      const { host } = window as unknown as { host: { messages: Array<{ body: { serialized: string } }> } };
      const sent = () => host.messages.slice(sentBefore).map(({ body }) => body.serialized);
      const began = performance.now();
      while (!sent().some((text) => text.includes('xxx')) && performance.now() - began < 8000) {
        window.dispatchEvent(new KeyboardEvent('keydown', { key: 'x' }));
        document.execCommand('insertText', false, 'x');
        await new Promise((resolve) => setTimeout(resolve, 50));
      }
      return sent();
    }, count);
    assert.match(texts.join(), /"before xxx/, `the clock set by ${step}`);
    // A failure is followed by another attempt on schedule, too.
    await page.evaluate('host.answer = false');
    await page.keyboard.type('y');
    await page.waitForSelector('#saveState[data-state="failed"]');
    await page.evaluate(`setWallClock(${step}); host.answer = true`);
    await page.keyboard.type('z');
    await page.waitForSelector(saved, { timeout: 8000 });
    await context.close();
  }
});
