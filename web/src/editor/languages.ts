import { css } from '@codemirror/lang-css';
import { html } from '@codemirror/lang-html';
import { javascript } from '@codemirror/lang-javascript';
import { php } from '@codemirror/lang-php';
import { LanguageDescription, LanguageSupport, StreamLanguage, type StreamParser } from '@codemirror/language';
import { tags } from '@lezer/highlight';
import type { Note } from '../state/model';
import { extensionOf, formatOf } from '../text/names';
import { csvLanguage } from './csv';

type Loader = () => Promise<LanguageSupport>;

/** Some of the legacy grammars emit "property" for what has another name here. */
const tokenTable = { property: tags.propertyName };

const stream = async (parser: Promise<StreamParser<unknown>>): Promise<LanguageSupport> =>
  new LanguageSupport(StreamLanguage.define({ ...(await parser), tokenTable }));

const clike =
  (name: 'c' | 'cpp' | 'csharp' | 'java' | 'kotlin'): Loader =>
  () =>
    stream(import('@codemirror/legacy-modes/mode/clike').then((modes) => modes[name]));

const script =
  (typescript: boolean): Loader =>
  async () =>
    javascript({ typescript, jsx: !typescript });

/**
 * Languages by file extension, with their other names in code blocks. Dynamic imports are part of the single
 * bundle, but do not run until a note needs them. They only pay off for modules that import nothing from the
 * editor: the bundler would wrap everything they import as well, including the editor itself, and the page
 * would start later, not sooner.
 */
const rows: ReadonlyArray<readonly [names: string, load: Loader]> = [
  ['js javascript jsx mjs cjs node', script(false)],
  ['ts typescript tsx mts cts', script(true)],
  ['css scss less', async () => css()],
  ['html htm xhtml svelte vue', async () => html({ autoCloseTags: false })],
  ['php', async () => php()],
  ['csv tsv', async () => new LanguageSupport(csvLanguage)],
  ['json jsonc json5 geojson', () => stream(import('@codemirror/legacy-modes/mode/javascript').then((m) => m.json))],
  ['py python pyw', () => stream(import('@codemirror/legacy-modes/mode/python').then((m) => m.python))],
  [
    'sql mysql postgres postgresql sqlite',
    () => stream(import('@codemirror/legacy-modes/mode/sql').then((m) => m.standardSQL)),
  ],
  ['yaml yml', () => stream(import('@codemirror/legacy-modes/mode/yaml').then((m) => m.yaml))],
  ['xml svg xsd xsl rss', () => stream(import('@codemirror/legacy-modes/mode/xml').then((m) => m.xml))],
  ['sh bash zsh shell console', () => stream(import('@codemirror/legacy-modes/mode/shell').then((m) => m.shell))],
  ['go golang', () => stream(import('@codemirror/legacy-modes/mode/go').then((m) => m.go))],
  ['rs rust', () => stream(import('@codemirror/legacy-modes/mode/rust').then((m) => m.rust))],
  ['swift', () => stream(import('@codemirror/legacy-modes/mode/swift').then((m) => m.swift))],
  ['rb ruby', () => stream(import('@codemirror/legacy-modes/mode/ruby').then((m) => m.ruby))],
  ['c h', clike('c')],
  ['cpp c++ cc cxx hpp hh', clike('cpp')],
  ['cs csharp c#', clike('csharp')],
  ['java', clike('java')],
  ['kt kotlin kts', clike('kotlin')],
];

const known = new Map<string, LanguageDescription>();
for (const [names, load] of rows) {
  const [name = '', ...alias] = names.split(' ');
  const description = LanguageDescription.of({ name, alias, load });
  for (const each of [name, ...alias]) known.set(each, description);
}

/** The language for a name, either a file extension or a code block's label. */
export function languageNamed(name: string): LanguageDescription | null {
  return known.get(name.toLowerCase()) ?? null;
}

/** The language requested by a code block's info string. */
export function languageOfFence(info: string): LanguageDescription | null {
  const name = /[^\s{},.=]+/.exec(info)?.[0] ?? '';
  return languageNamed(name);
}

/**
 * How a note's text is parsed: "markdown", "plain" or the name of a language. The file extension decides; a
 * .txt file does not turn a Markdown note into plain text.
 */
export function syntaxOf({ fileName, source, format }: Pick<Note, 'fileName' | 'source' | 'format'>): string {
  const known = fileName ?? source ?? '';
  if (formatOf(known) === 'markdown') return 'markdown';
  return languageNamed(extensionOf(known))?.name ?? format;
}
