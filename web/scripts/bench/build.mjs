// Bundles the benchmarks' page scripts, one classic script each: `node scripts/bench/build.mjs --outdir DIR`.
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';

const root = path.dirname(path.dirname(path.dirname(fileURLToPath(import.meta.url))));
const at = process.argv.indexOf('--outdir');
const outdir = at < 0 ? undefined : process.argv[at + 1];
if (!outdir) throw new Error('usage: build.mjs --outdir DIR');

// Same options as the page's own bundle, so neither side has the better compiler.
await build({
  absWorkingDir: root,
  entryPoints: ['typing', 'searches', 'saves', 'bareEditor', 'bareSearch'].map((name) => `scripts/bench/${name}.ts`),
  bundle: true,
  format: 'iife',
  minify: true,
  target: ['safari16.0', 'chrome110'],
  charset: 'utf8',
  outdir: path.resolve(outdir),
  legalComments: 'none',
  logLevel: 'warning',
});
