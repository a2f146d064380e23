import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';
import path from 'node:path';
import { test } from 'node:test';
import { commands, reservedKeys } from '../../src/commands/table';
import type { Context } from '../../src/commands/context';
import type { HostAnswers } from '../../src/commands/port';
import { pageGlobals } from '../../src/host/globals';
import { catalogue } from '../../src/i18n/catalogue';
import { pickLanguage } from '../../src/i18n/language';

/** Which folder may import from which others. */
const MAY_IMPORT: Readonly<Record<string, ReadonlyArray<string>>> = {
  text: [],
  time: [],
  keyboard: [],
  i18n: ['keyboard'],
  dom: ['i18n'],
  state: ['text', 'time', 'i18n'],
  editor: ['text', 'time', 'keyboard', 'i18n', 'dom', 'state'],
  views: ['text', 'time', 'keyboard', 'i18n', 'dom', 'state', 'editor'],
  commands: ['text', 'time', 'keyboard', 'i18n', 'state', 'editor', 'views'],
  host: ['i18n', 'dom', 'commands'],
  app: ['text', 'time', 'keyboard', 'i18n', 'state', 'editor', 'views', 'commands', 'host'],
};
const LONGEST_FILE = 300;

const files = ['src', 'tests', 'scripts'].flatMap((folder) => walk(path.resolve(folder)));
const textFiles = files.filter((file) => /i18n.(?:catalogue|texts.\w+)\.ts$/.test(file));
const sources = files.filter((file) => /src.*\.ts$/.test(file));

function walk(folder: string): string[] {
  return readdirSync(folder, { withFileTypes: true }).flatMap((entry) => {
    const full = path.join(folder, entry.name);
    return entry.isDirectory() ? walk(full) : [full];
  });
}

function importsOf(file: string): string[] {
  const text = readFileSync(file, 'utf8');
  return [...text.matchAll(/(?:from|import)\s+'(\.[^']+)'/g)].map((match) => {
    const target = path.resolve(path.dirname(file), match[1] ?? '');
    return target.endsWith('.css') ? target : `${target}.ts`;
  });
}

function folderOf(file: string): string {
  return path.relative(path.resolve('src'), file).split(path.sep)[0] ?? '';
}

test('folders import only from allowed folders', () => {
  for (const file of sources) {
    for (const target of importsOf(file)) {
      if (target.endsWith('.css')) continue;
      const [from, to] = [folderOf(file), folderOf(target)];
      assert.ok(
        from === to || MAY_IMPORT[from]?.includes(to),
        `${path.relative('.', file)} imports ${path.relative('.', target)}`,
      );
    }
  }
});

test('no circular imports', () => {
  const done = new Set<string>();
  const visit = (file: string, trail: string[]): void => {
    assert.ok(!trail.includes(file), [...trail, file].map((f) => path.relative('.', f)).join(' > '));
    if (done.has(file) || file.endsWith('.css')) return;
    for (const target of importsOf(file)) visit(target, [...trail, file]);
    done.add(file);
  };
  for (const file of sources) visit(file, []);
});

test('file names are unique', () => {
  const seen = new Map<string, string>();
  for (const file of files.filter((name) => name.endsWith('.ts'))) {
    const name = path.basename(file);
    assert.equal(seen.get(name), undefined, `${file} and ${seen.get(name)}`);
    seen.set(name, file);
  }
});

test('elements are created, and work is sliced, in one place each', () => {
  const only = (file: string, pattern: RegExp) => {
    const home = path.resolve('src', file);
    assert.match(readFileSync(home, 'utf8'), pattern);
    for (const source of sources.filter((name) => name !== home)) {
      assert.doesNotMatch(readFileSync(source, 'utf8'), pattern, path.relative('.', source));
    }
  };
  only('dom/elements.ts', /createElement/);
  only('time/slices.ts', /while \([^\n]*\bnow\(\) < /);
});

test('no file is too long to read', () => {
  for (const file of files) {
    const lines = readFileSync(file, 'utf8').split('\n').length;
    assert.ok(lines <= LONGEST_FILE, `${path.relative('.', file)}: ${lines} lines`);
  }
});

test('only the globals file puts names on the window', () => {
  for (const file of sources.filter((name) => !name.includes(`${path.sep}host${path.sep}`))) {
    assert.doesNotMatch(readFileSync(file, 'utf8'), /window\.\w+\s*=[^=]/, file);
  }
});

test('no text is defined twice', () => {
  const rows = textFiles.flatMap((file) => [...readFileSync(file, 'utf8').matchAll(/^ {2}'(.+?)': \[/gm)]);
  assert.equal(rows.length, Object.keys(catalogue).length);
});

test('every text exists in every language, with the same placeholders', () => {
  const holes = (text: string) => (text.match(/\{\w+\}|\$/g) ?? []).sort().join();
  for (const [key, row] of Object.entries(catalogue)) {
    assert.equal(row.length, 3, key);
    for (const text of row) {
      assert.ok(text.trim(), key);
      assert.equal(holes(text), holes(row[0]), key);
    }
  }
});

test('every text is used', () => {
  const code = sources
    .filter((file) => !textFiles.includes(file))
    .map((f) => readFileSync(f, 'utf8'))
    .join();
  for (const key of Object.keys(catalogue)) {
    const base = key.replace(/\.(one|many|none|some|pt|en|es|system|light|dark)$/, '');
    assert.ok(code.includes(`'${key}'`) || code.includes(`'${base}'`) || code.includes(`\`${base}.`), key);
  }
});

test('an unknown system language falls back to Portuguese', () => {
  assert.equal(pickLanguage(['fr-FR', 'es-AR']), 'es');
  assert.equal(pickLanguage(['ja']), 'pt');
  assert.equal(pickLanguage([]), 'pt');
});

test('the globals define every name the host calls', () => {
  const context = { workspace: { settings: { sidebarMode: 'all' } }, shell: {} } as unknown as Context;
  const globals = pageGlobals(context, {} as HostAnswers, undefined) as Record<string, unknown>;
  const names = [
    'quendoNativeSaveDidFinish quendoNativeExportDidFinish quendoNativeSaveAsDidFinish',
    'quendoNativeClipboardDidFinish quendoNativeShareDidFinish showToast',
    'quendoPrepareForTermination quendoTerminationDidCancel quendoOpenNativeFiles',
    'quendoCopyCurrentNoteForWhatsApp createNote openCapture exportMarkdown flushPendingSave',
    'quendoSaveAsCurrentNote quendoCloseCurrentTab quendoRequestCloseTabs quendoReopenClosedTab',
    'quendoSwitchOpenTab quendoShowTabOverview quendoOpenShortcutGuide quendoSetLanguage',
    'renderSidebar setDrawer',
  ].join(' ');
  for (const name of names.split(' ')) assert.equal(typeof globals[name], 'function', name);
  assert.equal((globals.state as { sidebarMode: string }).sidebarMode, 'all');
});

test('no two commands share a key', () => {
  const taken = Object.values(commands).flatMap((command) => ('key' in command ? [command.key] : []));
  assert.equal(new Set(taken).size, taken.length);
  assert.ok(taken.every((key) => reservedKeys.includes(key)));
});
