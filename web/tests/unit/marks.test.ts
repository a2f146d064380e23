import assert from 'node:assert/strict';
import { test } from 'node:test';
import { toPlainText } from '../../src/text/plain';
import { toWhatsApp } from '../../src/text/whatsapp';

/** Markdown, its WhatsApp form, its plain form. */
type Row = readonly [markdown: string, whatsapp: string, plain: string];

function check(rows: ReadonlyArray<Row>): void {
  for (const [markdown, whatsapp, plain] of rows) {
    assert.equal(toWhatsApp(markdown), whatsapp, `WhatsApp: ${markdown}`);
    assert.equal(toPlainText(markdown), plain, `plain: ${markdown}`);
  }
}

test('emphasis', () => {
  check([
    ['**negrito** e *itálico* e ~~fora~~', '*negrito* e _itálico_ e ~fora~', 'negrito e itálico e fora'],
    ['__a__ _b_', '*a* _b_', 'a b'],
    ['***tudo***', '_*tudo*_', 'tudo'],
    ['**a _b_ ~~c~~ d**', '*a _b_ ~c~ d*', 'a b c d'],
    ['*a **b** c*', '_a *b* c_', 'a b c'],
    ['**a **b** c**', '*a b c*', 'a b c'],
    ['**uma\nduas**', '*uma*\n*duas*', 'uma\nduas'],
    ['**a *b\nc* d**', '*a _b_*\n*_c_ d*', 'a b\nc d'],
    ['(**a**), "*b*"!', '(*a*), "_b_"!', '(a), "b"!'],
    ['**ação**! 🎉**é**🎉', '*ação*! 🎉*é*🎉', 'ação! 🎉é🎉'],
    ['**aberto e *só', '**aberto e *só', '**aberto e *só'],
    ['', '', ''],
  ]);
});

test('marks inside words, which WhatsApp would show literally', () => {
  check([
    ['foo**bar**baz', 'foobarbaz', 'foobarbaz'],
    ['**Nota**s', 'Notas', 'Notas'],
    ['2*3*4 e n*m*k e 2**3**4', '2*3*4 e n*m*k e 2**3**4', '2*3*4 e n*m*k e 2**3**4'],
    ['snake_case_name 2 * 3 * 4', 'snake_case_name 2 * 3 * 4', 'snake_case_name 2 * 3 * 4'],
    ['~um só~', '~um só~', '~um só~'],
  ]);
});

test('code stays verbatim', () => {
  check([
    ['`a*b*c` e `[x](y)`', '`a*b*c` e `[x](y)`', 'a*b*c e [x](y)'],
    ['**`x_y_z`**', '*`x_y_z`*', 'x_y_z'],
    ['`` a`b ``', '`` a`b ``', 'a`b'],
    ['``dois``', '`dois`', 'dois'],
    [
      '```js\nlet **x** = `1`\n  _y_\n\n# z\n```',
      '```\nlet **x** = `1`\n  _y_\n\n# z\n```',
      'let **x** = `1`\n  _y_\n\n# z',
    ],
    ['~~~\n*a*\n~~~', '```\n*a*\n```', '*a*'],
    ['```\naberto', '```\naberto\n```', 'aberto'],
    ['```\n```', '```\n```', ''],
    [
      'a\n\n    *dentro*\n      mais\n\nb',
      'a\n\n    ```\n*dentro*\n  mais\n```\n\nb',
      'a\n\n    *dentro*\n      mais\n\nb',
    ],
    ['- x\n  ```\n  **y**\n  ```', '- x\n  ```\n**y**\n```', '- x\n  **y**'],
    ['> ```\n> > a\n> b\n> ```', '> ```\n> > a\n> b\n> ```', '> > a\n> b'],
    ['\\`não\\` \\# \\> \\\\', '`não` # > \\', '`não` # > \\'],
  ]);
});

test('headings become bold lines', () => {
  check([
    ['# Olá **mundo**', '*Olá mundo*', 'Olá mundo'],
    ['### Um ###\ntexto', '*Um*\ntexto', 'Um\ntexto'],
    ['## *A* e `b`', '*_A_ e `b`*', 'A e b'],
    ['Título\n===\n\nDois\n---\nx', '*Título*\n\n*Dois*\nx', 'Título\n\nDois\nx'],
    ['> # Citado', '> *Citado*', '> Citado'],
    ['#', '', ''],
    ['#hashtag', '#hashtag', '#hashtag'],
    ['# [Casa](https://x.y)', '*Casa*: https://x.y', 'Casa (https://x.y)'],
  ]);
});

test('lists, tasks and quotes', () => {
  check([
    ['* um\n+ dois\n- três', '- um\n- dois\n- três', '- um\n- dois\n- três'],
    ['- a\n  - **b**\n    - c', '- a\n  - *b*\n    - c', '- a\n  - b\n    - c'],
    ['1. um\n2. dois', '1. um\n2. dois', '1. um\n2. dois'],
    ['3) um\n4) dois', '3. um\n4. dois', '3. um\n4. dois'],
    ['- [ ] um\n- [x] **dois**\n* [X] três', '☐ um\n☑ *dois*\n☑ três', '☐ um\n☑ dois\n☑ três'],
    ['1. [ ] um\n   - [x] dois', '1. ☐ um\n   ☑ dois', '1. ☐ um\n   ☑ dois'],
    [
      '> citado **b**\n>sem espaço\n> > dois',
      '> citado *b*\n> sem espaço\n> > dois',
      '> citado b\n> sem espaço\n> > dois',
    ],
    ['> **a\n> b**', '> *a*\n> *b*', '> a\n> b'],
    ['a\n\n---\n\n* * *\n\nb', 'a\n\n———\n\n———\n\nb', 'a\n\n———\n\n———\n\nb'],
  ]);
});

test('links', () => {
  check([
    ['[site](https://x.y) <https://z.w>', 'site: https://x.y https://z.w', 'site (https://x.y) https://z.w'],
    ['[https://x.y](https://x.y) [x.y](https://x.y/)', 'https://x.y https://x.y/', 'https://x.y https://x.y/'],
    ['[https://x.y](https://z.w)', 'https://x.y: https://z.w', 'https://x.y (https://z.w)'],
    ['https://x.y/a_b_c?d=*e*', 'https://x.y/a_b_c?d=*e*', 'https://x.y/a_b_c?d=*e*'],
    ['[**a** b](https://x.y "dica")', '*a* b: https://x.y', 'a b (https://x.y)'],
    ['**[a](https://x.y)**', '*a*: https://x.y', 'a (https://x.y)'],
    ['**veja https://x.y** e *https://z.w*', '*veja* https://x.y e https://z.w', 'veja https://x.y e https://z.w'],
    ['[a@b.c](mailto:a@b.c) [nós](mailto:a@b.c) <a@b.c>', 'a@b.c nós: a@b.c a@b.c', 'a@b.c nós (a@b.c) a@b.c'],
    ['![foto](https://x.y/f.png) ![](f.png)', 'foto: https://x.y/f.png f.png', 'foto (https://x.y/f.png) f.png'],
    ['![foto](data:image/png;base64,AAAA) [topo](#topo)', 'foto topo', 'foto topo'],
    ['[a](<x y>) [b](x\\)y) [](z) [c]()', 'a: x y b: x)y z c', 'a (x y) b (x)y) z c'],
    [
      '[um][1] e [Dois]\n\n[1]: https://x.y\n[dois]: https://z.w',
      'um: https://x.y e Dois: https://z.w',
      'um (https://x.y) e Dois (https://z.w)',
    ],
    [
      '[só] e nota[^1]\n\n[^1]: https://x.y',
      '[só] e nota[^1]\n\n[^1]: https://x.y',
      '[só] e nota[^1]\n\n[^1]: https://x.y',
    ],
    ['[livre]: https://x.y', '[livre]: https://x.y', '[livre]: https://x.y'],
  ]);
});

test('everything else', () => {
  check([
    ['a  \nb\\\nc', 'a\nb\nc', 'a\nb\nc'],
    ['&amp; &lt; &#233; &#x1F389; &nada; AT&T', '& < é 🎉 &nada; AT&T', '& < é 🎉 &nada; AT&T'],
    ['a&ccedil;&atilde;o &rarr; &constructor;', 'ação → &constructor;', 'ação → &constructor;'],
    ['\\*não\\*', '*não*', '*não*'],
    ['| a | b |\n|---|:-:|\n| **1** | 2 |', '| a | b |\n| *1* | 2 |', '| a | b |\n| 1 | 2 |'],
    ['a\r\n**b**\r\n', 'a\n*b*', 'a\nb'],
    ['\n\n  a\n\n\n b  \n\n', '  a\n\n\n b', '  a\n\n\n b'],
    ['a\ud800 **b**', 'a\ud800 *b*', 'a\ud800 b'],
  ]);
});

/** CPU time of this process in milliseconds, independent of other processes. */
const busy = () => process.cpuUsage().user / 1000;

test('adversarial texts are parsed quickly and lose nothing', () => {
  const spaces = ' '.repeat(40_000);
  for (const text of [`**a${spaces}b**`, `\`a${spaces}b\``, `# a${spaces}b`, `${spaces}a`]) {
    const started = busy();
    for (const convert of [toWhatsApp, toPlainText]) assert.ok(convert(text).includes(spaces.slice(9)));
    assert.ok(busy() - started < 3000, text.slice(0, 3));
  }
  for (const piece of ['>', '- ', '[', '![', '*a ', 'a* ', '**', 'a`', '<', '# ', 'a~~', '1. ', '_a_', '[a](']) {
    const text = piece.repeat(40_000 / piece.length);
    const started = busy();
    for (const convert of [toWhatsApp, toPlainText]) assert.ok(convert(text).length > 0, piece);
    assert.ok(busy() - started < 5000, piece);
  }
  const endless = '**a** '.repeat(200_000);
  assert.equal(toWhatsApp(endless), endless, 'a paragraph without end stays as it is');
});
