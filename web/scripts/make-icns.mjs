// Makes a Mac's icon file from an SVG, without a Mac: node make-icns.mjs ICON.svg ICON.icns
//
// The container is four letters and a length, then for each image its type, a length and a PNG. All numbers
// are big-endian, and lengths include the eight bytes before the data.
import { readFile, writeFile } from 'node:fs/promises';
import { png } from './draw-svg.mjs';

/** The types that hold a PNG, with its width in pixels. The last three and the first two are for Retina displays. */
const types = {
  ic11: 32, // 16 points
  ic12: 64, // 32 points
  ic07: 128,
  ic08: 256,
  ic09: 512,
  ic13: 256, // 128 points
  ic14: 512, // 256 points
  ic10: 1024, // 512 points
};

const [source, target] = process.argv.slice(2);
if (!source || !target) throw new Error('usage: make-icns.mjs ICON.svg ICON.icns');

const svg = await readFile(source, 'utf8');

function chunk(type, ...contents) {
  const head = Buffer.alloc(8);
  head.write(type, 'latin1');
  head.writeUInt32BE(
    contents.reduce((length, part) => length + part.length, head.length),
    4,
  );
  return Buffer.concat([head, ...contents]);
}

const images = Object.entries(types).map(([type, width]) => chunk(type, png(svg, width)));
await writeFile(target, chunk('icns', ...images));
