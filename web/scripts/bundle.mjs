import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';

export const root = path.dirname(path.dirname(fileURLToPath(import.meta.url)));

/** Bundles programs for Node into `.build`, mirroring the folders here; returns the output paths. */
export async function bundleForNode(entryPoints) {
  const outdir = path.join(root, '.build');
  await build({
    absWorkingDir: root,
    entryPoints,
    bundle: true,
    platform: 'node',
    format: 'esm',
    target: 'node18',
    external: ['playwright-core', 'esbuild', 'axe-core', 'typescript', '@mdn/browser-compat-data'],
    loader: { '.css': 'empty' },
    outdir,
    outbase: root,
    outExtension: { '.js': '.mjs' },
    sourcemap: 'inline',
    // In Node 18, Web Crypto is a module, not a global.
    banner: { js: "import { webcrypto } from 'node:crypto'; globalThis.crypto ??= webcrypto;" },
    logLevel: 'warning',
  });
  return entryPoints.map((entry) => path.join(outdir, entry.replace(/\.ts$/, '.mjs')));
}
