// Never retried: these tests are about losing text.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser } from 'playwright-core';
import { fakeHost, lastState, launch, messages, noteTexts, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

test('files handed over are saved immediately, and handing them over again after a crash adds nothing', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  const files = JSON.stringify([
    { name: 'b.md', content: '# B', format: 'markdown', byteCount: 3 },
    { name: 'a.txt', content: 'igual', format: 'plain', byteCount: 5 },
    { name: 'a.txt', content: 'igual', format: 'plain', byteCount: 5 },
  ]);
  const sent = `(() => {
    const before = host.messages.length;
    const n = quendoOpenNativeFiles(${files});
    return { n, bodies: host.messages.slice(before).map(({ body }) => body.serialized) };
  })()`;
  const { n, bodies } = (await page.evaluate(sent)) as { n: number; bodies: string[] };
  assert.deepEqual([n, bodies.length], [3, 1]);
  assert.deepEqual((await noteTexts(page)).sort(), ['# B', 'igual', 'igual']);
  await context.close();

  // The page's process ended before its answer reached the host.
  const stored = JSON.parse(bodies[0] ?? '') as unknown;
  const next = await open(browser, { before: fakeHost(stored) });
  assert.equal(await next.page.evaluate(`quendoOpenNativeFiles(${files})`), 3);
  assert.equal((await noteTexts(next.page)).length, 3);
  assert.equal(await next.page.locator('[role=tab]').count(), 3);
  await next.context.close();
});

test('identical files from different folders get a tab each', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  const file = "[{ name: 'notas.txt', content: 'igual', format: 'plain', byteCount: 5 }]";
  assert.equal(await page.evaluate(`quendoOpenNativeFiles(${file})`), 1);
  assert.equal(await page.evaluate(`quendoOpenNativeFiles(${file})`), 1);
  const chosen = { name: 'notas.txt', mimeType: 'text/plain', buffer: Buffer.from('igual') };
  await page.setInputFiles('#importFileInput', [chosen, chosen]);
  await page.locator('[role=tab]').nth(3).waitFor();
  assert.deepEqual(await noteTexts(page), ['igual', 'igual', 'igual', 'igual']);
  // Nothing persists in later sessions that would merge the two.
  const { context: later, page: next } = await open(browser, { before: fakeHost(await lastState(page)) });
  await next.evaluate(`quendoOpenNativeFiles(${file})`);
  assert.equal((await noteTexts(next)).length, 5);
  await later.close();
  await context.close();
});

test('files handed over are posted before the call returns, even while a save is unanswered', async () => {
  const { page, context } = await open(browser, { before: `${fakeHost()} host.answer = null;` });
  await page.evaluate('createNote()');
  await page.keyboard.type('x');
  await page.waitForSelector('#saveState[data-state="saving"]');
  const sent = (name: string) =>
    page.evaluate((file) => {
      const host = window as unknown as {
        host: { messages: Array<{ body: { serialized: string; revision: number } }> };
        quendoOpenNativeFiles(files: unknown): number;
      };
      const before = host.host.messages.length;
      const count = host.quendoOpenNativeFiles([
        { name: file, content: `# ${file}`, format: 'markdown', byteCount: 6 },
      ]);
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
  // An answer for an earlier document does not count for the last one.
  await page.evaluate(`quendoNativeSaveDidFinish(true, ${revisions[1]})`);
  assert.equal(await page.getAttribute('#saveState', 'data-state'), 'saving');
  await page.evaluate(`host.answer = true; quendoNativeSaveDidFinish(true, ${revisions[2]})`);
  await page.waitForSelector(saved);
  await context.close();
});

test('files that cannot be posted are not accepted', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.waitForSelector(saved);
  await page.evaluate(
    "window.posting = webkit.messageHandlers.quendoState.postMessage; webkit.messageHandlers.quendoState.postMessage = () => { throw new Error('gone'); }",
  );
  const outcome = await page.evaluate(
    "(() => { try { return quendoOpenNativeFiles([{ name: 'a.md', content: 'a' }]); } catch { return 'refused'; } })()",
  );
  assert.equal(outcome, 'refused');
  await page.waitForSelector('#saveState[data-state="failed"]');
  // Handed over again, they map to the existing notes.
  await page.evaluate('webkit.messageHandlers.quendoState.postMessage = posting');
  assert.equal(await page.evaluate("quendoOpenNativeFiles([{ name: 'a.md', content: 'a' }])"), 1);
  assert.deepEqual(await noteTexts(page), ['a']);
  await context.close();
});
