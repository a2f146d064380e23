import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser } from 'playwright-core';
import { chooseSetting, fakeHost, launch, noteTexts, open, saved, typingCost } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

test('text survives a reload', async () => {
  const { page, context, trouble } = await open(browser, { reloads: true });
  await page.click('text=New note');
  await page.keyboard.type('# Compras\n\n- pão\nqueijo "bom" \\ 🎉');
  await page.waitForSelector(saved);
  await page.reload();
  assert.deepEqual(await noteTexts(page), ['# Compras\n\n- pão\n- queijo "bom" \\ 🎉']);
  assert.equal(await page.innerText('[role=tab]'), 'Compras');
  assert.equal(await page.title(), 'Compras — Quendo');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('notes are searched while typing, ignoring accents', async () => {
  const { page, context } = await open(browser);
  for (const text of ['Reunião de equipe', 'Receitas\nmaçã e canela', 'Outra coisa']) {
    await page.keyboard.press('Alt+n');
    await page.keyboard.type(text);
  }
  await page.keyboard.press('Control+p');
  await page.keyboard.type('maca');
  await page.waitForFunction(() => document.querySelectorAll('.row').length === 1);
  assert.equal(await page.innerText('.row-title'), 'Receitas');
  assert.equal(await page.innerText('.row-excerpt mark'), 'maçã');
  await page.keyboard.press('Enter');
  assert.equal(await page.innerText('[role=tab][aria-selected=true]'), 'Receitas');
  await page.fill('#searchInput', 'zzz');
  await page.waitForSelector('text=Nothing found for “zzz”.');
  await page.focus('#searchInput');
  await page.keyboard.press('Escape');
  await page.waitForFunction(() => document.querySelectorAll('.row').length === 3);
  await context.close();
});

test('tabs open, switch, close, reopen, and each keeps its undo history', async () => {
  const { page, context } = await open(browser);
  for (const text of ['um', 'dois', 'tres']) {
    await page.keyboard.press('Alt+n');
    await page.keyboard.type(text);
  }
  const tabs = () => page.locator('[role=tab]').allInnerTexts();
  const active = () => page.innerText('[role=tab][aria-selected=true]');
  assert.deepEqual(await tabs(), ['um', 'dois', 'tres']);
  await page.keyboard.press('Control+Shift+BracketRight');
  assert.equal(await active(), 'um');
  await page.keyboard.press('Control+z');
  assert.match(await page.innerText('.cm-content'), /Write\./);
  await page.keyboard.press('Control+Shift+z');
  await page.keyboard.press('Control+Shift+BracketLeft');
  assert.equal(await active(), 'tres');
  await page.keyboard.press('Alt+w');
  assert.deepEqual(await tabs(), ['um', 'dois']);
  await page.keyboard.press('Alt+Shift+t');
  assert.deepEqual(await tabs(), ['um', 'dois', 'tres']);
  assert.equal(await active(), 'tres');
  await page.keyboard.press('Control+z');
  assert.deepEqual((await noteTexts(page)).sort(), ['', 'dois', 'um']);
  await context.close();
});

test('closing tabs that can be reopened needs no confirmation and can be undone', async () => {
  const { page, context } = await open(browser);
  for (const text of ['um', 'dois', 'tres']) {
    await page.keyboard.press('Alt+n');
    await page.keyboard.type(text);
  }
  await page.keyboard.press('Control+Alt+w');
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['tres']);
  await page.click('.toast >> text=Undo');
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['um', 'dois', 'tres']);
  assert.equal(await page.innerText('[role=tab][aria-selected=true]'), 'tres');
  await page.keyboard.press('Control+Alt+w');
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['tres']);
  assert.equal((await noteTexts(page)).length, 3);
  await page.keyboard.type('!');
  assert.ok((await noteTexts(page)).includes('tres!'), 'the focus is back in the text');
  await context.close();
});

test('closing more tabs than can be reopened asks for confirmation in the page', async () => {
  const notes = Array.from({ length: 52 }, (_, number) => ({ id: `n${number}`, text: `nota ${number}` }));
  const stored = { version: 1, notes, tabs: { open: notes.map(({ id }) => id), active: 'n0' } };
  const { page, context } = await open(browser, { before: fakeHost(stored) });
  await page.evaluate("quendoRequestCloseTabs('others')");
  assert.equal(await page.innerText('.question'), 'Close 51 tabs?');
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('[role=tab]').count(), 52);
  await page.evaluate("quendoRequestCloseTabs('others')");
  await page.keyboard.press('Enter');
  await page.waitForSelector('dialog', { state: 'detached' });
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['nota 0']);
  await page.keyboard.type('!');
  assert.equal((await noteTexts(page))[0], '!nota 0', 'the focus is back in the text');
  await context.close();
});

test('quick capture takes a thought without losing the place', async () => {
  const { page, context } = await open(browser, { reloads: true });
  await page.keyboard.press('Alt+n');
  await page.keyboard.type('aqui');
  await page.keyboard.press('Control+k');
  await page.keyboard.type('um rascunho');
  await page.keyboard.press('Escape');
  await page.keyboard.type('!');
  await page.waitForSelector(saved);
  await page.reload();
  await page.keyboard.press('Control+k');
  assert.equal(await page.inputValue('.capture-field'), 'um rascunho');
  await page.keyboard.type(' ideia');
  await page.keyboard.press('Control+Enter');
  assert.deepEqual((await noteTexts(page)).sort(), ['aqui!', 'um rascunho ideia']);
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['aqui!']);
  await page.click('.toast >> text=Open');
  assert.equal(await page.innerText('[role=tab][aria-selected=true]'), 'um rascunho ideia');
  await context.close();
});

test('files are imported into a tab each; binary files are reported by name', async () => {
  const { page, context } = await open(browser);
  const file = (name: string, buffer: Buffer) => ({ name, mimeType: 'text/plain', buffer });
  await page.setInputFiles('#importFileInput', [
    file('um.md', Buffer.from('# Um')),
    file('dois.txt', Buffer.from('a\r\nb')),
    file('foto.png', Buffer.from([0x89, 0x50, 0x4e, 0x47, 1, 2])),
  ]);
  await page.waitForSelector('.toast');
  assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), ['um.md', 'dois.txt']);
  assert.match(await page.innerText('.toast'), /foto\.png: does not look/);
  await page.evaluate(() => {
    const input = document.querySelector<HTMLInputElement>('#importFileInput');
    const chosen = new DataTransfer();
    chosen.items.add(new File([new Uint8Array(20_000_001)], 'grande.txt'));
    if (input) input.files = chosen.files;
    input?.dispatchEvent(new Event('change'));
  });
  await page.waitForSelector('.toast >> text=grande.txt: over 20 MB');
  const download = page.waitForEvent('download');
  await page.keyboard.press('Control+Shift+s');
  const stream = await (await download).createReadStream();
  const parts: Buffer[] = [];
  for await (const part of stream) parts.push(part as Buffer);
  assert.equal(Buffer.concat(parts).toString(), 'a\r\nb');
  await context.close();
});

test('a dropped file opens as a tab', async () => {
  const { page, context } = await open(browser);
  const prevented = await page.evaluate(() => {
    const dataTransfer = new DataTransfer();
    dataTransfer.items.add(new File(['solto'], 'solto.txt'));
    const drop = new DragEvent('drop', { dataTransfer, bubbles: true, cancelable: true });
    return !document.body.dispatchEvent(drop);
  });
  assert.ok(prevented);
  await page.waitForSelector('[role=tab] >> text=solto.txt');
  assert.deepEqual(await noteTexts(page), ['solto']);
  await context.close();
});

test('a click beside a dialog closes it, one on its edge does not', async () => {
  const { page, context } = await open(browser);
  await page.keyboard.press('Control+k');
  const box = await page.locator('dialog').boundingBox();
  assert.ok(box);
  await page.mouse.click(box.x + 6, box.y + box.height - 6);
  assert.equal(await page.locator('dialog').count(), 1);
  await page.mouse.click(box.x - 20, box.y);
  await page.waitForFunction(() => !document.querySelector('dialog'));
  await context.close();
});

test('the toast restores a deleted note', async () => {
  const { page, context } = await open(browser);
  await page.keyboard.press('Alt+n');
  await page.keyboard.type('Preciosa');
  await page.click('[aria-label="Note actions"]');
  await page.click('text=Delete note');
  assert.deepEqual(await noteTexts(page), []);
  await page.click('.toast >> text=Undo');
  assert.deepEqual(await noteTexts(page), ['Preciosa']);
  await page.keyboard.type('!');
  assert.deepEqual(await noteTexts(page), ['Preciosa!'], 'where it was left');
  await context.close();
});

test('the language changes immediately and is saved', async () => {
  const { page, context } = await open(browser, { reloads: true, locale: 'es-AR' });
  await page.waitForSelector('text=Una página en blanco');
  await chooseSetting(page, 'language', 'pt');
  await page.waitForSelector('text=Uma página em branco');
  assert.equal(await page.getAttribute('html', 'lang'), 'pt-BR');
  assert.equal(await page.getAttribute('#searchInput', 'placeholder'), 'Buscar notas');
  await page.waitForSelector(saved);
  await page.reload();
  await page.waitForSelector('text=Uma página em branco');
  await context.close();
});

for (const [kind, text] of [
  ['many paragraphs', 'uma linha de texto\n\n'.repeat(200_000)],
  ['one endless paragraph', 'uma linha de texto\n'.repeat(200_000)],
] as const)
  test(`typing stays fast beside ten thousand notes in a text of ${kind}`, async () => {
    const notes = Array.from({ length: 10_000 }, (_, i) => ({
      id: `n${i}`,
      text: `Nota ${i}\ntexto ${i}`,
      updated: i,
    }));
    const long = { id: 'long', text, updated: 20_000 };
    const state = JSON.stringify({ version: 1, notes: [...notes, long], tabs: { open: ['long'] } });
    const { page, context } = await open(browser, {
      before: `window.__QUENDO_IS_MAC__ = true; window.__QUENDO_NATIVE_STATE__ = ${state};`,
    });
    assert.ok((await page.locator('.row').count()) < 40);
    await page.focus('.cm-content');
    await page.keyboard.type('warm');
    const cost = await typingCost(page);
    // A generous limit, because machines differ: only a frozen page should fail here.
    assert.ok(cost < 300, `${cost} ms a key`);
    await context.close();
  });
