// Never retried: these tests are about losing text.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, type Message, messages, launch, noteTexts, open } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const notes = [
  { id: 'a', text: '# Plano\n\ntexto', pinned: true, created: 1, updated: 9 },
  { id: 'b', text: 'print(1)', name: 'a.py', format: 'plain', created: 1, updated: 5 },
];
const state = { version: 2, notes, tabs: { open: ['a', 'b'], active: 'b' } };

async function runInPalette(page: Page, name: string): Promise<void> {
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type(name);
  await page.keyboard.press('Enter');
}

const saves = (page: Page): Promise<Message[]> => messages(page, 'quendoSaveAs');

const openFile = (page: Page, name: string, content: string) =>
  page.evaluate(`quendoOpenNativeFiles([{ name: ${JSON.stringify(name)}, content: ${JSON.stringify(content)} }])`);

test('the library goes out as JSON and comes in on another computer, after asking', async () => {
  const one = await open(browser, { before: fakeHost(state) });
  await runInPalette(one.page, 'all notes as json');
  const [message] = await saves(one.page);
  assert.match(String(message?.body.filename), /^Quendo notes \d{4}-\d\d-\d\d\.json$/);
  const file = String(message?.body.content);
  await one.context.close();

  const { page, context, trouble } = await open(browser, { before: fakeHost() });
  assert.equal(await openFile(page, 'notas.json', file), 0);
  await page.waitForSelector('text=notas.json contains 2 Quendo notes. Merge them with yours?');
  await page.keyboard.press('Escape');
  assert.deepEqual(await noteTexts(page), []);
  await openFile(page, 'notas.json', file);
  await page.click('text=Merge >> nth=-1');
  await page.waitForSelector('text=Library imported. New notes: 2, updated: 0, in conflict: 0');
  assert.deepEqual((await noteTexts(page)).sort(), ['# Plano\n\ntexto', 'print(1)']);
  await openFile(page, 'notas.json', file);
  await page.click('text=Merge >> nth=-1');
  await page.waitForSelector('text=You already have all these notes');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('other JSON is a note like any text, and a damaged library changes nothing', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  assert.equal(await openFile(page, 'dados.json', '{"notes":[]}'), 1);
  assert.deepEqual(await noteTexts(page), ['{"notes":[]}']);
  await openFile(page, 'ruim.json', '{"quendoLibrary":1,"version":2,"notes":[{"id":"x"}]}');
  await page.waitForSelector('text=ruim.json: the library is damaged; nothing was changed');
  assert.deepEqual(await noteTexts(page), ['{"notes":[]}']);
  await context.close();
});

test('an open note shows the text that a library brings, and nothing typed is lost', async () => {
  const shared = [9];
  const open1 = { version: 2, notes: [{ ...notes[0], text: 'um', shared }], tabs: { open: ['a'], active: 'a' } };
  const library = (text: string, updated: number) =>
    JSON.stringify({
      quendoLibrary: 1,
      version: 2,
      notes: [{ id: 'a', text, created: 1, updated, shared: [9, updated] }],
    });
  const { page, context, trouble } = await open(browser, { before: fakeHost(open1) });
  const shown = () => page.innerText('.cm-content');
  const merge = async (content: string, result: string) => {
    await openFile(page, 'notas.json', content);
    await page.click('text=Merge >> nth=-1');
    await page.waitForSelector(`text=Library imported. ${result}`);
  };
  await page.click('.cm-content');
  await page.keyboard.type('x');
  await page.keyboard.press('Control+z');
  // The future: later than what is typed here.
  await merge(library('lá', Date.now() + 1e9), 'New notes: 0, updated: 0, in conflict: 1');
  assert.equal(await shown(), 'lá');
  await page.keyboard.press('Control+End');
  await page.keyboard.type(' e cá');
  for (let i = 0; i < 4; i++) await page.keyboard.press('Control+z');
  assert.equal(await shown(), 'lá', 'undoing ends where the library came in');
  await page.keyboard.press('Control+y');
  assert.deepEqual((await noteTexts(page)).sort(), ['lá e cá', 'um']);
  await merge(library('atrasado', 20), 'New notes: 0, updated: 0, in conflict: 1');
  assert.equal(await shown(), 'lá e cá', 'what was written later stays');
  assert.deepEqual((await noteTexts(page)).sort(), ['atrasado', 'lá e cá', 'um']);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('all notes go out as one Markdown text, in the order of the list', async () => {
  const { page, context } = await open(browser, { before: fakeHost(state) });
  await runInPalette(page, 'markdown book');
  const [message] = await saves(page);
  assert.match(String(message?.body.filename), /\.md$/);
  assert.equal(message?.body.content, '# Plano\n\ntexto\n\n---\n\n# a.py\n\n```\nprint(1)\n```\n');
  await context.close();
});

test('more than one file goes out one after another, and stops when the user cancels', async () => {
  const long = [1, 2, 3].map((n) => ({ id: `n${n}`, text: String(n).repeat(9_000_000), created: 1, updated: 2 }));
  for (const cancelled of [false, true]) {
    const stored = { version: 2, notes: long, tabs: { open: [], active: null } };
    const { page, context } = await open(browser, { before: fakeHost(stored) });
    await runInPalette(page, 'all notes as json');
    const names = () =>
      page.evaluate(() =>
        (window as unknown as { host: { messages: Message[] } }).host.messages
          .filter(({ name }) => name === 'quendoSaveAs')
          .map(({ body }) => [body.noteId, String(body.filename).replace(/.*\(/, '(')]),
      );
    const [first] = await names();
    assert.equal((await names()).length, 1);
    assert.equal(first?.[1], '(1 of 2).json');
    await page.evaluate(`quendoNativeSaveAsDidFinish(${!cancelled}, '${String(first?.[0])}', 'x.json', 'cancel')`);
    assert.equal((await names()).length, cancelled ? 1 : 2);
    await context.close();
  }
});

test('a note from a file says so, can be renamed, and can take its first line as the title', async () => {
  const { page, context } = await open(browser, { before: fakeHost(state) });
  const tab = () => page.innerText('[role=tab][aria-selected=true]');
  assert.equal(await page.innerText('#noteSource'), 'Copy of a.py');
  await runInPalette(page, 'rename imported');
  await page.keyboard.type('Meu programa');
  await page.keyboard.press('Enter');
  assert.match(await tab(), /Meu programa/);
  assert.equal(await page.innerText('#noteSource'), 'Copy of a.py');
  await runInPalette(page, 'first line as');
  assert.match(await tab(), /print\(1\)/);
  await page.keyboard.press('Control+Shift+p');
  await page.keyboard.type('rename imported');
  await page.waitForSelector('text=No command like “rename imported”.');
  await context.close();
});
