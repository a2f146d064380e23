import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser } from 'playwright-core';
import { fakeHost, launch, messages, noteTexts, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

test('files handed over are sent for saving at once, and a repeated delivery adds nothing', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  const files = JSON.stringify([
    { name: 'b.md', content: '# B', format: 'markdown', byteCount: 3 },
    { name: 'a.txt', content: 'igual', format: 'plain', byteCount: 5 },
    { name: 'a.txt', content: 'igual', format: 'plain', byteCount: 5 },
  ]);
  const sent = `(() => { const before = host.messages.length; const n = quendoOpenNativeFiles(${files}); return [n, host.messages.length > before]; })()`;
  assert.deepEqual(await page.evaluate(sent), [3, true]);
  assert.deepEqual((await noteTexts(page)).sort(), ['# B', 'igual', 'igual']);
  assert.equal(await page.evaluate(`quendoOpenNativeFiles(${files})`), 3);
  assert.equal((await noteTexts(page)).length, 3);
  await context.close();
});

test('files handed over are sent before the call returns, whatever save is still out', async () => {
  const { page, context } = await open(browser, { before: `${fakeHost()} host.answer = null;` });
  await page.evaluate('createNote()');
  await page.keyboard.type('x');
  await page.waitForSelector('#saveState[data-state="saving"]');
  const sent = (name: string) => page.evaluate((file) => {
    const host = window as unknown as {
      host: { messages: Array<{ body: { serialized: string; revision: number } }> };
      quendoOpenNativeFiles(files: unknown): number;
    };
    const before = host.host.messages.length;
    const count = host.quendoOpenNativeFiles([{ name: file, content: `# ${file}`, format: 'markdown', byteCount: 6 }]);
    return { count, bodies: host.host.messages.slice(before).map(({ body }) => body) };
  }, name);
  const first = await sent('a.md');
  const second = await sent('b.md');
  for (const { count, bodies } of [first, second]) {
    assert.equal(count, 1);
    assert.equal(bodies.length, 1);
  }
  assert.match(first.bodies[0]?.serialized ?? '', /"# a\.md"/);
  assert.match(second.bodies[0]?.serialized ?? '', /"# a\.md".*"# b\.md"/);
  const revisions = (await messages(page, 'quendoState')).map(({ body }) => Number(body.revision));
  // An answer for an earlier document does not stand for the last one.
  await page.evaluate(`quendoNativeSaveDidFinish(true, ${revisions[1]})`);
  assert.equal(await page.getAttribute('#saveState', 'data-state'), 'saving');
  await page.evaluate(`quendoNativeSaveDidFinish(true, ${revisions[2]})`);
  await page.waitForSelector(saved);
  await context.close();
});

test('files that cannot be handed over are not taken', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.waitForSelector(saved);
  await page.evaluate("webkit.messageHandlers.quendoState.postMessage = () => { throw new Error('gone'); }");
  const outcome = await page.evaluate(
    "(() => { try { return quendoOpenNativeFiles([{ name: 'a.md', content: 'a' }]); } catch { return 'refused'; } })()",
  );
  assert.equal(outcome, 'refused');
  await page.waitForSelector('#saveState[data-state="failed"]');
  await context.close();
});
