// Makes the icons of a Linux desktop from their drawings: node make-icons.mjs FOLDER
//
// FOLDER becomes an icon theme's: NxN/apps, scalable/apps, symbolic/apps. Lines of the large drawing would blur
// in the sizes of lists and title bars, which have a drawing of their own.
import { copyFile, mkdir, readFile, writeFile } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { png } from './draw-svg.mjs';

const NAME = 'com.quendo.Quendo';
const LARGEST_OF_SMALL = 32;
const SIZES = [16, 22, 24, 32, 48, 64, 96, 128, 256, 512];

const [target] = process.argv.slice(2);
if (!target) throw new Error('usage: make-icons.mjs FOLDER');

const drawings = path.join(path.dirname(fileURLToPath(import.meta.url)), '../../packaging/icons');
const place = async (folder, name) => {
  const apps = path.join(target, folder, 'apps');
  await mkdir(apps, { recursive: true });
  return path.join(apps, name);
};

const large = await readFile(path.join(drawings, `${NAME}.svg`), 'utf8');
const small = await readFile(path.join(drawings, `${NAME}-small.svg`), 'utf8');
for (const size of SIZES) {
  const image = png(size <= LARGEST_OF_SMALL ? small : large, size);
  await writeFile(await place(`${size}x${size}`, `${NAME}.png`), image);
}
await copyFile(path.join(drawings, `${NAME}.svg`), await place('scalable', `${NAME}.svg`));
await copyFile(path.join(drawings, `${NAME}-symbolic.svg`), await place('symbolic', `${NAME}-symbolic.svg`));
