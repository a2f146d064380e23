import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';
import { inflateSync } from 'node:zlib';

const folder = mkdtempSync(path.join(tmpdir(), 'quendo-icon-'));
after(() => rmSync(folder, { recursive: true }));

function make(name: string): Buffer {
  const file = path.join(folder, name);
  execFileSync(process.execPath, ['scripts/make-icns.mjs', '../packaging/icons/com.quendo.Quendo.svg', file]);
  return readFileSync(file);
}

/** Type and contents of each chunk; fails unless they fill the bytes exactly. */
function* chunks(bytes: Buffer, sizeOf: (at: number) => readonly [type: string, head: number, contents: number]) {
  let at = 0;
  while (at < bytes.length) {
    const [type, head, contents] = sizeOf(at);
    assert.ok(at + head + contents <= bytes.length, type);
    yield [type, bytes.subarray(at + head, at + head + contents)] as const;
    at += head + contents;
  }
}

function images(icns: Buffer): ReadonlyArray<readonly [type: string, png: Buffer]> {
  assert.equal(icns.toString('latin1', 0, 4), 'icns');
  assert.equal(icns.readUInt32BE(4), icns.length);
  const inner = icns.subarray(8);
  const sizeOf = (at: number) => [inner.toString('latin1', at, at + 4), 8, inner.readUInt32BE(at + 4) - 8] as const;
  return [...chunks(inner, sizeOf)];
}

/** The pixels of a PNG without interlacing, four bytes each. */
function decode(png: Buffer): { readonly width: number; readonly height: number; readonly pixels: Uint8Array } {
  assert.equal(png.toString('latin1', 0, 8), '\x89PNG\r\n\x1a\n');
  const body = png.subarray(8);
  const sizeOf = (at: number) => [body.toString('latin1', at + 4, at + 8), 8, body.readUInt32BE(at) + 4] as const;
  const parts = [...chunks(body, sizeOf)].map(([type, part]) => [type, part.subarray(0, -4)] as const);
  const head = parts[0]?.[1] as Buffer;
  const [width, height] = [head.readUInt32BE(0), head.readUInt32BE(4)];
  assert.deepEqual([...head.subarray(8)], [8, 6, 0, 0, 0], 'eight bits, red, green, blue and alpha');
  const raw = inflateSync(Buffer.concat(parts.flatMap(([type, part]) => (type === 'IDAT' ? [part] : []))));
  const line = width * 4;
  const pixels = new Uint8Array(line * height);
  for (let row = 0; row < height; row++) {
    const filter = raw[row * (line + 1)];
    for (let column = 0; column < line; column++) {
      const at = row * line + column;
      const left = column < 4 ? 0 : (pixels[at - 4] ?? 0);
      const up = pixels[at - line] ?? 0;
      const upLeft = column < 4 ? 0 : (pixels[at - line - 4] ?? 0);
      const near = left + up - upLeft;
      const [a, b, c] = [Math.abs(near - left), Math.abs(near - up), Math.abs(near - upLeft)];
      const paeth = a <= b && a <= c ? left : b <= c ? up : upLeft;
      const guess = [0, left, up, (left + up) >> 1, paeth][filter ?? 0] ?? 0;
      pixels[at] = (raw[row * (line + 1) + 1 + column] ?? 0) + guess;
    }
  }
  return { width, height, pixels };
}

test("the Mac's icon has an image of every size, with clear edges", () => {
  const sizes = { ic07: 128, ic08: 256, ic09: 512, ic10: 1024, ic11: 32, ic12: 64, ic13: 256, ic14: 512 };
  const found = images(make('a.icns'));
  assert.deepEqual(found.map(([type]) => type).sort(), Object.keys(sizes));
  for (const [type, png] of found) {
    const { width, height, pixels } = decode(png);
    assert.deepEqual([width, height], Array(2).fill(sizes[type as keyof typeof sizes]), type);
    const alpha = (x: number, y: number) => pixels[(y * width + x) * 4 + 3];
    assert.equal(alpha(width / 2, height / 2), 255, type);
    for (let at = 0; at < width; at++) {
      const edges = [alpha(at, 0), alpha(at, height - 1), alpha(0, at), alpha(width - 1, at)];
      assert.deepEqual(edges, [0, 0, 0, 0], type);
    }
  }
});

test('the same drawing makes the same icon', () => {
  assert.ok(make('b.icns').equals(make('c.icns')));
});
