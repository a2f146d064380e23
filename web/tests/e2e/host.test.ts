// Never retried: these tests are about losing text.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser } from 'playwright-core';
import { chooseSetting, fakeHost, lastState, launch, messages, noteTexts, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const MENU = [
  'createNote()',
  'openCapture()',
  'exportMarkdown()',
  'flushPendingSave()',
  'window.quendoSaveAsCurrentNote?.()',
  'window.quendoCloseCurrentTab?.()',
  "window.quendoRequestCloseTabs?.('others')",
  "window.quendoRequestCloseTabs?.('right')",
  "window.quendoRequestCloseTabs?.('all')",
  'window.quendoReopenClosedTab?.()',
  'window.quendoSwitchOpenTab?.(-1)',
  'window.quendoSwitchOpenTab?.(1)',
  'window.quendoShowTabOverview?.()',
  'window.quendoOpenShortcutGuide?.()',
  "window.quendoSetLanguage?.('pt')",
  "showToast('x')",
  'window.quendoTerminationDidCancel?.()',
  'window.quendoNativeSaveDidFinish?.(true,42)',
  "window.quendoNativeExportDidFinish?.(true, 'ok')",
  "window.quendoNativeSaveAsDidFinish?.(false, 'x', '', 'Salvamento cancelado')",
  "window.quendoNativeClipboardDidFinish?.(true, 'ok', 'x')",
  "window.quendoNativeShareDidFinish?.(false, 'x')",
  "state.sidebarMode='all';renderSidebar();setDrawer('sidebar',{focus:false});document.getElementById('searchInput').focus();document.getElementById('searchInput').select()",
];

test('every menu script runs and returns nothing', async () => {
  const { page, context, trouble } = await open(browser, { before: fakeHost() });
  for (const prepared of [false, true]) {
    if (prepared) await page.evaluate('createNote(), createNote(), undefined');
    for (const snippet of MENU) {
      const result = await page.evaluate(`String(eval(${JSON.stringify(snippet)}))`);
      assert.equal(result, 'undefined', snippet);
    }
  }
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the search script focuses the field from a dialog and with the sidebar closed', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.click('[aria-label="Hide the note list"]');
  await page.evaluate('openCapture()');
  await page.evaluate(MENU.at(-1) ?? '');
  assert.equal(await page.evaluate('document.activeElement.id'), 'searchInput');
  assert.ok(await page.isVisible('#sidebar'));
  await context.close();
});

test('saves carry increasing revisions, and their status is shown', async () => {
  const stored = { version: 1, revision: 9e15, notes: [{ id: 'a', text: 'velho' }], tabs: { open: ['a'] } };
  const { page, context } = await open(browser, { before: fakeHost(stored) });
  await page.waitForSelector(saved);
  await page.evaluate('host.answer = false');
  await page.keyboard.type('novo ');
  await page.waitForSelector('#saveState[data-state="failed"]');
  assert.match(await page.innerText('.toast'), /Saving failed/);
  await page.evaluate('host.answer = true');
  await page.click('text=Try now');
  await page.waitForSelector(saved);
  const sent = await messages(page, 'quendoState');
  const revisions = sent.map(({ body }) => Number(body.revision));
  assert.ok(
    revisions.every((revision, i) => revision > (revisions[i - 1] ?? 9e15)),
    revisions.join(),
  );
  const state = await lastState(page);
  assert.equal(state.revision, revisions.at(-1));
  await context.close();
});

test('without an answer from the host the text is not reported as saved', async () => {
  const { page, context } = await open(browser, { before: `${fakeHost()} host.answer = null;` });
  await page.evaluate('createNote()');
  await page.keyboard.type('x');
  await page.waitForTimeout(600);
  await page.keyboard.type('y');
  await page.waitForTimeout(600);
  assert.equal(await page.getAttribute('#saveState', 'data-state'), 'saving');
  assert.equal((await messages(page, 'quendoState')).length, 1);
  await context.close();
});

test('the final state is complete in the middle of a composition and of a capture', async () => {
  const { page, context } = await open(browser, { before: `${fakeHost()} host.answer = null;` });
  await page.evaluate('createNote()');
  await page.keyboard.type('a');
  const session = await context.newCDPSession(page);
  await session.send('Input.imeSetComposition', { text: 'にほ', selectionStart: 2, selectionEnd: 2 });
  assert.deepEqual(await noteTexts(page), ['aにほ']);
  await page.evaluate('openCapture()');
  await page.keyboard.type('pensamento');
  const final = (await page.evaluate('quendoPrepareForTermination()')) as { serialized: string; revision: number };
  const state = JSON.parse(final.serialized) as Record<string, unknown>;
  assert.equal(state.captureDraft, 'pensamento');
  assert.equal(state.revision, final.revision);
  await page.keyboard.type('perdido');
  assert.equal(await page.inputValue('.capture-field'), 'pensamento', 'nothing is typed while closing');
  await page.evaluate('quendoTerminationDidCancel()');
  await page.keyboard.type('!');
  assert.equal(await page.inputValue('.capture-field'), 'pensamento!', 'the focus is back');
  await context.close();
});

test('a newer document opens read-only and is never written', async () => {
  const stored = { version: 99, revision: 5e12, notes: [{ id: 'a', text: 'futuro' }], tabs: { open: ['a'] } };
  const { page, context } = await open(browser, { before: fakeHost(stored) });
  assert.match(await page.innerText('[role=alert]'), /newer version/);
  await page.click('.cm-content');
  await page.keyboard.type('x');
  await page.evaluate(
    "createNote(); openCapture(); quendoCloseCurrentTab(); quendoReopenClosedTab(); flushPendingSave(); quendoOpenNativeFiles([{name:'a',content:'b'}])",
  );
  await page.waitForTimeout(500);
  assert.deepEqual(await messages(page, 'quendoState'), []);
  const final = (await page.evaluate('quendoPrepareForTermination()')) as { serialized: string; revision: number };
  assert.deepEqual(JSON.parse(final.serialized), stored);
  assert.equal(final.revision, 1);
  await context.close();
});

test('hostile documents do not stop the page', async () => {
  for (const stored of [null, 'x', { notes: [null, { text: 3 }], tabs: [] }]) {
    const { page, context, trouble } = await open(browser, { before: fakeHost(stored) });
    await page.evaluate('createNote()');
    await page.keyboard.type('vive');
    await page.waitForSelector(saved);
    assert.deepEqual(trouble, []);
    await context.close();
  }
});

test('requests to the host have the right bodies, and answers take effect', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  const opened = await page.evaluate(
    "quendoOpenNativeFiles([{name:'plano.md',content:'# Plano\\n**x**',format:'markdown',byteCount:9}, null, 5])",
  );
  assert.equal(opened, 1);
  await page.evaluate('exportMarkdown(); quendoSaveAsCurrentNote()');
  const [exported] = await messages(page, 'quendoExport');
  assert.deepEqual(exported?.body, { filename: 'plano.md', content: '# Plano\n**x**', format: 'markdown' });
  const [request] = await messages(page, 'quendoSaveAs');
  await page.evaluate((id) => {
    const host = window as unknown as { quendoNativeSaveAsDidFinish(...values: unknown[]): void };
    host.quendoNativeSaveAsDidFinish(true, id, 'novo.txt', 'Salvo como novo.txt');
  }, request?.body.noteId);
  await page.waitForSelector('.toast >> text=Saved as novo.txt');
  await page.evaluate('quendoSaveAsCurrentNote()');
  assert.equal((await messages(page, 'quendoSaveAs')).at(-1)?.body.filename, 'novo.txt');

  await page.evaluate('window.copied = quendoCopyCurrentNoteForWhatsApp(), undefined');
  const [clipboard] = await messages(page, 'quendoClipboard');
  assert.equal(clipboard?.body.text, '*Plano*\n*x*');
  await page.evaluate((id) => {
    const host = window as unknown as { quendoNativeClipboardDidFinish(...values: unknown[]): void };
    host.quendoNativeClipboardDidFinish(true, 'Copied for WhatsApp', id);
  }, clipboard?.body.requestId);
  assert.equal(await page.evaluate('window.copied'), true);

  await chooseSetting(page, 'language', 'es');
  assert.equal((await messages(page, 'quendoLanguage')).at(-1)?.body, 'es');
  await page.evaluate("quendoSetLanguage('en')");
  assert.equal((await messages(page, 'quendoLanguage')).length, 1);
  await page.evaluate("quendoSetLanguage('klingon')");
  assert.equal(await page.getAttribute('html', 'lang'), 'en');
  await context.close();
});

test("keys of the host's menu are left to the host", async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote()');
  for (const key of ['Control+k', 'Control+s', 'Control+p', 'Control+m', 'Control+q', 'Control+Alt+w']) {
    const prevented = await page.evaluate((pressed) => {
      const parts = pressed.split('+');
      const name = parts.at(-1) ?? '';
      const event = new KeyboardEvent('keydown', {
        key: name,
        code: `Key${name.toUpperCase()}`,
        keyCode: name.toUpperCase().charCodeAt(0),
        ctrlKey: true,
        altKey: parts.includes('Alt'),
        bubbles: true,
        cancelable: true,
      });
      return !document.querySelector('.cm-content')?.dispatchEvent(event);
    }, key);
    assert.equal(prevented, false, key);
  }
  await context.close();
});

test('native editing commands affect the whole note', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  const content = Array.from({ length: 5000 }, (_, i) => `linha ${i}`).join('\n');
  await page.evaluate(
    (text) =>
      (window as unknown as { quendoOpenNativeFiles(files: unknown): number }).quendoOpenNativeFiles([
        { name: 'longo.txt', content: text, format: 'plain', byteCount: 1 },
      ]),
    content,
  );
  await page.focus('.cm-content');
  await page.evaluate("document.execCommand('selectAll')");
  await page.keyboard.type('tudo');
  assert.deepEqual(await noteTexts(page), ['tudo']);
  // WebKit announces its own undo and redo this way; Chromium only does so for its menus.
  const announce = (inputType: string) =>
    page.evaluate(
      (type) =>
        document.activeElement?.dispatchEvent(
          new InputEvent('beforeinput', { inputType: type, bubbles: true, cancelable: true }),
        ),
      inputType,
    );
  await announce('historyUndo');
  await announce('historyUndo');
  assert.ok((await noteTexts(page))[0] === content, 'undo brings all of it back');
  await announce('historyRedo');
  await announce('historyRedo');
  assert.deepEqual(await noteTexts(page), ['tudo']);
  await context.close();
});

test('markup in notes and names stays text', async () => {
  const evil = '<img src=x onerror="window.evil=1"><script>window.evil=1</script>';
  const stored = { version: 1, notes: [{ id: '"><b>', text: evil, name: evil }], tabs: { open: ['"><b>'] } };
  const { page, context, trouble } = await open(browser, { before: fakeHost(stored) });
  await page.evaluate((text) => (window as unknown as { showToast(message: string): void }).showToast(text), evil);
  await page.evaluate('quendoShowTabOverview()');
  assert.equal(await page.evaluate('window.evil'), undefined);
  assert.equal(await page.locator('img').count(), 0);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the policy blocks inline scripts and connections', async () => {
  const { page, context } = await open(browser);
  await page.evaluate(() => {
    const script = document.createElement('script');
    script.textContent = 'window.evil = 1';
    document.body.append(script);
  });
  assert.equal(await page.evaluate('window.evil'), undefined);
  const refused = await page.evaluate(() =>
    fetch('data:,x').then(
      () => false,
      () => true,
    ),
  );
  assert.equal(refused, true);
  await context.close();
});
