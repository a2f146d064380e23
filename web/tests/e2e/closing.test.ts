// Never retried: these tests are about losing text.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'playwright-core';
import { fakeHost, launch, messages, open, saved } from './browser';

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

interface FinalState {
  readonly serialized: string;
  readonly revision: number;
}

const close = (page: Page) => page.evaluate('quendoPrepareForTermination()') as Promise<FinalState>;
const cancel = (page: Page) => page.evaluate('quendoTerminationDidCancel()');

/** A document without its revision, which differs in every state. */
function content({ serialized }: Pick<FinalState, 'serialized'>): Record<string, unknown> {
  return { ...(JSON.parse(serialized) as Record<string, unknown>), revision: 0 };
}

/** Everything visible in the page that a command or a key would change. */
function seen(page: Page): Promise<unknown> {
  return page.evaluate(() => [
    [...document.querySelectorAll('dialog')].map((dialog) => dialog.className),
    [...document.querySelectorAll('[role=menu]')].map((menu) => menu.checkVisibility()),
    [...document.querySelectorAll('input, textarea')].map((field) => (field as HTMLInputElement).value),
    [...document.querySelectorAll('.cm-content')].map((text) => text.textContent),
    [...document.querySelectorAll('.tab')].map((tab) => [tab.textContent, tab.getAttribute('aria-selected')]),
    [...document.querySelectorAll('.toast')].map((toast) => toast.textContent),
    document.querySelector('.sidebar')?.checkVisibility(),
    document.querySelector('.preview')?.checkVisibility(),
    document.documentElement.style.fontSize,
    document.documentElement.lang,
  ]);
}

const KEYS = [
  ...['Control+Shift+p', 'Control+f', 'Control+h', 'Control+Alt+f', 'Control+Alt+g', 'Control+Alt+p', 'Control+Alt+r'],
  ...['Control+Equal', 'Control+0', 'Control+z', 'Control+a', 'Delete', 'Tab', 'Enter', 'Escape', 'x'],
];
const CALLS = [
  'createNote()',
  'openCapture()',
  'exportMarkdown()',
  'flushPendingSave()',
  'quendoSaveAsCurrentNote()',
  'quendoCloseCurrentTab()',
  "quendoRequestCloseTabs('all')",
  'quendoReopenClosedTab()',
  'quendoSwitchOpenTab(1)',
  'quendoShowTabOverview()',
  'quendoOpenShortcutGuide()',
  'void quendoCopyCurrentNoteForWhatsApp()',
  "document.getElementById('importFileInput').click()",
  "state.sidebarMode='all';renderSidebar();setDrawer('sidebar',{focus:false});document.getElementById('searchInput').focus();document.getElementById('searchInput').select()",
  'setDrawer(null)',
];

/** Tries every key, call and click, as a user or host unaware of the quit might. */
async function tryEverything(page: Page): Promise<void> {
  for (const call of CALLS) {
    await page.evaluate(call);
    await page.keyboard.type('q');
  }
  for (const key of KEYS) await page.keyboard.press(key);
  for (const [x, y] of [
    [20, 300],
    [660, 20],
    [660, 300],
    [1300, 20],
    [1200, 765],
  ] as const)
    await page.mouse.click(x, y);
  await page.mouse.click(660, 300, { button: 'middle' });
  for (const selector of [
    '.toast button',
    '.palette-row',
    '.capture .button',
    '.bin-button',
    '.tab-close',
    '.practice-step',
  ]) {
    await page.evaluate((one) => document.querySelector<HTMLElement>(one)?.click(), selector);
  }
  await page.evaluate("document.activeElement && document.execCommand('insertText', false, 'q')");
}

test('nothing opens, nothing is typed and nothing is done while the window is closing', async () => {
  const { page, context, trouble } = await open(browser, { before: fakeHost() });
  let chosen = 0;
  page.on('filechooser', () => {
    chosen++;
  });
  await page.evaluate('createNote()');
  await page.keyboard.type('um');
  await page.evaluate('createNote()');
  await page.keyboard.type('dois');
  await page.keyboard.press('ArrowLeft');
  await page.waitForSelector(saved);
  const final = await close(page);
  const before = await seen(page);
  const sent = await page.evaluate('host.messages.length');
  await tryEverything(page);
  assert.deepEqual(await seen(page), before);
  assert.equal(await page.evaluate('host.messages.length'), sent, 'nothing was asked of the host');
  assert.deepEqual(content(await close(page)), content(final), 'the state is the one that was handed over');
  await cancel(page);
  assert.deepEqual(await seen(page), before);
  await page.keyboard.type('i');
  assert.equal(await page.innerText('.cm-content'), 'doiis', 'writing goes on at the caret');
  await page.keyboard.press('Control+Shift+p');
  await page.waitForSelector('.palette[open]');
  await page.evaluate('openCapture()');
  await page.waitForSelector('.capture[open]');
  assert.equal(chosen, 0);
  assert.deepEqual(trouble, []);
  await context.close();
});

const OPEN: Record<string, readonly [opened: (page: Page) => Promise<unknown>, more: (page: Page) => Promise<void>]> = {
  capture: [
    (page) => page.evaluate('openCapture()'),
    async (page) => assert.equal(await page.inputValue('.capture-field'), 'typed more'),
  ],
  palette: [
    (page) => page.keyboard.press('Control+Shift+p'),
    async (page) => assert.equal(await page.inputValue('.palette-field'), 'typed more'),
  ],
  search: [
    (page) => page.focus('#searchInput'),
    async (page) => assert.equal(await page.inputValue('#searchInput'), 'typed more'),
  ],
  guide: [
    (page) => page.evaluate('quendoOpenShortcutGuide()'),
    async (page) => assert.match(await page.innerText('.practice-text .cm-content'), /^typed more/),
  ],
  'find panel': [
    (page) => page.keyboard.press('Control+f'),
    async (page) => assert.equal(await page.inputValue('.cm-panel input'), 'typed more'),
  ],
};

for (const [name, [show, more]] of Object.entries(OPEN)) {
  test(`text typed into the ${name} is still there after a cancelled quit`, async () => {
    const { page, context } = await open(browser, { before: fakeHost() });
    await page.evaluate('createNote()');
    await page.keyboard.type('texto');
    await show(page);
    await page.keyboard.type('typed');
    const final = await close(page);
    if (name === 'capture') assert.equal(content(final).captureDraft, 'typed');
    const before = await seen(page);
    await tryEverything(page);
    assert.deepEqual(await seen(page), before);
    assert.deepEqual(content(await close(page)), content(final));
    await cancel(page);
    await page.keyboard.type(' more');
    await more(page);
    await context.close();
  });
}

test('the note menu stays open, and works again', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.evaluate('createNote()');
  await page.keyboard.type('texto');
  await page.click('#noteMenuButton');
  await page.waitForSelector('#noteMenu:not([hidden])');
  await close(page);
  await tryEverything(page);
  await cancel(page);
  await page.waitForSelector('#noteMenu:not([hidden])');
  await page.click('[data-command=pin]');
  await page.waitForSelector('.row .pin');
  await context.close();
});

test("a toast's button waits until the quit is over", async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.clock.install();
  await page.evaluate('createNote()');
  await page.keyboard.type('texto');
  await page.click('#noteMenuButton');
  await page.click('[data-command=delete]');
  await page.focus('.toast button');
  const final = await close(page);
  assert.equal((content(final).bin as unknown[]).length, 1);
  await page.keyboard.press('Enter');
  await page.mouse.click(...(await centre(page, '.toast button')));
  await page.evaluate("document.querySelector('.toast button').click()");
  assert.deepEqual(content(await close(page)), content(final));
  // The way back is not lost over a long quit.
  await page.clock.runFor(20_000);
  await cancel(page);
  await page.clock.runFor(1000);
  await page.keyboard.press('Enter');
  assert.equal(await page.innerText('.cm-content'), 'texto');
  await context.close();
});

test('files that arrive while the window is closing open after the quit is cancelled, or stay with the host', async () => {
  const { page, context } = await open(browser, { before: fakeHost() });
  await page.waitForSelector(saved);
  const final = await close(page);
  await page.setInputFiles('#importFileInput', { name: 'a.md', mimeType: 'text/markdown', buffer: Buffer.from('# A') });
  const refused = await page.evaluate(
    "(() => { try { return quendoOpenNativeFiles([{ name: 'b.md', content: '# B' }]); } catch { return 'refused'; } })()",
  );
  assert.equal(refused, 'refused', 'the host keeps them');
  await page.waitForTimeout(200);
  assert.deepEqual(content(await close(page)), content(final));
  await cancel(page);
  await page.waitForSelector('.tab >> text=a.md');
  assert.equal(await page.evaluate("quendoOpenNativeFiles([{ name: 'b.md', content: '# B' }])"), 1);
  await context.close();
});

test("the host's answers and language still count while the window is closing", async () => {
  const { page, context } = await open(browser, { before: `${fakeHost()} host.answer = null;` });
  await page.evaluate('createNote()');
  await page.keyboard.type('texto');
  await page.waitForSelector('#saveState[data-state="saving"]');
  const [first] = await messages(page, 'quendoState');
  await close(page);
  await page.evaluate("quendoSetLanguage('es'); showToast('Listo')");
  await page.evaluate((revision) => {
    (window as unknown as { quendoNativeSaveDidFinish(...values: unknown[]): void }).quendoNativeSaveDidFinish(
      true,
      revision,
    );
  }, first?.body.revision);
  assert.equal(await page.innerText('.toast'), 'Listo');
  assert.equal(await page.getAttribute('html', 'lang'), 'en');
  await cancel(page);
  assert.equal(await page.getAttribute('html', 'lang'), 'es');
  await context.close();
});

async function centre(page: Page, selector: string): Promise<[number, number]> {
  const box = await page.locator(selector).boundingBox();
  assert.ok(box);
  return [box.x + box.width / 2, box.y + box.height / 2];
}
