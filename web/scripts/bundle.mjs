import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';

export const root = path.dirname(path.dirname(fileURLToPath(import.meta.url)));

/** Bundles programs for Node below `.build`, each beside the folder it has here; gives their paths. */
export async function bundleForNode(entryPoints) {
  const outdir = path.join(root, '.build');
  await build({
    absWorkingDir: root,
    entryPoints,
    bundle: true,
    platform: 'node',
    format: 'esm',
    target: 'node18',
    external: ['playwright-core', 'esbuild', 'axe-core'],
    loader: { '.css': 'empty' },
    outdir,
    outbase: root,
    outExtension: { '.js': '.mjs' },
    sourcemap: 'inline',
    // Node 18 has the web's crypto object only as a module.
    banner: { js: "import { webcrypto } from 'node:crypto'; globalThis.crypto ??= webcrypto;" },
    logLevel: 'warning',
  });
  return entryPoints.map((entry) => path.join(outdir, entry.replace(/\.ts$/, '.mjs')));
}
