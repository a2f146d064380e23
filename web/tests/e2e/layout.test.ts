import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { languages } from '../../src/i18n/language';
import { fakeHost, launch, open } from './browser';
import { stored, views, wordsIn } from './views';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

/** Positions of the frame's parts, which nothing inside them may shift. */
function frame(page: Page): Promise<Record<string, number>> {
  return page.evaluate(() => {
    const top = (selector: string) => Math.round(document.querySelector(selector)?.getBoundingClientRect().top ?? -1);
    return { status: top('.status'), bin: top('.bin-button'), search: top('#searchInput'), saved: top('#saveState') };
  });
}

function overflow(page: Page): Promise<boolean> {
  return page.evaluate(() => {
    const { scrollWidth, scrollHeight, clientWidth, clientHeight } = document.documentElement;
    return scrollWidth > clientWidth || scrollHeight > clientHeight;
  });
}

for (const language of languages) {
  test(`nothing shifts the frame of the smallest window, in ${language}`, async () => {
    const size = { width: 880, height: 600 };
    const { page, context } = await open(browser, { ...size, before: fakeHost(stored, language) });
    const still = await frame(page);
    assert.ok((still.status ?? 0) > 560 && (still.bin ?? 0) > 560, JSON.stringify(still));
    for (const name of ['search', 'search without finds', 'find in the text', 'failed saving', 'no tab']) {
      await views[name]?.(page, wordsIn(language));
      assert.deepEqual(await frame(page), still, name);
      assert.equal(await overflow(page), false, name);
    }
    await context.close();
    for (const state of [undefined, { ...stored, version: 99 }]) {
      const other = await open(browser, { ...size, before: fakeHost(state, language) });
      assert.deepEqual(await frame(other.page), still, state ? 'read-only' : 'first start');
      await other.context.close();
    }
  });
}
