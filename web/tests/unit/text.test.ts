import assert from 'node:assert/strict';
import { test } from 'node:test';
import { decodeText } from '../../src/text/decode';
import { findFolded, fold } from '../../src/text/fold';
import { fileNameFor, formatOf, inFormat, shorten, shortFileName, utf8Length } from '../../src/text/names';
import { readHead, stripMarks, withoutMarks } from '../../src/text/title';

test('folding drops case and accents', () => {
  assert.equal(fold('Ação ÜBER señor'), 'acao uber senor');
  assert.equal(fold('Acao'), fold('AÇÃO'));
});

test('letters fold alike alone, in Latin and in other texts', () => {
  const slowly = (text: string) =>
    text
      .normalize('NFD')
      .replace(/\p{M}+/gu, '')
      .toLowerCase();
  const latin = Array.from({ length: 256 }, (_, code) => String.fromCharCode(code));
  for (const letter of latin) assert.equal(fold(letter), slowly(letter), JSON.stringify(letter));
  assert.equal(fold(latin.join('')), slowly(latin.join('')));
  assert.equal(fold(`${latin.join('')}Ā🎉`), `${slowly(latin.join(''))}a🎉`);
  for (let code = 0; code < 0x20000; code++) {
    if (code === 0xd800) code = 0xe000;
    const letter = String.fromCodePoint(code);
    if (fold(letter) !== slowly(letter)) assert.fail(`U+${code.toString(16)}`);
  }
  const mixed = 'A\u0301 “Ação” – Ελλάδα, ТЁМНЫЙ; ﬁ Å K İI 한국 がく 🎉e\u0303';
  assert.equal(fold(mixed), slowly(mixed));
  const long = `\ufeff${'한국어 '.repeat(40_000)}É`;
  assert.equal(fold(long), slowly(long));
  assert.equal(fold('Um \ud83c e \udf89.'), 'um \ufffd e \ufffd.', 'each keeps its length');
});

test('a folded match is located in the accented text', () => {
  const text = 'Uma ação! 🎉 Canção';
  const first = findFolded(text, 'acao');
  assert.deepEqual(first && text.slice(first.from, first.to), 'ação');
  const last = findFolded(text, 'cancao');
  assert.deepEqual(last && text.slice(last.from, last.to), 'Canção');
  assert.deepEqual(findFolded('Uma AÇÃO', 'acao'), { from: 4, to: 8 });
  const decomposed = 'cafe\u0301 bom';
  const match = findFolded(decomposed, 'cafe');
  assert.ok(match && decomposed.slice(match.from, match.to).startsWith('cafe'));
  assert.equal(findFolded(text, 'nada'), null);
  assert.equal(findFolded(text, ''), null);
});

test('the title is the first non-blank line, without marks', () => {
  const cases: Array<[string, string]> = [
    ['# Título', 'Título'],
    ['\n\n  ## Dois ##\nresto', 'Dois'],
    ['- [ ] comprar **pão**', 'comprar pão'],
    ['> > 3. item', 'item'],
    ['![foto](a.png) de [nós](http://x)', 'foto de nós'],
    ['---\n\nDepois', 'Depois'],
    ['snake_case_name', 'snake_case_name'],
    ['2 * 3 * 4', '2 * 3 * 4'],
    ['- [x] # [[Casa]] e [[Rua|a rua]]', 'Casa e a rua'],
    ['1. [ ] ovos', 'ovos'],
    ['# 1. Início', '1. Início'],
    ['- - -\n\nDepois', 'Depois'],
    ['*a* e _b_', 'a e b'],
    ['#hashtag', '#hashtag'],
    ['a\u0000b\u2028c', 'a b c'],
    ['   \n\n', ''],
  ];
  for (const [text, title] of cases) assert.equal(readHead(text).title, title, text);
});

test('a long title is cut between characters', () => {
  const { title } = readHead('🎉'.repeat(100));
  assert.equal(title.length, 120);
  assert.ok(!/[\ud800-\udbff]$/.test(readHead(`x${'🎉'.repeat(100)}`).title));
});

test('words keep their place in a line without its marks', () => {
  const parts = (line: string, words: string) => {
    const [before = '', after = ''] = line.split(words);
    return Object.values(withoutMarks(before, words, after)).join('/');
  };
  assert.equal(parts('- [ ] ver **[[Plano]]** e _isto_', 'Plano'), 'ver /Plano/ e isto');
  assert.equal(parts('## [[ plano |o texto]] novo', 'plano'), '/o texto/ novo');
  assert.equal(parts('`um` plano [x](y)', 'plano'), 'um /plano/ x');
  assert.equal(parts('veja [x](https://plano.example)', 'plano'), 'veja [x](https:///plano/.example)');
});

test('the excerpt is the text that follows, on one line', () => {
  assert.equal(readHead('# T\n\n- um\n- dois').excerpt, 'um dois');
  assert.equal(readHead('# T\n```js\nconst a\n```').excerpt, 'const a');
  assert.equal(readHead('# T\n| a | **b** |\n|---|:-:|\n| 1 | 2 |').excerpt, 'a · b 1 · 2');
  assert.equal(stripMarks('   '), '');
});

test('characters that file systems reject are replaced in file names', () => {
  assert.equal(fileNameFor('Ata: 1/2 "final"?', 'markdown'), 'Ata- 1-2 -final-.md');
  assert.equal(fileNameFor('...', 'plain'), 'nota.txt');
  assert.equal(fileNameFor('', 'markdown'), 'nota.md');
  assert.equal(fileNameFor('é'.repeat(300), 'plain').length, 84);
  assert.equal(formatOf('NOTES.MD'), 'markdown');
  assert.equal(formatOf('README'), 'plain');
  assert.equal(formatOf('.md'), 'plain');
});

test("a file name gets a format's extension unless it has a suitable one", () => {
  const cases: Array<[string, string, string]> = [
    ['plano.md', 'plano.md', 'plano.txt'],
    ['plano.MARKDOWN', 'plano.MARKDOWN', 'plano.txt'],
    ['dados.csv', 'dados.md', 'dados.csv'],
    ['nota', 'nota.md', 'nota.txt'],
    ['ata v1.2', 'ata v1.2.md', 'ata v1.2.txt'],
    ['Sr. João', 'Sr. João.md', 'Sr. João.txt'],
    ['.perfil', '.perfil.md', '.perfil.txt'],
  ];
  for (const [name, markdown, plain] of cases) {
    assert.equal(inFormat(name, 'markdown'), markdown);
    assert.equal(inFormat(name, 'plain'), plain);
  }
});

test('a long file name is cut before its extension, between graphemes', () => {
  assert.equal(shortFileName('curto.md'), 'curto.md');
  assert.equal(shortFileName(`${'a'.repeat(300)}.md`), `${'a'.repeat(177)}.md`);
  assert.equal(shortFileName(`${'é'.repeat(300)}.txt`), `${'é'.repeat(118)}.txt`);
  const family = '👨‍👩‍👧‍👦';
  const name = shortFileName(`x${family.repeat(40)}.md`);
  assert.equal(name, `x${family.repeat(9)}.md`);
  assert.ok(utf8Length(shortFileName('\u4e2d'.repeat(5000))) <= 240);
});

test('a text is cut to a byte limit between graphemes, with lone surrogates replaced', () => {
  assert.equal(shorten('ação', 100), 'ação');
  assert.equal(shorten('ação', 3), 'aç');
  assert.equal(shorten('a🎉', 4), 'a');
  assert.equal(shorten('cafe\u0301', 5), 'caf');
  assert.equal(shorten('a\ud83d b', 100), 'a\ufffd b');
  assert.ok(utf8Length(shorten('🎉'.repeat(1000), 2000)) === 2000);
});

test('lengths are counted in UTF-8', () => {
  for (const text of ['', 'abc', 'é', '€', '🎉', 'a🎉é', '\ud83d', '\ude00x', '\ud83d\ud83d\ude00']) {
    assert.equal(utf8Length(text), new TextEncoder().encode(text).length, JSON.stringify(text));
  }
});

const bytes = (...values: number[]) => new Uint8Array(values);
const utf16 = (text: string) => new Uint8Array([...text].flatMap((c) => [c.charCodeAt(0) & 255, c.charCodeAt(0) >> 8]));

test('text files are decoded in the common encodings', () => {
  assert.equal(decodeText(bytes()), '');
  assert.equal(decodeText(new TextEncoder().encode('olá 🎉')), 'olá 🎉');
  assert.equal(decodeText(bytes(0xef, 0xbb, 0xbf, 0x61)), 'a');
  assert.equal(decodeText(new Uint8Array([0xff, 0xfe, ...utf16('olá')])), 'olá');
  assert.equal(decodeText(bytes(0xfe, 0xff, 0, 0x61)), 'a');
  assert.equal(decodeText(utf16('quase só ASCII')), 'quase só ASCII');
  assert.equal(decodeText(bytes(0x63, 0x61, 0x66, 0xe9)), 'café');
});

test('binary files are refused', () => {
  assert.equal(decodeText(bytes(0x89, 0x50, 0x4e, 0x47, 0x0d)), null);
  assert.equal(decodeText(bytes(0x25, 0x50, 0x44, 0x46, 0x2d, 0x31)), null);
  assert.equal(decodeText(bytes(0x61, 0, 0x62, 0x63, 0x64)), null);
  assert.equal(decodeText(bytes(1, 2, 3, 4, 5, 6)), null);
});
