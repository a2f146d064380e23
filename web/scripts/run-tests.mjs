// Bundles the tests below the given folder and runs them with Node's own test runner.
import { spawn } from 'node:child_process';
import { readdir, rm } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';

const root = path.dirname(path.dirname(fileURLToPath(import.meta.url)));
const [folder, ...only] = process.argv.slice(2);
if (!folder) throw new Error('usage: run-tests.mjs FOLDER [NAME...]');

const files = (await readdir(path.join(root, folder)))
  .filter((name) => name.endsWith('.test.ts'))
  .filter((name) => only.length === 0 || only.some((part) => name.includes(part)))
  .sort();
const outdir = path.join(root, '.build', folder);
await rm(outdir, { recursive: true, force: true });
await build({
  absWorkingDir: root,
  entryPoints: files.map((name) => path.join(folder, name)),
  bundle: true,
  platform: 'node',
  format: 'esm',
  target: 'node18',
  external: ['playwright-core', 'esbuild', 'axe-core'],
  loader: { '.css': 'empty' },
  outdir,
  outbase: path.join(root, folder),
  outExtension: { '.js': '.mjs' },
  sourcemap: 'inline',
  // Node 18 has the web's crypto object only as a module.
  banner: { js: "import { webcrypto } from 'node:crypto'; globalThis.crypto ??= webcrypto;" },
  logLevel: 'warning',
});
const built = files.map((name) => path.join(outdir, name.replace(/\.ts$/, '.mjs')));
const runner = spawn(
  process.execPath,
  ['--enable-source-maps', '--test', '--test-reporter=spec', ...built],
  { stdio: 'inherit', cwd: root },
);
runner.on('exit', (code) => process.exit(code ?? 1));
