// Writes notes with a built page, as a user does, and keeps the document that it hands to its host, with what it shows.
// tests/corpus/state/README.md says when this is needed.
//
//   node scripts/state-fixture.mjs DIST FOLDER
import { mkdir, writeFile } from 'node:fs/promises';
import path from 'node:path';
import { pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';

const [dist, folder] = process.argv.slice(2);
if (!folder) throw new Error('usage: state-fixture.mjs DIST FOLDER');

const HOST = `
  window.__QUENDO_IS_MAC__ = true;
  window.__QUENDO_PUBLIC_URL__ = 'https://example.invalid/';
  window.__QUENDO_NATIVE_LANGUAGE__ = 'en';
  window.saves = [];
  const answers = {
    quendoState(body) {
      saves.push(body);
      setTimeout(() => quendoNativeSaveDidFinish(true, body.revision));
    },
    quendoSaveAs({ noteId, filename }) {
      setTimeout(() => quendoNativeSaveAsDidFinish(true, noteId, filename.replace('ata', 'ata final'), ''));
    },
  };
  window.webkit = { messageHandlers: Object.fromEntries(['State', 'Export', 'SaveAs', 'Clipboard', 'Share', 'Language']
    .map((name) => ['quendo' + name, { postMessage: (body) => answers['quendo' + name]?.(body) }])) };`;

// Text that is easily damaged: accents both ways, quotes, line separators, an emoji of several characters.
const FILES = [
  { name: 'ata.txt', content: 'linha um\r\nlinha dois 🎉\r\n', format: 'plain' },
  { name: 'script.py', content: 'def f(x):\n\treturn "\\u0000" + x\n', format: 'plain' },
  {
    name: 'Ação.md',
    content: '# Ação e ac\u0327a\u0303o\n\n"aspas" \\ \u2028 👩‍👩‍👧\n\n| a | b |\n|---|---|\n',
    format: 'markdown',
  },
  { name: 'longa.md', content: Array.from({ length: 2000 }, (_, i) => `linha ${i}`).join('\n'), format: 'markdown' },
  { name: 'apagada.md', content: 'Vai para a lixeira\n', format: 'markdown' },
  { name: 'fechada.md', content: 'Tem a aba fechada\n', format: 'markdown' },
];

const browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox', '--disable-gpu'] });
const page = await browser.newPage({ locale: 'en-US', viewport: { width: 1320, height: 780 } });
await page.addInitScript({ content: HOST });
await page.goto(pathToFileURL(path.resolve(dist, 'index.html')).href);

async function choose(name) {
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type(name);
  await page.waitForFunction(
    (wanted) => document.querySelector('.palette-row[aria-selected=true] span')?.textContent === wanted,
    name,
  );
  await page.keyboard.press('Enter');
  await page.waitForFunction(() => !document.querySelector('dialog.palette[open]'));
}
const tabs = () => page.locator('[role=tab]').allInnerTexts();
const textOf = (selector) => page.locator(selector).allInnerTexts();
const openTab = (name) => page.locator('[role=tab]', { hasText: name }).click();

await page.evaluate((files) => {
  const withSizes = files.map((file) => ({ ...file, byteCount: new TextEncoder().encode(file.content).length }));
  return window.quendoOpenNativeFiles(withSizes);
}, FILES);
await openTab('ata.txt');
await page.evaluate('quendoSaveAsCurrentNote()');
await openTab('apagada.md');
await choose('Delete note');
await openTab('fechada.md');
await page.evaluate('quendoCloseCurrentTab()');
await openTab('longa.md');
await page.focus('.work .cm-content, .cm-content');
for (let i = 0; i < 5; i++) await page.keyboard.press('PageDown');
await page.evaluate('createNote()');
await page.keyboard.type('# Compras\n\n- [ ] pão\nmaçã "verde"');
await choose('Pin note');
await page.evaluate('createNote()');
await page.keyboard.type('print(1)');
await choose('Dark appearance');
await choose('Larger text');
await page.evaluate('createNote()');
await openTab('Compras');
await page.evaluate('openCapture()');
await page.keyboard.type('meio pensamento');
await page.evaluate('flushPendingSave()');
await page.waitForFunction(() => saves.at(-1)?.serialized.includes('meio pensamento'));

const { serialized } = await page.evaluate('quendoPrepareForTermination()');
const document = JSON.parse(serialized);
const shown = {
  version: document.version,
  tabs: await tabs(),
  active: (await textOf('[role=tab][aria-selected=true]'))[0],
  rows: await textOf('#sidebar .row-title'),
};
await mkdir(folder, { recursive: true });
await writeFile(path.join(folder, 'document.json'), serialized);
await writeFile(path.join(folder, 'shown.json'), `${JSON.stringify(shown, null, 2)}\n`);
await browser.close();
