import type { Page } from 'playwright-core';
import { catalogue, type Key } from '../../src/i18n/catalogue';
import { type Language, languages } from '../../src/i18n/language';

const NOW = Date.now();
const notes = [
  {
    id: 'a',
    text: '# Plano\n\n**forte** e _leve_, ~~fora~~ `código`\n\n- [ ] tarefa\n- [x] feita\n\n> dito\n\n[ponte](https://example.org)\n\n```js\nlet a = 1; // um\n```',
    pinned: true,
    updated: NOW,
    versions: [
      { taken: NOW - 3_600_000, text: '# Plano\n\n**fraco** e _leve_\n\n- [ ] tarefa', guarded: true },
      { taken: NOW - 86_400_000, text: '# Plano' },
    ],
  },
  { id: 'b', text: 'Compras\npão e maçã', updated: NOW - 1 },
  { id: 'c', text: '', updated: NOW - 2 },
];
const bin = [
  { id: 'd', text: 'Apagada\ne mais', deleted: NOW },
  { id: 'e', text: '', deleted: NOW - 9 },
];
export const stored = { version: 2, notes, bin, tabs: { open: ['a', 'b', 'c'], active: 'a' } };

/** A catalogue text in the page's language. */
type Words = (key: Key) => string;

export function wordsIn(language: Language): Words {
  return (key) => catalogue[key][languages.indexOf(language)] ?? key;
}

/** Every view, with the steps that lead to it. */
export const views: Record<string, (page: Page, word: Words) => Promise<unknown>> = {
  writing: (page) => page.focus('.cm-content'),
  'find in the text': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+f');
    await page.keyboard.type('a');
  },
  'replace in the text': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Alt+f');
    await page.keyboard.type('a');
  },
  'preview beside': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Alt+p');
    await page.waitForSelector('.preview h1');
  },
  'preview instead': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Alt+r');
    await page.waitForSelector('.preview h1');
  },
  search: async (page) => {
    await page.fill('#searchInput', 'maca');
    await page.waitForFunction(() => document.querySelectorAll('#sidebar .row').length === 1);
  },
  'search without finds': async (page) => {
    await page.fill('#searchInput', 'zzz');
    await page.waitForFunction(() => document.querySelector('.outcome')?.textContent);
  },
  'folded sidebar': (page, word) => page.click(`[aria-label="${word('sidebar.hide')}"]`),
  'note menu': (page) => page.click('#noteMenuButton'),
  palette: async (page) => {
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('co');
  },
  'palette without finds': async (page) => {
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('zzz');
  },
  guide: (page) => page.evaluate('quendoOpenShortcutGuide()'),
  overview: (page) => page.evaluate('quendoShowTabOverview()'),
  'quick capture': (page) => page.evaluate('openCapture()'),
  'closing many tabs': async (page) => {
    await page.evaluate(
      "quendoOpenNativeFiles(Array.from({ length: 51 }, (_, n) => ({ name: n + '.md', content: 'nota' })))",
    );
    await page.evaluate("quendoRequestCloseTabs('all')");
    await page.waitForSelector('dialog[open] .question');
  },
  bin: async (page) => {
    await page.click('.bin-button');
    await page.waitForSelector('.bin .row');
  },
  'emptying the bin': async (page, word) => {
    await page.click('.bin-button');
    await page.click(`text=${word('bin.empty')}`);
  },
  'versions of a note': async (page) => {
    await page.click('#noteMenuButton');
    await page.click('[data-command=versions]');
    await page.waitForSelector('.versions .row');
  },
  'renaming a note': async (page, word) => {
    await page.evaluate("quendoOpenNativeFiles([{ name: 'ata.txt', content: 'texto', format: 'plain' }])");
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type(word('cmd.rename'));
    await page.keyboard.press('Enter');
    await page.waitForSelector('dialog.rename');
  },
  'bringing in a library': async (page) => {
    await page.evaluate(
      `quendoOpenNativeFiles([{ name: 'l.json', content: '{"quendoLibrary":1,"version":2,"notes":[]}' }])`,
    );
    await page.waitForSelector('dialog[open] .question');
  },
  'no versions': async (page) => {
    await page.evaluate('createNote()');
    await page.click('#noteMenuButton');
    await page.click('[data-command=versions]');
    await page.waitForSelector('dialog.versions');
  },
  'a toast with a button': async (page) => {
    await page.click('#noteMenuButton');
    await page.click('[data-command=delete]');
    await page.waitForSelector('.toast button');
  },
  'failed saving': async (page) => {
    await page.evaluate('host.answer = false');
    await page.focus('.cm-content');
    await page.keyboard.type('x');
    await page.waitForSelector('#saveState[data-state="failed"]');
  },
  'no tab': async (page) => {
    await page.evaluate("quendoRequestCloseTabs('all')");
    await page.waitForSelector('.empty');
  },
};
