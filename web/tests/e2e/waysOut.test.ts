import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, lastState, launch, messages, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

const NOTE = '# Ata\n\n- [x] **pão**\n- [site](https://x.y)';
const stored = { version: 1, notes: [{ id: 'ata', text: NOTE }], tabs: { open: ['ata'], active: 'ata' } };

const openIn = (language: string, state: unknown = stored) =>
  open(browser, { before: `${fakeHost(state)} window.__QUENDO_NATIVE_LANGUAGE__ = '${language}';` });

const focused = (page: Page) =>
  page.evaluate(() => (document.activeElement as HTMLElement | null)?.dataset.command ?? null);

/** Moves from the text into the note menu and onto an entry, using only the keyboard. */
async function choose(page: Page, command: string): Promise<void> {
  await page.focus('.cm-content');
  await page.keyboard.press('Escape');
  await page.keyboard.press('Shift+Tab');
  await page.keyboard.press('Enter');
  await page.waitForSelector('[role=menuitem]:focus');
  for (let i = 0; i < 20 && (await focused(page)) !== command; i++) {
    await page.keyboard.press('ArrowDown');
  }
  assert.equal(await focused(page), command);
  await page.keyboard.press('Enter');
}

/** The last message posted under a name, once there are `count` of them. */
async function posted(page: Page, name: string, count = 1): Promise<Record<string, unknown>> {
  await page.waitForFunction(
    ([wanted, least]) =>
      (window as unknown as { host: { messages: Array<{ name: string }> } }).host.messages.filter(
        (message) => message.name === wanted,
      ).length >= Number(least),
    [name, count] as const,
  );
  return (await messages(page, name)).at(-1)?.body ?? {};
}

const answer = (page: Page, name: string, ...values: unknown[]) =>
  page.evaluate(`window.${name}(${values.map((value) => JSON.stringify(value)).join(', ')})`);

const toast = (page: Page, text: string) => page.waitForSelector(`.toast >> text="${text}"`);

test('the menu has a name, roles and every export, copy and share command', async () => {
  const { page, context, trouble } = await openIn('en');
  const button = page.getByRole('button', { name: 'Note actions' });
  assert.equal(await button.getAttribute('aria-haspopup'), 'menu');
  await button.focus();
  await page.keyboard.press('ArrowUp');
  await page.waitForSelector('[role=menuitem]:focus');
  assert.equal(await focused(page), 'delete');
  assert.equal(await button.getAttribute('aria-expanded'), 'true');
  const menu = page.getByRole('menu', { name: 'Note actions' });
  assert.deepEqual(await menu.getByRole('menuitem').locator('span').allInnerTexts(), [
    'Save as…',
    'Export as Markdown…',
    'Export as text…',
    'Copy as Markdown',
    'Copy as plain text',
    'Copy for WhatsApp',
    'Share…',
    'Preview beside',
    'Preview instead of the text',
    'Close other tabs…',
    'Close tabs to the right…',
    'Pin note',
    'Versions of the note…',
    'Settings',
    'Delete note',
  ]);
  await page.keyboard.press('Home');
  assert.equal(await focused(page), 'saveAs');
  await page.keyboard.press('Escape');
  assert.ok(await page.evaluate(() => document.activeElement?.classList.contains('cm-content')));
  await page.evaluate('quendoOpenShortcutGuide()');
  const labels = await page.locator('section:has(> h3:text-is("Note actions")) dt').allInnerTexts();
  assert.equal(labels.length, 15);
  for (const label of labels)
    assert.match(label, /Save as|Export|Copy|Share|Preview|Close|Pin|Versions|Settings|Delete/);
  assert.deepEqual(trouble, []);
  await context.close();
});

for (const { language, copied, whatsapp, failed } of [
  {
    language: 'pt',
    copied: 'Markdown copiado',
    whatsapp: 'Copiado para o WhatsApp',
    failed: 'Não foi possível copiar',
  },
  { language: 'en', copied: 'Markdown copied', whatsapp: 'Copied for WhatsApp', failed: 'Could not copy' },
  { language: 'es', copied: 'Markdown copiado', whatsapp: 'Copiado para WhatsApp', failed: 'No se pudo copiar' },
])
  test(`copies are posted and answered in the language ${language}`, async () => {
    const { page, context, trouble } = await openIn(language);
    await choose(page, 'copyMarkdown');
    const first = await posted(page, 'quendoClipboard');
    assert.equal(first.text, NOTE);
    assert.equal(first.successMessage, copied);
    await answer(page, 'quendoNativeClipboardDidFinish', true, first.successMessage, first.requestId);
    await toast(page, copied);

    await choose(page, 'copyPlain');
    const plain = await posted(page, 'quendoClipboard', 2);
    assert.equal(plain.text, 'Ata\n\n☑ pão\n- site (https://x.y)');
    await answer(page, 'quendoNativeClipboardDidFinish', false, plain.successMessage, plain.requestId);
    await toast(page, failed);

    await page.evaluate('window.copied = quendoCopyCurrentNoteForWhatsApp(), undefined');
    const third = await posted(page, 'quendoClipboard', 3);
    assert.equal(third.text, '*Ata*\n\n☑ *pão*\n- site: https://x.y');
    await answer(page, 'quendoNativeClipboardDidFinish', true, third.successMessage, third.requestId);
    assert.equal(await page.evaluate('window.copied'), true);
    await toast(page, whatsapp);
    await answer(page, 'quendoNativeClipboardDidFinish', true, 'again', third.requestId);
    assert.equal(await page.locator('.toast').count(), 3, 'one toast each');
    assert.deepEqual(trouble, []);
    await context.close();
  });

for (const { language, done, cancelled, failed } of [
  {
    language: 'pt',
    done: 'Salvo como nova ata.txt',
    cancelled: 'Salvamento cancelado',
    failed: 'Não foi possível salvar o arquivo',
  },
  { language: 'en', done: 'Saved as nova ata.txt', cancelled: 'Saving canceled', failed: 'Could not save the file' },
  {
    language: 'es',
    done: 'Guardado como nova ata.txt',
    cancelled: 'Guardado cancelado',
    failed: 'No se pudo guardar el archivo',
  },
])
  test(`Save As is answered in the language ${language} and remembers the name`, async () => {
    const { page, context } = await openIn(language);
    await choose(page, 'saveAs');
    const request = await posted(page, 'quendoSaveAs');
    assert.deepEqual(request, { noteId: 'ata', filename: 'Ata.md', content: NOTE });
    await answer(page, 'quendoNativeSaveAsDidFinish', false, 'ata', '', 'Salvamento cancelado');
    await toast(page, cancelled);
    await answer(page, 'quendoNativeSaveAsDidFinish', false, 'ata', '', 'Não foi possível salvar o arquivo');
    await toast(page, failed);
    await answer(page, 'quendoNativeSaveAsDidFinish', true, 'ata', 'nova ata.txt', 'Salvo como nova ata.txt');
    await toast(page, done);
    await page.waitForSelector(saved);
    const { notes } = (await lastState(page)) as { notes: Array<{ fileName: unknown; text: unknown }> };
    assert.deepEqual(
      notes.map(({ fileName, text }) => [fileName, text]),
      [['nova ata.txt', NOTE]],
    );
    await choose(page, 'exportMarkdown');
    assert.equal((await posted(page, 'quendoExport')).filename, 'nova ata.md');
    await context.close();
  });

test('exports are posted in both formats, and the host reports the result', async () => {
  const { page, context } = await openIn('es');
  await choose(page, 'exportText');
  assert.deepEqual(await posted(page, 'quendoExport'), {
    filename: 'Ata.txt',
    content: 'Ata\n\n☑ pão\n- site (https://x.y)',
    format: 'plain',
  });
  await choose(page, 'exportMarkdown');
  assert.deepEqual(await posted(page, 'quendoExport', 2), { filename: 'Ata.md', content: NOTE, format: 'markdown' });
  await answer(page, 'quendoNativeExportDidFinish', true, 'Markdown exportado');
  await toast(page, 'Markdown exportado');
  await answer(page, 'quendoNativeExportDidFinish', false, '');
  await toast(page, 'No se pudo exportar el archivo');
  await context.close();
});

for (const { language, busy, done, nothing } of [
  {
    language: 'pt',
    busy: 'Já há um compartilhamento em andamento',
    done: 'Compartilhado',
    nothing: 'Nada foi compartilhado',
  },
  { language: 'en', busy: 'Something is being shared already', done: 'Shared', nothing: 'Nothing was shared' },
  { language: 'es', busy: 'Ya hay algo que se está compartiendo', done: 'Compartido', nothing: 'No se compartió nada' },
])
  test(`one share at a time, reported in the language ${language}`, async () => {
    const { page, context } = await openIn(language);
    await choose(page, 'share');
    const { attemptId, ...request } = await posted(page, 'quendoShare');
    assert.deepEqual(request, { title: 'Ata', filename: 'Ata.md', content: NOTE, url: 'https://example.invalid/' });
    await choose(page, 'share');
    await toast(page, busy);
    assert.equal(await page.getAttribute('[data-command=share]', 'aria-disabled'), 'true');
    assert.equal((await messages(page, 'quendoShare')).length, 1);
    await answer(page, 'quendoNativeShareDidFinish', true, 'another');
    await answer(page, 'quendoNativeShareDidFinish', true, attemptId);
    await toast(page, done);
    await choose(page, 'share');
    assert.equal(await page.getAttribute('[data-command=share]', 'aria-disabled'), null);
    const second = await posted(page, 'quendoShare', 2);
    assert.notEqual(second.attemptId, attemptId);
    await answer(page, 'quendoNativeShareDidFinish', false, second.attemptId);
    await toast(page, nothing);
    assert.equal(await page.locator('.toast').count(), 3);
    await context.close();
  });

test('the host refuses a lone surrogate in a text, and the note stays', async () => {
  const half = { ...stored, notes: [{ id: 'ata', text: 'meio \ud83d aqui' }] };
  const { page, context } = await openIn('en', half);
  await choose(page, 'saveAs');
  const request = await posted(page, 'quendoSaveAs');
  assert.equal(request.filename, 'meio \ufffd aqui.md');
  assert.equal(request.content, 'meio \ud83d aqui');
  await answer(page, 'quendoNativeSaveAsDidFinish', false, 'ata', '', 'Não foi possível salvar o arquivo');
  await toast(page, 'Could not save the file');
  await page.evaluate('window.copied = quendoCopyCurrentNoteForWhatsApp(), undefined');
  const copy = await posted(page, 'quendoClipboard');
  await answer(page, 'quendoNativeClipboardDidFinish', false, copy.successMessage, copy.requestId);
  assert.equal(await page.evaluate('window.copied'), false);
  await toast(page, 'Could not copy');
  const { serialized } = (await page.evaluate('quendoPrepareForTermination()')) as { serialized: string };
  assert.match(serialized, /meio \\ud83d aqui/);
  await context.close();
});

test('without an open note, copying for WhatsApp says so', async () => {
  const { page, context } = await openIn('pt', { version: 1 });
  assert.equal(await page.evaluate('quendoCopyCurrentNoteForWhatsApp()'), false);
  await toast(page, 'Abra uma nota primeiro');
  assert.deepEqual(await messages(page, 'quendoClipboard'), []);
  await context.close();
});

test('a plain browser copies by itself', async () => {
  const { page, context } = await open(browser);
  await context.grantPermissions(['clipboard-read', 'clipboard-write']);
  await page.keyboard.press('Alt+n');
  await page.keyboard.type('**forte**');
  await choose(page, 'copyPlain');
  await toast(page, 'Text copied');
  assert.equal(await page.evaluate('navigator.clipboard.readText()'), 'forte');
  await page.keyboard.press('Control+Alt+c');
  await toast(page, 'Copied for WhatsApp');
  assert.equal(await page.evaluate('navigator.clipboard.readText()'), '*forte*');
  await context.close();
});

test('if the host cannot copy, the web view does, and the page says what else the host lacks', async () => {
  const { page, context } = await open(browser, {
    before: `${fakeHost(stored)} for (const name of ['Clipboard', 'Share', 'Export']) delete webkit.messageHandlers['quendo' + name];`,
  });
  await context.grantPermissions(['clipboard-read', 'clipboard-write']);
  await choose(page, 'copyMarkdown');
  await toast(page, 'Markdown copied');
  assert.equal(await page.evaluate('navigator.clipboard.readText()'), NOTE);
  await choose(page, 'share');
  await toast(page, 'Sharing is not available here');
  await choose(page, 'exportText');
  await toast(page, 'Could not export the file');
  await context.close();
});
