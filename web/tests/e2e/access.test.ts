import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import axe from 'axe-core';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, open } from './browser';
import { stored, views, wordsIn } from './views';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function violations(page: Page): Promise<string[]> {
  // Colours are checked after transitions.
  await page.evaluate(() => Promise.allSettled(document.getAnimations().map((animation) => animation.finished)));
  await page.evaluate(axe.source);
  return page.evaluate(async () => {
    const { axe: checker } = window as unknown as { axe: typeof import('axe-core') };
    const result = await checker.run(document, { resultTypes: ['violations'] });
    return result.violations.flatMap(({ id, nodes }) =>
      nodes.map((node) => `${id}: ${node.html.slice(0, 140)} ${node.any[0]?.message ?? ''}`),
    );
  });
}

for (const colorScheme of ['light', 'dark'] as const) {
  for (const [name, show] of Object.entries(views)) {
    test(`${name}, ${colorScheme}: no accessibility violations`, async () => {
      const { page, context } = await open(browser, { colorScheme, before: fakeHost(stored) });
      await show(page, wordsIn('en'));
      assert.deepEqual(await violations(page), []);
      await context.close();
    });
  }
  test(`first start and read-only, ${colorScheme}`, async () => {
    for (const state of [undefined, { ...stored, version: 99 }]) {
      const { page, context } = await open(browser, { colorScheme, before: fakeHost(state) });
      assert.deepEqual(await violations(page), []);
      await context.close();
    }
  });
}

test('wherever the Tab key leads, the focus is visible', async () => {
  const { page, context } = await open(browser, { before: fakeHost(stored) });
  await page.focus('#searchInput');
  const seen = new Set<string>();
  for (let i = 0; i < 14; i++) {
    // In the editor, Tab indents unless Escape was pressed first.
    if (await page.evaluate(() => document.activeElement?.classList.contains('cm-content'))) {
      await page.keyboard.press('Escape');
    }
    await page.keyboard.press('Tab');
    // The list updates its current row in the next frame.
    await page.evaluate(() => new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve))));
    const focus = await page.evaluate(() => {
      const active = document.activeElement as HTMLElement;
      const marked = active.querySelector('.is-current') ?? active;
      const { outlineStyle, outlineWidth } = getComputedStyle(marked);
      const name = `${active.tagName}.${active.className}`;
      return { name, seen: outlineStyle !== 'none' && Number.parseFloat(outlineWidth) >= 2 };
    });
    if (focus.name.startsWith('BODY') || focus.name.includes('cm-content')) continue;
    assert.ok(focus.seen, focus.name);
    seen.add(focus.name);
  }
  assert.ok(seen.size >= 7, [...seen].join());
  await context.close();
});
