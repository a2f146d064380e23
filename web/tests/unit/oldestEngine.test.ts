import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';
import { newInScript } from '../../scripts/engine/newInScript';
import { newInStyles } from '../../scripts/engine/newInStyles';

const folder = mkdtempSync(path.join(tmpdir(), 'quendo-engine-'));
after(() => rmSync(folder, { recursive: true }));
execFileSync(process.execPath, ['build.mjs', '--outdir', folder]);
const read = (name: string) => readFileSync(path.join(folder, 'assets', name), 'utf8');

/** What the page uses although the oldest engine lacks it, and why it may. */
const inScript: Readonly<Record<string, string>> = {
  auxclick: 'the middle button closes a tab; so do its own button and a key',
  requestIdleCallback: 'the parser uses a timer instead',
  cancelIdleCallback: 'only with the former',
  '.timeRemaining': 'only with the former',
  'navigator.scheduling': 'the parser looks for it first',
  '.isInputPending': 'only with the former',
  '.getComposedRanges': 'the editor looks for it first',
  '.adoptedStyleSheets': 'only in a shadow tree, and there is none',
  '.targetTouches': 'only after a touch',
  '.EditContext': 'only on Android, as are the members of its events below',
  '.updateRangeStart': '',
  '.updateRangeEnd': '',
  '.rangeStart': '',
  '.rangeEnd': '',
  '.updateCharacterBounds': '',
  '.getTextFormats': '',
  '.underlineStyle': '',
  '.underlineThickness': '',
  '.updateSelectionBounds': '',
  '.updateText': '',
  command: 'an attribute that the HTML grammar knows',
  manifest: 'the same',
  '.closedBy': "a grammar's property of that name",
  '.phrases': "an editor's option of that name",
  '.resize': "a tooltip's property of that name",
};

const inStyles: Readonly<Record<string, string>> = {
  'scrollbar-width': 'scroll bars look like any other',
  'scrollbar-width: thin': 'the same',
  'scrollbar-width: none': 'the tabs hide theirs in an older way, too',
  'scrollbar-color': 'scroll bars look like any other',
};

test('the script uses nothing newer than the oldest engine', () => {
  assert.deepEqual([...newInScript(read('quendo.js'))].sort(), Object.keys(inScript).sort());
});

test('the styles use nothing newer than the oldest engine', () => {
  assert.deepEqual([...newInStyles(read('quendo.css'))].sort(), Object.keys(inStyles).sort());
});

test('newer features of a script are found', () => {
  const samples: Readonly<Record<string, string>> = {
    'Array.fromAsync(a)': 'Array.fromAsync',
    'a.union(b)': '.union',
    'const { withResolvers: w } = a': '.withResolvers',
    'Object.groupBy(a, b)': 'Object.groupBy',
    'AbortSignal.any(a)': 'AbortSignal.any',
    'new Intl.DurationFormat()': 'Intl.DurationFormat',
    'a.showPopover()': '.showPopover',
    'navigator.userActivation': 'navigator.userActivation',
    'document.startViewTransition(a)': 'document.startViewTransition',
    'new ToggleEvent("a")': 'ToggleEvent',
    'a.addEventListener("beforetoggle", b)': 'beforetoggle',
    'a.setAttribute("popovertarget", b)': 'popovertarget',
    'h("p", { attrs: { popover: "auto" } })': 'popover',
    'h("p", { on: { scrollend: a } })': 'scrollend',
    'a.matches(".b:popover-open")': ':popover-open',
    '/(?<=a)b/.test(c)': 'lookbehind',
    'new RegExp("(?<!a)b")': 'lookbehind',
    '/[a--b]/v.test(c)': 'flag v',
    '/(?i:a)b/.test(c)': 'flags in a pattern',
  };
  for (const [text, name] of Object.entries(samples)) assert.deepEqual([...newInScript(text)], [name], text);
});

test('what the oldest engine has is not', () => {
  const script = `[].toSorted().at(-1); a.inert = true; structuredClone(b); new ResizeObserver(c); a.replaceChildren();
    a.showModal(); Object.hasOwn(a, b); 'x'.replaceAll('y', 'z'); a.addEventListener('pointerdown', b);
    a.matches(':has(b)'); a.closest(':focus-visible'); /(?<name>a)(?=b)(?!c)(?:d)/u.test(e);
    class A { union() {} } new A().union(); const ML = 1; open(ML); window.open(); const url = 'https://a:popover';`;
  assert.deepEqual([...newInScript(script)], []);
  const styles = `@media (prefers-reduced-motion: reduce) and (min-width: 3em) { a:has(> b)::before { inset: 0 1dvh;
    color: rgb(0 0 0 / 5%); width: max(1px, min(2rem, 3cqw)); aspect-ratio: 1; --own: 1 } }
    @layer x; @container (width > 1px) { a { -webkit-user-select: none; user-select: none; background: url(a:b) } }`;
  assert.deepEqual([...newInStyles(styles)], []);
});

test('newer features of styles are found', () => {
  const samples: Readonly<Record<string, ReadonlyArray<string>>> = {
    '@starting-style{a{color:red}}': ['@starting-style'],
    '@property --a{syntax:"*"}': ['@property', 'syntax'],
    '@media (prefers-reduced-transparency){a{color:red}}': ['@media (prefers-reduced-transparency)'],
    'a:popover-open{color:red}': [':popover-open'],
    'a{field-sizing:content}': ['field-sizing', 'field-sizing: content'],
    'a{user-select:none}': ['user-select'],
    'a{color:color-mix(in srgb,red,blue)}': ['color-mix()'],
    'a{color:light-dark(red,blue)}': ['light-dark()'],
    'a{text-wrap:balance}': ['text-wrap', 'text-wrap: balance'],
    'a{--b:1rlh;width:2rlh}': ['rlh'],
  };
  for (const [text, names] of Object.entries(samples)) assert.deepEqual([...newInStyles(text)].sort(), names, text);
});
