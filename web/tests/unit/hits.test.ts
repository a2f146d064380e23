import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Text } from '@codemirror/state';
import { bestHit, nextHit } from '../../src/editor/hits';
import { foldedPlaces } from '../../src/text/fold';

const doc = Text.of(['Feira', '', 'maçã e pão', 'pão com maçã e mel', 'mel']);
const shown = (place: { from: number; to: number } | null) => place && doc.sliceString(place.from, place.to);

test('the best hit is the first word in the line that has most of them', () => {
  const best = bestHit(doc, ['mel', 'pao']);
  assert.equal(best?.from, doc.line(4).from);
  assert.equal(shown(best), 'pão');
  assert.equal(bestHit(doc, ['mel', 'pao', 'uva'])?.from, doc.line(4).from);
  assert.equal(bestHit(doc, ['maca'])?.from, doc.line(3).from);
  assert.equal(bestHit(doc, ['uva']), null);
});

test('the next and the previous hit follow each other around the ends of the text', () => {
  const places = (by: 1 | -1) => {
    const starts: number[] = [];
    let at = { from: 0, to: 0 };
    for (let i = 0; i < 5; i++) {
      at = nextHit(doc, ['maca', 'mel'], at, by) ?? at;
      starts.push(at.from);
    }
    return starts;
  };
  const [first, second, third, fourth] = [7, 26, 33, 37];
  assert.deepEqual(places(1), [first, second, third, fourth, first]);
  assert.deepEqual(places(-1), [fourth, third, second, first, fourth]);
  assert.equal(nextHit(doc, ['uva'], { from: 0, to: 0 }, 1), null);
});

test('places of words are in the own offsets of the text, and none of them twice', () => {
  assert.deepEqual(foldedPlaces('aba ab', ['ab', 'ba']), [
    { from: 0, to: 3 },
    { from: 4, to: 6 },
  ]);
  assert.deepEqual(foldedPlaces('🎉 cafe\u0301 x', ['cafe', 'x']), [
    { from: 3, to: 8 },
    { from: 9, to: 10 },
  ]);
});
