import assert from 'node:assert/strict';
import { test } from 'node:test';
import domino from '@mixmark-io/domino';
import { lostImages, toMarkdown } from '../../src/editor/htmlToMarkdown';
import { clean, disarmed, isCode, isTooFull } from '../../src/editor/pastedHtml';
import { htmlCorpus } from '../e2e/hostileHtml';
import { flavours } from './flavours';

function bodyOf(html: string): HTMLElement {
  return domino.createDocument(disarmed(html)).documentElement;
}

function pasted(html: string): string {
  const body = bodyOf(html);
  clean(body);
  return toMarkdown(body);
}

for (const { from, html, markdown } of flavours) {
  test(`${from} is pasted as Markdown`, () => assert.equal(pasted(html), markdown));
}

test('addresses that would act are left out, their text stays', () => {
  for (const address of [
    'javascript:ran()',
    ' JaVaScRiPt:ran()',
    'data:text/html,x',
    'file:///etc/passwd',
    '/a',
    '#a',
  ]) {
    assert.equal(pasted(`<a href="${address}">text</a>`), 'text', address);
    assert.equal(pasted(`<img src="${address}" alt="text">`), 'text', address);
  }
});

test('what is not text is left out', () => {
  assert.equal(pasted('a<script>b</script><style>c</style><svg><text>d</text></svg><iframe src=x>e</iframe>f'), 'af');
  assert.equal(pasted('a<input value="b"><button>c</button><select><option>d</select><p hidden>e</p>'), 'a');
  assert.equal(pasted('<p>a</p><style>b'), 'a', 'even if it has no end');
});

test('inline styles and handlers have no names that a page would act on', () => {
  assert.equal(
    disarmed('<p style="a" ONCLICK=b>style=c on=d</p>'),
    '<p data-style="a" data-ONCLICK=b>style=c on=d</p>',
  );
});

test('images that cannot be kept are told by name', () => {
  const html =
    '<img src="https://a.example/b.png"><img src="data:image/png;base64,A" alt="cat"><img src="file:///c:/d/e.png"><img src="data:,">';
  assert.deepEqual(lostImages(bodyOf(html), 'image'), ['cat', 'e.png', 'image']);
});

test('a clipboard that is one piece of code stays as it is', () => {
  assert.ok(isCode(bodyOf('<html><body><!--StartFragment--><pre>a\n b</pre></body></html>')));
  const editor = '<div style="font-family: Menlo, monospace; white-space: pre;"><div><span>a</span></div></div>';
  assert.ok(isCode(bodyOf(`<meta charset="utf-8">${editor}`)));
  assert.ok(!isCode(bodyOf('<p>a</p><pre>b</pre>')));
  assert.ok(!isCode(bodyOf('<span style="white-space: pre-wrap">a</span>')));
});

test('a clipboard with too many elements is noticed', () => {
  assert.ok(isTooFull(bodyOf('<i></i>'.repeat(20_001))));
  assert.ok(!isTooFull(bodyOf('<i></i>'.repeat(2000))));
});

test('hostile HTML leaves neither tags nor addresses that act, and takes no time', () => {
  for (const part of htmlCorpus) {
    const started = performance.now();
    const markdown = pasted(part).replace(/^(`{3,})[\s\S]*?^\1$/gm, '');
    const took = performance.now() - started;
    assert.ok(took < 2000, `${took} ms: ${part.slice(0, 100)}`);
    assert.doesNotMatch(markdown, /(?:^|[^\\])<(?!https?:|mailto:|\S+@)[a-z!?]/i, part);
    assert.doesNotMatch(markdown, /[^\\]\]\((?!https?:|mailto:)/, part);
  }
});
