// The licence notices of the bundled packages. The bundle itself contains no comments.
import { readdir, readFile } from 'node:fs/promises';
import path from 'node:path';

const FOLDER = 'node_modules/';

/** Sorted folders, relative to the root, of all packages with code or fonts in the bundle. `metafile` is esbuild's. */
export function bundledPackages(metafile) {
  const packages = new Set();
  for (const { inputs } of Object.values(metafile.outputs)) {
    for (const [input, { bytesInOutput }] of Object.entries(inputs)) {
      if (bytesInOutput === 0) continue;
      // What a style sheet embeds counts as a part of it.
      const embedded = metafile.inputs?.[input]?.imports.filter(({ kind }) => kind === 'url-token') ?? [];
      for (const file of [input, ...embedded.map(({ path: one }) => one)]) {
        const folder = packageOf(file);
        if (folder) packages.add(folder);
      }
    }
  }
  return [...packages].sort();
}

function packageOf(file) {
  const at = file.lastIndexOf(FOLDER);
  if (at < 0) return null;
  const [scope, name] = file.slice(at + FOLDER.length).split('/');
  return file.slice(0, at + FOLDER.length) + (scope.startsWith('@') ? `${scope}/${name}` : scope);
}

/**
 * Name, version, licence and licence text of each bundled package. Throws if a package has no licence text:
 * such a page must not be shipped.
 */
export async function noticesOf(metafile, root) {
  const notices = await Promise.all(bundledPackages(metafile).map((folder) => noticeOf(path.join(root, folder))));
  return ['This program contains the packages below, under the licences that follow each of them.\n', ...notices].join(
    `\n${'-'.repeat(80)}\n\n`,
  );
}

async function noticeOf(folder) {
  const { name, version, license } = JSON.parse(await readFile(path.join(folder, 'package.json'), 'utf8'));
  const files = (await readdir(folder)).filter((file) => /^(?:licen[cs]e|copying|notice)\b/i.test(file)).sort();
  const texts = await Promise.all(files.map((file) => readFile(path.join(folder, file), 'utf8')));
  const whole = texts
    .map((text) => text.replaceAll('\r\n', '\n').trim())
    .filter(Boolean)
    .join('\n\n');
  if (!license || !/licen[cs]e|permission/i.test(whole))
    throw new Error(`${name} ${version} comes without the text of its licence.`);
  return `${name} ${version} (${license})\n\n${whole}\n`;
}
