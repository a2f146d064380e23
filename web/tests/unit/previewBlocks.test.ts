import assert from 'node:assert/strict';
import { test } from 'node:test';
import { safeAddress } from '../../src/text/address';
import { blocksOf, type PreviewNode, previewGrammar } from '../../src/text/previewBlocks';

function read(source: string): PreviewNode[] {
  return blocksOf(source, previewGrammar.parse(source)).map((block) => block.make());
}

/** A compact form of a preview: each element as its name and children. */
function outline(piece: PreviewNode | string): string {
  if (typeof piece === 'string') return piece;
  const kind = piece.kind ? `.${piece.kind}` : '';
  const href = piece.href ? `=${piece.href}` : '';
  return `${piece.tag}${kind}${href}(${piece.children.map(outline).join('')})`;
}

const short = (source: string) => read(source).map(outline).join(' ');

function all(pieces: ReadonlyArray<PreviewNode | string>): PreviewNode[] {
  return pieces.flatMap((piece) => (typeof piece === 'string' ? [] : [piece, ...all(piece.children)]));
}

test('every kind of block is rendered', () => {
  assert.equal(short('# Um *dois* #'), 'h1(Um em(dois))');
  assert.equal(short('Um\n===\n\ntexto'), 'h1(Um) p(texto)');
  assert.equal(short('> um\n> dois'), 'blockquote(p(um\n dois))');
  assert.equal(short('- a\n  - b'), 'ul(li(p(a)ul(li(p(b)))))');
  assert.equal(short('- [x] feita\n- [ ] outra'), 'ul(li(p(span.done() feita))li(p(span.toDo() outra)))');
  assert.equal(short('---'), 'hr()');
  assert.equal(short('a **b** ~~c~~ `d`'), 'p(a strong(b) s(c) code(d))');
});

test('an ordered list keeps its first number', () => {
  assert.equal(read('7. sete\n8. oito')[0]?.start, 7);
});

test('code stays verbatim and keeps its language', () => {
  const [code] = read('> ```js\n> a <b>\n>   *c*\n> ```');
  const pre = all([code as PreviewNode]).find((piece) => piece.tag === 'pre');
  assert.deepEqual(pre?.children, ['a <b>\n  *c*']);
  assert.equal(pre?.language, 'js');
});

test('tables keep their columns, including empty ones', () => {
  assert.equal(
    short('| a | b |\n|---|--:|\n| 1 | |\n| | 2 |'),
    'table(thead(tr(th(a)th.end(b)))tbody(tr(td(1)td.end())tr(td()td.end(2))))',
  );
});

test('references are resolved wherever they are defined', () => {
  assert.equal(
    short('[a][x] e [x]\n\n[x]: https://exemplo.org/p'),
    'p(a=https://exemplo.org/p(a) e a=https://exemplo.org/p(x))',
  );
  assert.equal(short('[sem alvo] e [a][nada]'), 'p([sem alvo] e [a][nada])');
});

test('every HTML entity is decoded, and anything else stays as it is', () => {
  assert.equal(short('a&ccedil;&atilde;o &Eacute; &alpha;&NotEqualTilde;'), 'p(ação É α≂̸)');
  assert.equal(short('&#231;&#xE7; &hearts; &rarr; &frac12;'), 'p(çç ♥ → ½)');
  assert.equal(short('&Ccedil; &CCEDIL; &ccedil &nada; &#0; &#xD800;'), 'p(Ç &CCEDIL; &ccedil &nada; &#0; &#xD800;)');
  assert.equal(short('&constructor; &toString; &hasOwnProperty;'), 'p(&constructor; &toString; &hasOwnProperty;)');
});

test('entities and escapes are decoded once', () => {
  assert.equal(short('&lt;b&gt; \\*a\\* &amp;lt;'), 'p(<b> *a* &lt;)');
});

test('images become their labels, and raw markup is text', () => {
  assert.equal(short('![um *gato*](https://exemplo.org/a.png)'), 'p(span.image(um em(gato)))');
  assert.equal(short('a <b onclick="x()">b</b>'), 'p(a span.raw(<b onclick="x()">)bspan.raw(</b>))');
  assert.equal(short('<script>x()</script>'), 'div.raw(<script>x()</script>)');
});

test('only web and mail addresses become links', () => {
  const good: ReadonlyArray<readonly [string, string]> = [
    ['https://a.example/x?y=1#z', 'https://a.example/x?y=1#z'],
    ['HTTP://a.example', 'http://a.example/'],
    ['mailto:a@b.example', 'mailto:a@b.example'],
    ['a@b.example', 'mailto:a@b.example'],
    ['www.a.example', 'https://www.a.example/'],
  ];
  for (const [written, address] of good) assert.equal(safeAddress(written), address);
  const bad = [
    'javascript:alert(1)',
    ' JaVaScRiPt:alert(1)',
    'java\nscript:alert(1)',
    '\u0001javascript:alert(1)',
    '&#106;avascript:alert(1)',
    'data:text/html,<script>alert(1)</script>',
    'vbscript:x',
    'file:///etc/passwd',
    'blob:https://a.example/x',
    'about:blank',
    '//a.example/x',
    '/x',
    '#x',
    'x.html',
    '',
  ];
  for (const written of bad) assert.equal(safeAddress(written), null, written);
});

test('an address in the label of a link is not where it leads', () => {
  assert.equal(short('[https://a.example](https://b.example)'), 'p(a=https://b.example/(https://a.example))');
  assert.equal(short('[**www.a.example**](https://b.example)'), 'p(a=https://b.example/(strong(www.a.example)))');
});

test('endless nesting is cut off', () => {
  assert.ok(read(`${'> '.repeat(3000)}fim`).length > 0);
  assert.ok(read(`${'['.repeat(3000)}a${'](b)'.repeat(3000)}`).length > 0);
  assert.ok(read('*a **b '.repeat(2000)).length > 0);
});

test('a block keeps its key while it and the references are unchanged', () => {
  const keys = (source: string) => blocksOf(source, previewGrammar.parse(source)).map(({ key }) => key);
  const [first, , last] = keys('um\n\ndois\n\ntres');
  const changed = keys('um\n\nDOIS\n\ntres');
  assert.deepEqual([changed[0], changed[2]], [first, last]);
  assert.notEqual(keys('[a]\n\n[a]: http://b.c')[0], keys('[a]\n\n[a]: http://b.d')[0]);
});
