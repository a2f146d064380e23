import assert from 'node:assert/strict';
import { test } from 'node:test';
import { defaultSettings, readLineWidth, readSettings, readTextFace } from '../../src/state/settings';

test("a later version's text face and line width are preserved and mean the usual ones", () => {
  const settings = readSettings({ textFace: 'handwritten', lineWidth: 'endless' });
  assert.equal(settings.textFace, 'handwritten');
  assert.equal(settings.lineWidth, 'endless');
  assert.equal(readTextFace(settings.textFace), 'sans');
  assert.equal(readLineWidth(settings.lineWidth), 'medium');
  assert.equal(readTextFace('serif'), 'serif');
  assert.equal(readLineWidth('wide'), 'wide');
});

test('the sidebar has a width that can be used, whatever was stored', () => {
  const width = (value: unknown) => readSettings({ sidebarWidth: value }).sidebarWidth;
  for (const value of [undefined, null, '300', Number.NaN]) assert.equal(width(value), defaultSettings.sidebarWidth);
  assert.equal(width(300.4), 300);
  assert.equal(width(-5), 180);
  assert.equal(width(1e9), 560);
});
