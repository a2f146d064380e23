/** What programs put on the clipboard as HTML for the same kinds of text, shortened to what matters. */
interface Flavour {
  readonly from: string;
  readonly html: string;
  readonly markdown: string;
}

const wordItem = (level: number, sign: string, text: string) =>
  `<p class=MsoListParagraphCxSpMiddle style='text-indent:-.25in;mso-list:l0 level${level} lfo1'><![if !supportLists]>` +
  `<span style='font-family:Symbol;mso-list:Ignore'>${sign}<span style='font:7.0pt "Times New Roman"'>&nbsp;&nbsp;` +
  `</span></span><![endif]>${text}<o:p></o:p></p>`;

export const flavours: ReadonlyArray<Flavour> = [
  {
    from: 'Chromium, a page',
    html: `<meta charset='utf-8'><h2 style="color: rgb(0, 0, 0); font-weight: 700;">Bread</h2><p style="margin: 0px;">Mix<span>&nbsp;</span><strong style="font-weight: 700;">flour</strong><span> and </span><em>water</em>, see<span>&nbsp;</span><a href="https://example.org/a_(b)">here</a>.</p><ul><li>one<ul><li>two</li></ul></li><li>three</li></ul>`,
    markdown:
      '## Bread\n\nMix **flour** and *water*, see [here](https://example.org/a_%28b%29).\n\n- one\n  - two\n- three',
  },
  {
    from: 'Chromium, words of a page with computed styles',
    html: `<meta charset='utf-8'><span style="font-weight: 400; font-style: normal;">a<span> </span></span><b style="font-weight: 700">b</b><span style="font-weight: 400"> c</span>`,
    markdown: 'a **b** c',
  },
  {
    from: 'Firefox',
    html: '<h1 class="t">One <em>two</em></h1>\n<p>first<br>\nsecond</p>\n<ol start="3">\n<li>\n<p>c</p>\n</li>\n<li>\n<p>d</p>\n</li>\n</ol>',
    markdown: '# One *two*\n\nfirst  \nsecond\n\n3. c\n4. d',
  },
  {
    from: 'WebKit',
    html: `<h3 style="caret-color: rgb(0, 0, 0); font-style: normal;">T</h3><p style="font-style: normal;">a<span class="Apple-converted-space">&nbsp;</span><code>b*c</code></p><br class="Apple-interchange-newline">`,
    markdown: '### T\n\na `b*c`',
  },
  {
    from: 'a table of a page',
    html: '<table><thead><tr><th>Name</th><th style="text-align: right;">Price</th></tr></thead><tbody><tr><td>A | B</td><td>1</td></tr><tr><td><b>C</b></td><td></td></tr></tbody></table>',
    markdown: '| Name   | Price |\n| ------ | ----: |\n| A \\| B |     1 |\n| **C**  |       |'.replaceAll(
      / -{4,}: /g,
      ' ----: ',
    ),
  },
  {
    from: 'a spreadsheet',
    html: `<html xmlns:x="urn:schemas-microsoft-com:office:excel"><head><style><!--table {mso-displayed-decimal-separator:"\\.";}--></style></head><body link="#0563C1"><table border=0 width=128 style='border-collapse:collapse'><!--StartFragment--><col width=64 span=2><tr height=20><td height=20 class=xl65>a</td><td>b</td></tr><tr><td colspan=2>1</td></tr><!--EndFragment--></table></body></html>`,
    markdown: '| a   | b   |\n| --- | --- |\n| 1   |     |',
  },
  {
    from: 'an online spreadsheet',
    html: '<google-sheets-html-origin><style type="text/css"><!--td {border: 1px solid #cccccc;}--></style><table><colgroup><col width="100"/></colgroup><tbody><tr><td rowspan="2">x</td><td>1</td></tr><tr><td>2</td></tr></tbody></table></google-sheets-html-origin>',
    markdown: '| x   | 1   |\n| --- | --- |\n|     | 2   |',
  },
  {
    from: 'Word',
    html: `<html xmlns:o="urn:schemas-microsoft-com:office:office"><head><!--[if gte mso 9]><xml><o:OfficeDocumentSettings/></xml><![endif]--><style><!-- p.MsoNormal {margin:0in;} --></style></head><body lang=EN-US><!--StartFragment--><h1>Plan<o:p></o:p></h1><p class=MsoNormal>Some <b><span style='mso-bidi-font-weight:normal'>bold</span></b> and <i>slanted</i><span style='display:none;mso-hide:all'>hidden</span><o:p>&nbsp;</o:p></p>${wordItem(1, '·', 'one')}${wordItem(2, 'o', 'two')}${wordItem(1, '·', 'three')}<p class=MsoNormal>end<o:p></o:p></p>${wordItem(1, '1.', 'first')}${wordItem(2, 'a.', 'inner')}<!--EndFragment--></body></html>`,
    markdown: '# Plan\n\nSome **bold** and *slanted*\n\n- one\n  - two\n- three\n\nend\n\n1. first\n   1. inner',
  },
  {
    from: 'Writer',
    html: '<!DOCTYPE html><html><head><meta name="generator" content="LibreOffice 7.4"/><style type="text/css">p { margin-bottom: 0.1in }</style></head><body lang="en-US" dir="ltr"><p>Some <b>bold</b> <strike>gone</strike></p><ol>\n\t<li><p>one</p></li>\n\t<ol>\n\t\t<li><p>two</p></li>\n\t</ol>\n\t<li><p>three</p></li>\n</ol></body></html>',
    markdown: 'Some **bold** ~~gone~~\n\n1. one\n   1. two\n2. three',
  },
  {
    from: 'an online document',
    html: `<meta charset='utf-8'><b style="font-weight:normal;" id="docs-internal-guid-1"><h2 dir="ltr"><span style="font-weight:700;white-space:pre-wrap;">Head</span></h2><p dir="ltr"><span style="font-weight:400;font-style:normal;">a </span><span style="font-weight:700;font-style:italic;">b</span><span style="text-decoration:line-through;"> c</span></p><ul><li dir="ltr" aria-level="1"><p role="presentation"><span>one</span></p></li><ul><li aria-level="2"><p><span>two</span></p></li></ul><li role="checkbox" aria-checked="true"><p><span>done</span></p></li></ul></b>`,
    markdown: '## Head\n\na ***b*** ~~c~~\n\n- one\n  - two\n- [x] done',
  },
  {
    from: 'a mail',
    html: '<div dir="ltr">Hello,<div><br></div><div>see <a href="mailto:a@example.org">a@example.org</a></div><blockquote class="gmail_quote">quoted<br>twice</blockquote></div>',
    markdown: 'Hello,\n\nsee <a@example.org>\n\n> quoted  \n> twice',
  },
  {
    from: 'a task list of a page',
    html: '<ul class="contains-task-list"><li class="task-list-item"><input type="checkbox" disabled checked> done</li><li><label><input type="checkbox"> to do</label></li></ul>',
    markdown: '- [x] done\n- [ ] to do',
  },
  {
    from: 'code in a page',
    html: '<p>Run:</p><div class="highlight highlight-source-js"><pre>a &lt; b\n```\n<span>c</span>  d</pre></div>',
    markdown: 'Run:\n\n````js\na < b\n```\nc  d\n````',
  },
  {
    from: 'images of a page',
    html: '<p><img src="https://example.org/a.png" alt="A [cat]"> <img src="data:image/png;base64,AA==" alt="a dog"><a href="https://example.org/"><img src="x.png" alt="logo"></a></p>',
    markdown: '[A \\[cat\\]](https://example.org/a.png) a dog[logo](https://example.org/)',
  },
  {
    from: 'text that looks like Markdown or HTML',
    html: '<p>2 * 3 &lt;img src=x onerror=ran()&gt; &amp;lt; snake_case 1. [a](b)</p><p># no</p><p>1) no</p>',
    markdown: '2 \\* 3 \\<img src=x onerror=ran()> \\&lt; snake_case 1. \\[a\\](b)\n\n\\# no\n\n1\\) no',
  },
  {
    from: 'a page laid out by a table',
    html: '<table role="presentation"><tr><td><h1>News</h1></td></tr><tr><td>Text</td></tr></table>',
    markdown: '# News\n\nText',
  },
];
