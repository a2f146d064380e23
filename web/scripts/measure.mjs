// Prints what saving and searching cost with ten thousand notes: `node scripts/measure.mjs`.
import { rm } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { build } from 'esbuild';

const root = path.dirname(path.dirname(fileURLToPath(import.meta.url)));
const outfile = path.join(root, '.build/measure.mjs');
await build({
  absWorkingDir: root,
  entryPoints: ['scripts/measure/main.ts'],
  bundle: true,
  platform: 'node',
  format: 'esm',
  target: 'node18',
  outfile,
  banner: { js: "import { webcrypto } from 'node:crypto'; globalThis.crypto ??= webcrypto;" },
  logLevel: 'warning',
});
await import(pathToFileURL(outfile).href);
await rm(outfile);
