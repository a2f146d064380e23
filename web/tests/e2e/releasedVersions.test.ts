// Never retried: these tests are about losing text.
import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import type { Browser } from 'playwright-core';
import { DOCUMENT_VERSION } from '../../src/state/model';
import { fakeHost, lastState, launch, open } from './browser';

const FIXTURES = path.resolve('../tests/corpus/state');
const DAY = 86_400_000;

interface Stored {
  readonly version: number;
  readonly revision: number;
  readonly notes: ReadonlyArray<Record<string, unknown>>;
  readonly tabs: { readonly active: string };
  readonly places: Readonly<Record<string, unknown>>;
  readonly [member: string]: unknown;
}

interface Shown {
  readonly tabs: string[];
  readonly active: string;
  readonly rows: string[];
}

const versions = readdirSync(FIXTURES, { withFileTypes: true }).flatMap((one) => (one.isDirectory() ? one.name : []));
const read = (version: string, name: string) =>
  JSON.parse(readFileSync(path.join(FIXTURES, version, name), 'utf8')) as unknown;

/** Lets the page's clock begin a day after the document was written: its bin is emptied with time. */
const dayAfter = ({ revision }: Stored) => `{
  const now = Date.now.bind(Date), late = now() - ${revision + DAY};
  Date.now = () => now() - late;
}`;

/** The members that these are, without those that the present version may have added. */
function sameMembers(now: unknown, then: unknown): unknown {
  if (Array.isArray(then) && Array.isArray(now) && then.length === now.length) {
    return then.map((one, at) => sameMembers(now[at], one));
  }
  if (typeof then !== 'object' || then === null || typeof now !== 'object' || now === null || Array.isArray(then))
    return now;
  const found = now as Record<string, unknown>;
  return Object.fromEntries(Object.entries(then).map(([name, one]) => [name, sameMembers(found[name], one)]));
}

let browser: Browser;
before(async () => {
  browser = await launch();
});
after(() => browser.close());

test('there are documents of released versions', () => {
  assert.ok(versions.includes('1.0.0'));
});

for (const version of versions) {
  test(`a document of ${version} opens as that version showed it, and is saved with all that it held`, async () => {
    const stored = read(version, 'document.json') as Stored;
    const shown = read(version, 'shown.json') as Shown;
    const { page, context, trouble } = await open(browser, { before: dayAfter(stored) + fakeHost(stored) });
    assert.deepEqual(await page.locator('[role=tab]').allInnerTexts(), shown.tabs);
    assert.equal(await page.innerText('[role=tab][aria-selected=true]'), shown.active);
    assert.deepEqual(await page.locator('#sidebar .row-title').allInnerTexts(), shown.rows);
    assert.equal(await page.locator('[role=alert]').count(), 0, 'it is not read-only');

    await page.focus('.work .cm-content');
    await page.keyboard.press('Control+End');
    await page.keyboard.type('!');
    await page.evaluate('flushPendingSave()');
    await page.waitForFunction(
      'host.messages.some(({ name, body }) => name === "quendoState" && body.serialized.includes("!"))',
    );
    const saved = (await lastState(page)) as unknown as Stored;
    assert.equal(saved.version, DOCUMENT_VERSION);
    assert.ok(saved.revision > stored.revision);
    const { active } = stored.tabs;
    const edited = (note: Record<string, unknown>) => note.id === active;
    const { text, updated } = stored.notes.find(edited) ?? {};
    assert.equal(saved.notes.find(edited)?.text, `${text}!`);
    const back = {
      ...saved,
      version: stored.version,
      revision: stored.revision,
      notes: saved.notes.map((note) => (edited(note) ? { ...note, text, updated } : note)),
      places: { ...saved.places, [active]: stored.places[active] },
    };
    assert.deepEqual(sameMembers(back, stored), stored);
    assert.deepEqual(trouble, []);
    await context.close();
  });
}
