import type { Page } from 'playwright-core';
import { catalogue, type Key } from '../../src/i18n/catalogue';
import { type Language, languages } from '../../src/i18n/language';
import { chooseSetting } from './browser';

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
  {
    id: 'f',
    text: 'Ideias\n\nVer [[Plano]] e #casa/cozinha #viagem, [https://a.example](https://b.example)',
    updated: NOW - 3,
  },
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
    await page.keyboard.press('Control+h');
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
    await page.waitForFunction(() => document.querySelector('.outcome')?.textContent?.includes('zzz'));
  },
  'search hint': (page) => page.focus('#searchInput'),
  'hits of a search': async (page) => {
    await page.fill('#searchInput', 'forte leve');
    await page.waitForFunction(() => document.querySelectorAll('#sidebar .row').length === 1);
    await page.press('#searchInput', 'Enter');
    await page.waitForSelector('.hit');
  },
  'list by title': async (page) => {
    await page.selectOption('.sort', 'title');
    await page.waitForFunction(() => document.querySelectorAll('.list-heading').length > 1);
  },
  'several notes selected': async (page) => {
    await page.focus('#sidebar .list');
    await page.keyboard.press('Control+a');
    await page.waitForFunction(
      (count) => document.querySelectorAll('#sidebar [aria-selected=true]').length === count,
      notes.length,
    );
  },
  'menu of a row': async (page) => {
    await page.click('#sidebar .row', { button: 'right' });
    await page.waitForSelector('main > .menu');
  },
  switcher: async (page) => {
    await page.keyboard.press('Control+Shift+o');
    await page.keyboard.type('co');
    await page.waitForSelector('.palette-row mark');
  },
  'tagging notes': async (page) => {
    await page.waitForSelector('.tag-row');
    await page.focus('#sidebar .list');
    await page.keyboard.press('Control+a');
    await page.keyboard.press('Shift+F10');
    await page.click('.menu [data-command=tag]');
    await page.waitForSelector('.palette-row');
  },
  'menu of a tag': async (page) => {
    await page.click('.tag-row', { button: 'right' });
    await page.waitForSelector('.menu [data-command=renameTag]');
  },
  'links to the note': async (page) => {
    await page.waitForSelector('.backlinks-head');
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Shift+b');
    await page.click('.backlinks .link-button');
    await page.waitForSelector('.backlinks p');
  },
  'tags and links': async (page) => {
    await page.waitForSelector('.tag-row');
    await page.click('#sidebar .row >> text=Ideias');
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Alt+p');
    await page.waitForSelector('.preview .true-address');
    await page.focus('.tags-tree');
    await page.keyboard.press('ArrowRight');
  },
  'completing a title': async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+End');
    await page.keyboard.press('Enter');
    await page.keyboard.type('[[a');
    await page.waitForSelector('.cm-tooltip-autocomplete');
  },
  outline: async (page) => {
    await page.focus('.cm-content');
    await page.keyboard.press('Control+Alt+o');
    await page.waitForSelector('.palette-row');
  },
  'renaming a tag': async (page, word) => {
    await page.waitForSelector('.tag-row');
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type(word('cmd.renameTag'));
    await page.keyboard.press('Enter');
    await page.waitForSelector('.palette-row');
    await page.keyboard.press('Enter');
    await page.waitForSelector('.rename');
  },
  'folded sidebar': (page, word) => page.click(`[aria-label="${word('sidebar.hide')}"]`),
  'note menu': (page) => page.click('#noteMenuButton'),
  palette: async (page) => {
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('co');
  },
  'palette by another word': async (page) => {
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('night');
    await page.waitForSelector('.palette-alias');
  },
  'focus mode': async (page) => {
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('distraction');
    await page.keyboard.press('Enter');
    await page.waitForSelector('.cm-currentParagraph');
  },
  'palette without finds': async (page) => {
    await page.keyboard.press('Control+Shift+p');
    await page.keyboard.type('zzz');
  },
  guide: (page) => page.evaluate('quendoOpenShortcutGuide()'),
  'many tabs': async (page) => {
    await page.evaluate("for (let n = 0; n < 20; n++) quendoOpenNativeFiles([{ name: n + '.md', content: 'nota' }])");
    await page.click('.tabs-extras > button');
  },
  'tab menu': (page) => page.click('[role=tab] >> nth=1', { button: 'right' }),
  'narrow window': async (page) => {
    await page.setViewportSize({ width: 600, height: 700 });
    await page.click('header .icon-button');
    await page.waitForSelector('.sidebar:not([hidden])');
  },
  settings: async (page) => {
    await page.keyboard.press('Control+,');
    await page.waitForSelector('.settings select');
  },
  'a serif and short lines': async (page) => {
    await chooseSetting(page, 'lines', 'narrow');
    await chooseSetting(page, 'face', 'serif');
    await page.evaluate(() => document.fonts.ready);
  },
  overview: (page) => page.evaluate('quendoShowTabOverview()'),
  'quick capture': (page) => page.evaluate('openCapture()'),
  'closing many tabs': async (page) => {
    await page.evaluate("for (let n = 0; n < 51; n++) quendoOpenNativeFiles([{ name: n + '.md', content: 'nota' }])");
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
