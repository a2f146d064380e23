import { mkdir, rm } from 'node:fs/promises';
import path from 'node:path';
import type { Browser } from 'playwright-core';
import { languages } from '../../src/i18n/language';
import { fakeHost, launch, open } from '../../tests/e2e/browser';
import { stored, views, wordsIn } from '../../tests/e2e/views';

const folder = path.resolve('.build/pictures');
/** A narrow window in a browser, the host's smallest, and an ordinary one. */
const sizes = [
  [600, 700],
  [880, 600],
  [1320, 780],
] as const;

const all: typeof views = { ...views, 'first start': async () => {}, 'read-only': async () => {} };
const states: Record<string, unknown> = { 'first start': undefined, 'read-only': { ...stored, version: 99 } };

/** Views that begin in the list of notes, which has to be opened first in a narrow window. */
const inList = [
  'search',
  'search without finds',
  'search hint',
  'hits of a search',
  'list by title',
  'several notes selected',
  'menu of a row',
  'tagging notes',
  'menu of a tag',
  'tags and links',
  'renaming a tag',
  'folded sidebar',
  'bin',
  'emptying the bin',
];

/** Only the views whose names contain one of these, if there are any. */
const wanted = process.argv.slice(2);

async function takeAll(browser: Browser): Promise<number> {
  let count = 0;
  const chosen = Object.entries(all).filter(([name]) => !wanted.length || wanted.some((part) => name.includes(part)));
  for (const [name, show] of chosen) {
    for (const language of languages) {
      for (const colorScheme of ['light', 'dark'] as const) {
        for (const [width, height] of sizes) {
          const before = fakeHost(name in states ? states[name] : stored, language);
          const { page, context } = await open(browser, { colorScheme, width, height, before });
          if (inList.includes(name) && (await page.isHidden('#sidebar'))) await page.click('header .icon-button');
          await show(page, wordsIn(language));
          // Let transitions finish.
          await page.waitForTimeout(250);
          const file = `${name.replaceAll(' ', '-')}-${language}-${colorScheme}-${width}.png`;
          await page.screenshot({ path: path.join(folder, file) });
          await context.close();
          count++;
        }
      }
    }
  }
  return count;
}

await rm(folder, { recursive: true, force: true });
await mkdir(folder, { recursive: true });
const browser = await launch();
try {
  console.log(`${await takeAll(browser)} pictures are in ${folder}.`);
} finally {
  await browser.close();
}
