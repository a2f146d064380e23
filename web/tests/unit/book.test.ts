import assert from 'node:assert/strict';
import { test } from 'node:test';
import { type Chapter, chapterOf } from '../../src/text/book';

const chapter = (text: string, more: Partial<Chapter> = {}) =>
  chapterOf({ title: 'Título', isNamed: false, format: 'markdown', text, ...more });

test('a note that begins with a heading is a chapter as it is', () => {
  assert.equal(chapter('\n# Ata\n\ntexto\n\n'), '# Ata\n\ntexto\n');
  assert.equal(chapter('### Ata'), '### Ata\n');
});

test('a first line of words becomes the heading', () => {
  assert.equal(chapter('Compras\npão'), '# Compras\npão\n');
  assert.equal(chapter('Compras'), '# Compras\n\n');
});

test('other text gets its title as the heading and stays as it is', () => {
  for (const text of ['- [ ] pão', '> dito', '```\na\n```', '1. um', 'Compras\n=======']) {
    assert.equal(chapter(text), `# Título\n\n${text}\n`);
  }
  assert.equal(chapter('# Outro', { isNamed: true }), '# Título\n\n# Outro\n');
});

test('plain text is between fences longer than any in it', () => {
  assert.equal(chapter('* a ```` b', { format: 'plain' }), '# Título\n\n`````\n* a ```` b\n`````\n');
  assert.equal(chapter('a', { format: 'plain' }), '# Título\n\n```\na\n```\n');
});
