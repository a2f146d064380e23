// Bundles the page into one classic script and one style sheet next to an index.html, and a style sheet for each
// text face, loaded when it is chosen. The script is an IIFE, not a module, because modules do not load from file: URLs.
import { createHash } from 'node:crypto';
import { mkdir, readFile, writeFile } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';
import { noticesOf } from './notices.mjs';

const root = path.dirname(fileURLToPath(import.meta.url));

function outputDirectory(args) {
  const at = args.indexOf('--outdir');
  if (at < 0) return path.join(root, 'dist');
  const value = args[at + 1];
  if (!value) throw new Error('--outdir needs a directory');
  return path.resolve(value);
}

const outdir = outputDirectory(process.argv.slice(2));
const result = await build({
  absWorkingDir: root,
  entryPoints: {
    quendo: 'src/app/main.ts',
    serif: 'src/styles/faces/serif.css',
    mono: 'src/styles/faces/mono.css',
  },
  loader: { '.woff2': 'dataurl' },
  bundle: true,
  format: 'iife',
  minify: true,
  target: ['safari16.0', 'chrome110'],
  charset: 'utf8',
  outdir: 'assets',
  write: false,
  // All notices go into one file next to the page, including those of packages without licence comments in
  // their code.
  legalComments: 'none',
  metafile: true,
  logLevel: 'warning',
});

// The editor library adds a <style> element, which the policy allows by this nonce. The nonce is derived from
// the bundle, so builds are reproducible.
const hash = createHash('sha256');
for (const file of result.outputFiles) hash.update(path.basename(file.path)).update(file.contents);
const nonce = hash.digest('base64url').slice(0, 22);

const template = await readFile(path.join(root, 'src/index.html'), 'utf8');
const notices = await noticesOf(result.metafile, root);
await mkdir(path.join(outdir, 'assets'), { recursive: true });
await writeFile(path.join(outdir, 'index.html'), template.replaceAll('%NONCE%', nonce));
await writeFile(path.join(outdir, 'licenses.txt'), notices);
for (const file of result.outputFiles) {
  await writeFile(path.join(outdir, 'assets', path.basename(file.path)), file.contents);
}
