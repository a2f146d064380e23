import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { launch } from './browser';
import { corpus } from './hostile';
import { htmlCorpus } from './hostileHtml';
import { foreign, openWatched } from './watched';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const payloads = [...new Set([...corpus, ...htmlCorpus])];
const inOneLine = (payload: string) => payload.replace(/\s+/g, ' ');

/** Each payload as a title, name, heading, label, target, tag, version and unknown member. */
function library(): string {
  const notes = payloads.map((payload, index) => {
    const line = inOneLine(payload);
    const text = [
      `# ${line}`,
      payload,
      `[[${line}]] [[Alvo|${line}]] [[${line}|Alvo]] [${line}](${line}) [Alvo](<${line}>) <${line}>`,
      `#${line.replace(/[\s#]/g, '')} #a/${line} #caça`,
      `## ${line}`,
      'Alvo',
    ].join('\n\n');
    const versions = [{ taken: 5, text: `${payload}\n\n# ${line}`, guarded: true }];
    const name = index % 2 ? payload : null;
    return {
      id: `${index}${payload.slice(0, 30)}`,
      text,
      name,
      source: payload,
      created: 1,
      updated: index + 2,
      versions,
      [payload]: payload,
    };
  });
  const target = { id: 'alvo', text: 'Alvo\n\n[[Alvo]] Alvo', created: 1, updated: 9e12 };
  return JSON.stringify({ quendoLibrary: 1, version: 2, notes: [...notes, target], [payloads[0] ?? '']: payloads });
}

async function choose(page: Page, command: string): Promise<void> {
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type(command);
  await page.keyboard.press('Enter');
}

test('a hostile library cannot run or fetch anything in any view of its notes', async () => {
  assert.ok(payloads.length >= 136);
  const { page, context, seen, trouble } = await openWatched(browser);
  const nothing = async (view: string) => {
    assert.deepEqual([...seen, ...trouble], [], view);
    assert.deepEqual(await foreign(page), [], view);
  };
  await page.evaluate((content) => {
    const host = window as unknown as { quendoOpenNativeFiles(files: unknown): number };
    host.quendoOpenNativeFiles([{ name: '<img src=x onerror=ran()>.json', content }]);
  }, library());
  await page.waitForSelector('dialog[open]');
  await nothing('the question');
  await page.locator('dialog .button.primary').click();
  await page.waitForFunction(
    (count) => document.querySelector('.outcome')?.textContent?.includes(`${count}`),
    payloads.length + 1,
  );
  await page.waitForSelector('.tag-row');
  await nothing('list and tags');
  for (const sort of ['title', 'created', 'edited']) {
    await page.selectOption('.sort', sort);
    await nothing(sort);
  }
  for (const query of ['ran', 'tag:a', 'title:script', '"onerror=ran()"', 'svg -script']) {
    await page.fill('#searchInput', query);
    await page.waitForSelector('.row mark');
    await nothing(query);
  }
  await page.press('#searchInput', 'Enter');
  await page.waitForSelector('.hit');
  await nothing('a hit');
  await page.keyboard.press('Control+Alt+p');
  await page.keyboard.press('Control+Shift+o');
  await page.keyboard.type('ran');
  await page.waitForSelector('.palette-row');
  await nothing('switcher');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.preview h1');
  await page.keyboard.press('Control+Alt+o');
  await page.waitForSelector('.palette-row');
  await nothing('outline');
  await page.keyboard.press('Escape');
  await page.keyboard.press('Control+Home');
  await choose(page, 'versions');
  await page.waitForSelector('dialog[open]');
  await nothing('versions');
  await page.keyboard.press('Escape');
  await page.keyboard.press('Control+End');
  await page.keyboard.type(' [[s');
  await page.waitForSelector('.cm-tooltip-autocomplete');
  await nothing('completion');
  await page.keyboard.press('Enter');
  await page.keyboard.press('Control+Alt+Enter');
  await nothing('a link followed');
  await page.fill('#searchInput', 'title:alvo');
  await page.press('#searchInput', 'Enter');
  await page.keyboard.press('Control+Shift+b');
  await page.waitForSelector('.backlink');
  await nothing('backlinks');
  await page.evaluate('quendoShowTabOverview()');
  await nothing('tabs');
  await context.close();
});

test('every note of a hostile library can be opened and previewed, and nothing runs', async () => {
  const { page, context, seen, trouble } = await openWatched(browser);
  await page.evaluate((content) => {
    const host = window as unknown as { quendoOpenNativeFiles(files: unknown): number };
    host.quendoOpenNativeFiles([{ name: 'l.json', content }]);
  }, library());
  await page.locator('dialog .button.primary').click();
  await page.keyboard.press('Control+Alt+p');
  await page.focus('#sidebar .list');
  await page.keyboard.press('Home');
  for (let index = 0; index < payloads.length; index++) {
    await page.keyboard.press('Enter');
    assert.deepEqual(await foreign(page), []);
    await page.focus('#sidebar .list');
    await page.keyboard.press('ArrowDown');
  }
  assert.deepEqual([...seen, ...trouble], []);
  await context.close();
});
