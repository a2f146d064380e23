import assert from 'node:assert/strict';
import { test } from 'node:test';
import { allOf, narrowed, ranked, type SearchMatch, searchNotes } from '../../src/state/search';
import { contextOf } from '../../src/state/searchContext';
import { titleOf } from '../../src/state/titleOf';
import { NoteText } from '../../src/state/noteText';
import { markedWords, narrows, parseQuery } from '../../src/text/searchQuery';
import { periodOf } from '../../src/text/searchDates';
import { hasTag } from '../../src/text/tagQuery';
import { workspaceWith } from './workspaces';

const NOW = new Date(2026, 10, 22, 12).getTime();

/** The titles of what is found, best first. */
function titles(texts: ReadonlyArray<string>, query: string, now = NOW): string[] {
  const { workspace } = workspaceWith(...texts);
  const found = [...searchNotes(allOf(workspace.notesInOrder()), parseQuery(query, now))];
  return ranked(found.filter((one): one is SearchMatch => one !== null)).map(({ note }) => titleOf(note));
}

test('all words are found in any order, phrases as they stand, and without what is excluded', () => {
  const texts = ['um\nbolo de maçã', 'dois\nmaçã e bolo', 'três\nbolo de maçã com canela', 'quatro\nbolo'];
  assert.deepEqual(titles(texts, 'maca bolo').sort(), ['dois', 'três', 'um']);
  assert.deepEqual(titles(texts, '"bolo de maçã"').sort(), ['três', 'um']);
  assert.deepEqual(titles(texts, '"bolo de maçã" -canela'), ['um']);
  assert.deepEqual(titles(texts, 'bolo -"de maca"').sort(), ['dois', 'quatro']);
  assert.deepEqual(titles(texts, 'bolo título:qua'), ['quatro']);
  assert.deepEqual(titles(texts, '-title:o').sort(), ['três', 'um']);
});

test('the whole title comes first, then its start, then words in it, then those in a row in the text', () => {
  const many = Array.from({ length: 440 }, (_, i) => `Nota ${i}\npassport ${'passport '.repeat(i % 5)}`);
  const ordered = ['Passport', 'Passports of the world', 'My passport'];
  assert.deepEqual(
    titles([ordered[2] ?? '', ...many, ordered[0] ?? '', ordered[1] ?? ''], 'passport').slice(0, 3),
    ordered,
  );
  const far = 'x '.repeat(60);
  const texts = [`c\nazul ${far} mar`, `b\nmar que é azul`, `a\no mar azul`, `d\nazul ${far.repeat(4)} mar`];
  assert.deepEqual(titles(texts, 'mar azul'), ['a', 'b', 'c', 'd']);
  assert.deepEqual(titles(['um\nsol', 'dois\nsol e sol e sol', 'três\nsol sol'], 'sol'), ['dois', 'três', 'um']);
});

test('of notes that match equally well, the one edited last comes first', () => {
  assert.deepEqual(titles(['velha\nsol', 'nova\nsol'], 'sol'), ['nova', 'velha']);
});

test('a tag is a word with a sign, or what is below it, and never code or a heading', () => {
  assert.ok(hasTag('isto é #casa.', 'casa'));
  assert.ok(hasTag('#casa/jardim', 'casa'));
  assert.ok(hasTag('#casa/jardim', 'casa/jardim'));
  assert.ok(hasTag('```\n#casa\n```\n(#casa)', 'casa'));
  for (const text of ['# casa', '#casas', 'a#casa', '`#casa`', '```\n#casa', 'x\n    #casa', '#casa-velha']) {
    assert.ok(!hasTag(text, 'casa'), text);
  }
  assert.deepEqual(titles(['a\n#Ação/já', 'b\n# ação', 'c\nação'], 'etiqueta:acao'), ['a']);
  assert.deepEqual(titles(['a\n#x', 'b\ny'], '-tag:#x'), ['b']);
});

test('dates are years, months, days and ages, before, after or within', () => {
  const day = (year: number, month: number, date: number) => new Date(year, month - 1, date).getTime();
  assert.deepEqual(periodOf('2026', NOW), { from: day(2026, 1, 1), to: day(2027, 1, 1) });
  assert.deepEqual(periodOf('2026-11', NOW), { from: day(2026, 11, 1), to: day(2026, 12, 1) });
  assert.deepEqual(periodOf('>2026-01-01', NOW), { from: day(2026, 1, 2), to: Infinity });
  assert.deepEqual(periodOf('>=2026-01-01', NOW), { from: day(2026, 1, 1), to: Infinity });
  assert.deepEqual(periodOf('<2026-02', NOW), { from: -Infinity, to: day(2026, 2, 1) });
  assert.deepEqual(periodOf('<=2026-02', NOW), { from: -Infinity, to: day(2026, 3, 1) });
  assert.deepEqual(periodOf('<30d', NOW), { from: NOW - 30 * 86_400_000, to: Infinity });
  assert.deepEqual(periodOf('>1w', NOW), { from: -Infinity, to: NOW - 7 * 86_400_000 });
  assert.deepEqual(periodOf('ontem', NOW), { from: day(2026, 11, 21), to: day(2026, 11, 22) });
  assert.deepEqual(periodOf('semana', NOW), { from: day(2026, 11, 16), to: day(2026, 11, 23) });
  assert.deepEqual(periodOf('>=mes', NOW), { from: day(2026, 11, 1), to: Infinity });
  assert.deepEqual(periodOf('<year', NOW), { from: -Infinity, to: day(2026, 1, 1) });
  for (const none of ['', '2026-13', '2026-02-30', '26', 'sempre', '<', 'constructor'])
    assert.equal(periodOf(none, NOW), null, none);
});

test('notes are found by when they were edited and created', () => {
  const texts = ['um', 'dois'];
  assert.deepEqual(titles(texts, 'editado:1970'), ['dois', 'um']);
  assert.deepEqual(titles(texts, 'created:>2026-01-01'), []);
  for (const name of ['data', 'fecha', 'atualizada']) assert.equal(titles(texts, `${name}:hoje`, 1000).length, 2, name);
  assert.deepEqual(titles(texts, '-creado:>1971 dois'), ['dois']);
});

test('what is unclear in a query is searched as words', () => {
  const texts = ['a\nedited:soon', 'b\nhttp://x.y', 'c\n"aberta', 'd\ntag:'];
  assert.deepEqual(titles(texts, 'edited:soon'), ['a']);
  assert.deepEqual(titles(texts, 'http://x'), ['b']);
  assert.deepEqual(titles(texts, 'constructor:today'), []);
  assert.deepEqual(titles(texts, '"aber'), ['c']);
  assert.deepEqual(titles(texts, 'tag:'), ['d']);
  assert.equal(titles(texts, '-').length, 4);
});

test('a query only narrows another if nothing else can be found by it', () => {
  const narrow = (query: string, before: string) => narrows(parseQuery(query, NOW), parseQuery(before, NOW));
  for (const [query, before] of [
    ['mar az', 'mar a'],
    ['az mar', 'mar'],
    ['mar -x', 'mar'],
    ['tag:x mar', 'tag:x'],
  ] as const) {
    assert.ok(narrow(query, before), query);
  }
  for (const [query, before] of [
    ['mar -xy', 'mar -x'],
    ['tag:xy', 'tag:x'],
    ['mar', 'mar az'],
    ['a', ''],
  ] as const) {
    assert.ok(!narrow(query, before), query);
  }
  const { workspace } = workspaceWith('um\nmar azul', 'mar');
  const find = (query: string) =>
    [...searchNotes(allOf(workspace.notesInOrder()), parseQuery(query, NOW))].filter(
      (one) => one !== null,
    ) as SearchMatch[];
  const among = narrowed(parseQuery('mar azul', NOW), parseQuery('mar', NOW), find('mar'));
  assert.deepEqual([...searchNotes(among ?? [], parseQuery('mar azul', NOW))], find('mar azul'));
});

test('a query typed letter by letter finds the same, in the same order, as one at once', () => {
  const { workspace } = workspaceWith(
    'um\no mar azul, e mais mar',
    'dois\nazul como o mar azulado',
    `três\nmar ${'x '.repeat(150)} azul`,
    'mar azul',
    'quatro\nmar a mar, azul',
    'cinco\nmaré azul',
  );
  const whole = 'mar azul';
  let before = { query: parseQuery('', NOW), found: [] as SearchMatch[] };
  for (let length = 1; length <= whole.length; length++) {
    const query = parseQuery(whole.slice(0, length), NOW);
    const search = (among: Parameters<typeof searchNotes>[0]) =>
      [...searchNotes(among, query)].filter((one): one is SearchMatch => one !== null);
    const atOnce = search(allOf(workspace.notesInOrder()));
    const found = search(narrowed(query, before.query, before.found) ?? allOf(workspace.notesInOrder()));
    assert.deepEqual(found, atOnce, query.source);
    before = { query, found };
  }
  assert.equal(before.found.length, 6);
});

test('words in a row come first even in a note that is older than all that are compared', () => {
  const newer = Array.from({ length: 1100 }, (_, i) => `Nota ${i}\nazul e mar`);
  assert.equal(titles(['Velha\no mar azul', ...newer], 'mar azul')[0], 'Velha');
});

test('marked are words, phrases, titles and tags, but nothing that was excluded', () => {
  assert.deepEqual(markedWords(parseQuery('a "b c" -d tag:e title:f edited:2026', NOW)), ['a', 'b c', '#e', 'f']);
});

test('an excerpt has no marks, and its match in the middle', () => {
  const excerpt = (text: string, word: string) => contextOf(NoteText.of(text), [word]);
  assert.equal(excerpt('T\n\n- [ ] comprar **pão** e leite\n\n## Fim\n', 'pao'), 'T comprar pão e leite Fim');
  assert.equal(excerpt('T\nveja [aqui](https://example.org/mar)', 'example'), '…https://example.org/mar');
  assert.equal(excerpt('T\nver [[Casa|a nossa]] **já**', 'casa'), 'T ver Casa a nossa já');
  assert.equal(excerpt(`T\n${'um dois '.repeat(9)}alvo aqui`, 'alvo'), '…um dois alvo aqui');
});
