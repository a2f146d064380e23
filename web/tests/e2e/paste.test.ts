import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { launch, noteTexts, open } from './browser';
import { htmlCorpus } from './hostileHtml';
import { foreign, openWatched, paste } from './watched';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

async function openNote() {
  const opened = await open(browser);
  await opened.page.keyboard.press('Alt+n');
  return opened;
}

const text = async (page: Page) => (await noteTexts(page))[0];

test('pasted HTML cannot run or fetch anything, nor can the notes that come of it', async () => {
  assert.ok(htmlCorpus.length >= 140);
  const { page, context, seen, trouble } = await openWatched(browser);
  await page.keyboard.press('Alt+n');
  await page.keyboard.press('Control+Alt+p');
  for (const part of htmlCorpus) {
    await paste(page, { 'text/html': `<meta charset="utf-8">${part}` });
    assert.deepEqual([...seen, ...trouble], [], part.slice(0, 200));
  }
  await page.keyboard.press('Control+End');
  await page.keyboard.type('fim');
  await page.waitForSelector('.preview >> text=fim', { state: 'attached' });
  assert.deepEqual(await foreign(page), []);
  for (const part of htmlCorpus.slice(0, 40)) {
    await page.keyboard.press('Alt+n');
    await paste(page, { 'text/html': part });
    assert.deepEqual(await foreign(page), [], part);
  }
  await page.keyboard.press('Control+p');
  await page.keyboard.type('ran');
  await page.waitForSelector('.row-excerpt mark');
  assert.deepEqual(await foreign(page), []);
  assert.deepEqual([...seen, ...trouble], []);
  await context.close();
});

test('formatted text is pasted as Markdown, and undone in one step', async () => {
  const { page, context, trouble } = await openNote();
  await page.keyboard.type('a ');
  await paste(page, { 'text/html': '<b>b</b> <script>c</script><i style="color: red">d</i>', 'text/plain': 'b d' });
  assert.equal(await text(page), 'a **b** *d*');
  await page.keyboard.press('Control+z');
  assert.equal(await text(page), 'a ');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('plain text stays plain: by its key, of code, and where nothing is formatted', async () => {
  const { page, context } = await openNote();
  await page.evaluate(() => {
    const key = { key: 'V', code: 'KeyV', ctrlKey: true, shiftKey: true, bubbles: true };
    document.querySelector('.cm-content')?.dispatchEvent(new KeyboardEvent('keydown', key));
  });
  await paste(page, { 'text/html': '<b>a</b>', 'text/plain': 'a ' });
  await paste(page, { 'text/html': '<pre>b\n  c</pre>', 'text/plain': 'b\n  c ' });
  await paste(page, { 'text/html': '<div>*d*</div><div>e</div>', 'text/plain': '*d*\ne ' });
  assert.equal(await text(page), 'a b\n  c *d*\ne ');
  await page.keyboard.press('Control+a');
  await page.keyboard.insertText('```\n');
  await paste(page, { 'text/html': '<b>a</b>', 'text/plain': 'a' });
  assert.equal(await text(page), '```\na', 'and in a block of code');
  await context.close();
});

test('HTML alone never shows as tags, not even in a note without Markdown', async () => {
  const { page, context } = await openNote();
  const html = '<h1>a</h1><p>b <b>c</b></p>';
  await paste(page, { 'text/html': html });
  assert.equal(await text(page), '# a\n\nb **c**');
  await page.setInputFiles('#importFileInput', { name: 'a.csv', mimeType: 'text/csv', buffer: Buffer.from('') });
  await page.waitForSelector('[role=tab] >> text=a.csv');
  await page.focus('.cm-content');
  await paste(page, { 'text/html': html });
  assert.ok((await noteTexts(page)).includes('a\n\nb c'));
  await context.close();
});

test('words that only the plain text has are not lost', async () => {
  const { page, context } = await openNote();
  await paste(page, { 'text/html': '<!-- x --><style>p {}</style><textarea>um</textarea>', 'text/plain': 'um ' });
  await paste(page, { 'text/html': '<p style="display: none">dois três</p><b>e</b>', 'text/plain': 'dois três e ' });
  await paste(page, { 'text/html': '<img src="file:///foto.png">', 'text/plain': 'quatro' });
  assert.equal(await text(page), 'um dois três e quatro');
  await page.waitForSelector('.toast >> text=foto.png');
  await context.close();
});

test('a huge clipboard is pasted as plain text without delay', async () => {
  const { page, context } = await openNote();
  const took = await page.evaluate(() => {
    const clipboardData = new DataTransfer();
    clipboardData.setData('text/html', '<p>some <b>bold</b> words</p>\n'.repeat(350_000));
    clipboardData.setData('text/plain', 'plain');
    const event = new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true });
    const started = performance.now();
    document.querySelector('.cm-content')?.dispatchEvent(event);
    return performance.now() - started;
  });
  assert.equal(await text(page), 'plain');
  assert.ok(took < 1000, `${took} ms`);
  await context.close();
});

test('images that cannot be kept are named in one toast', async () => {
  const { page, context } = await openNote();
  await paste(page, { 'text/html': '<p>a</p><img src="data:image/png;base64,AA==" alt="cat"><img src="cid:dog.png">' });
  assert.equal(await page.innerText('.toast'), 'cat and 1 more cannot be kept in a note');
  assert.equal(await text(page), 'a\n\ncat');
  await page.evaluate(() => {
    const clipboardData = new DataTransfer();
    clipboardData.items.add(new File(['x'], 'photo.png', { type: 'image/png' }));
    const event = new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true });
    document.querySelector('.cm-content')?.dispatchEvent(event);
  });
  await page.waitForSelector('.toast >> text="photo.png cannot be kept in a note"');
  await context.close();
});

test('formatted text is dropped as Markdown, where it is dropped', async () => {
  const { page, context } = await openNote();
  await page.keyboard.insertText('one two');
  await page.evaluate(() => {
    const dataTransfer = new DataTransfer();
    dataTransfer.setData('text/html', '<b>b</b>');
    dataTransfer.setData('text/plain', 'b');
    const line = document.querySelector('.cm-line')?.getBoundingClientRect();
    const place = { clientX: (line?.left ?? 0) + 1, clientY: (line?.top ?? 0) + 5 };
    const event = new DragEvent('drop', { dataTransfer, bubbles: true, cancelable: true, ...place });
    document.querySelector('.cm-line')?.dispatchEvent(event);
  });
  assert.equal(await text(page), '**b**one two');
  await context.close();
});

test('a pasted list goes on in an empty item, other blocks begin on their own line', async () => {
  const { page, context } = await openNote();
  await page.keyboard.type('- ');
  await paste(page, { 'text/html': '<ul><li>a</li><li>b</li></ul>' });
  assert.equal(await text(page), '- a\n- b');
  await page.keyboard.press('Control+a');
  await page.keyboard.type('words ');
  await paste(page, { 'text/html': '<h2>a</h2>' });
  assert.equal(await text(page), 'words \n\n## a');
  await context.close();
});

test('a large table from the clipboard is converted in linear time', async () => {
  const { page, context } = await openNote();
  const [small, large] = await page.evaluate(() => {
    const row = `<tr>${'<td style="color: red">some <b>bold</b> text</td>'.repeat(8)}</tr>`;
    const paste = (rows: number) => {
      const clipboardData = new DataTransfer();
      clipboardData.setData('text/html', `<p>a</p><table>${row.repeat(rows)}</table>`);
      const event = new ClipboardEvent('paste', { clipboardData, bubbles: true, cancelable: true });
      const started = performance.now();
      document.querySelector('.cm-content')?.dispatchEvent(event);
      return performance.now() - started;
    };
    const best = (rows: number) => Math.min(...Array.from({ length: 3 }, () => paste(rows)));
    return [best(100), best(800)] as const;
  });
  assert.match((await text(page)) ?? '', /a\n\n\| some \*\*bold\*\* text \|/);
  // Eight times as much; in quadratic time it would be sixty-four times.
  assert.ok(large < small * 24, `${small} and ${large} ms`);
  await context.close();
});
