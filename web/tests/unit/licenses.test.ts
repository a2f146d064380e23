import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { build } from 'esbuild';

interface Package {
  readonly version: string;
  readonly license: string;
}

const folder = mkdtempSync(path.join(tmpdir(), 'quendo-page-'));
after(() => rmSync(folder, { recursive: true }));

function licensesOfBuild(name: string): string {
  const outdir = path.join(folder, name);
  execFileSync(process.execPath, ['build.mjs', '--outdir', outdir]);
  return readFileSync(path.join(outdir, 'licenses.txt'), 'utf8');
}

/** The packages with code or fonts in the bundle, as named in the lock file. */
async function bundled(): Promise<string[]> {
  const { metafile } = await build({
    entryPoints: ['src/app/main.ts', 'src/styles/faces/serif.css', 'src/styles/faces/mono.css'],
    loader: { '.woff2': 'dataurl' },
    bundle: true,
    minify: true,
    format: 'iife',
    outdir: folder,
    write: false,
    metafile: true,
  });
  const inputs = Object.values(metafile.outputs).flatMap((output) => Object.entries(output.inputs));
  for (const input of Object.keys(metafile.inputs))
    if (input.endsWith('.woff2')) inputs.push([input, { bytesInOutput: 1 }]);
  const names = inputs.flatMap(([file, { bytesInOutput }]) =>
    bytesInOutput > 0 ? (/^.*node_modules\/(?:@[^/]+\/)?[^/]+/.exec(file)?.[0] ?? []) : [],
  );
  return [...new Set(names)];
}

const noticesOf = async (inputs: ReadonlyArray<string>, root: string): Promise<string> => {
  const module = (await import(pathToFileURL(path.resolve('notices.mjs')).href)) as {
    noticesOf(metafile: unknown, root: string): Promise<string>;
  };
  const entries = inputs.map((input) => [input, { bytesInOutput: 1 }]);
  return module.noticesOf({ outputs: { 'page.js': { inputs: Object.fromEntries(entries) } } }, root);
};

test('the notices list every bundled package with its licence text', async () => {
  const notices = licensesOfBuild('first');
  const lock = JSON.parse(readFileSync('package-lock.json', 'utf8')) as { packages: Record<string, Package> };
  const packages = await bundled();
  assert.ok(packages.length > 20);
  for (const name of packages) {
    const { version, license } = lock.packages[name] as Package;
    const heading = `\n${name.slice(name.lastIndexOf('node_modules/') + 'node_modules/'.length)} ${version} (${license})\n\n`;
    const at = notices.indexOf(heading);
    assert.ok(at >= 0, heading);
    const text = notices.slice(at + heading.length).split(`\n${'-'.repeat(80)}\n`)[0] ?? '';
    const kind = license === 'OFL-1.1' ? /SIL OPEN FONT LICENSE/ : /Copyright \(c\) .+/i;
    assert.match(text, kind, heading);
    assert.match(text, /Permission is hereby granted/i, heading);
  }
  const headings = notices.match(/^\S+ \d+\.\d+\.\d+\S* \(.+\)$/gm) ?? [];
  assert.equal(headings.length, packages.length, 'and nothing else does');
});

test('the same packages produce the same notices', () => {
  assert.equal(licensesOfBuild('second'), licensesOfBuild('third'));
});

test('a package without a licence text cannot be bundled', async () => {
  const add = (name: string, files: Readonly<Record<string, string>>) => {
    const at = path.join(folder, 'node_modules', name);
    mkdirSync(at, { recursive: true });
    for (const [file, text] of Object.entries(files)) writeFileSync(path.join(at, file), text);
  };
  const manifest = (name: string) => JSON.stringify({ name, version: '1.0.0', license: 'MIT' });
  add('with', { 'package.json': manifest('with'), 'license.md': 'Permission is hereby granted\r\n' });
  add('without', { 'package.json': manifest('without'), 'readme.md': 'License: MIT' });
  const some = await noticesOf(['node_modules/with/a.js', 'node_modules/with/b.js', 'src/page.ts'], folder);
  assert.match(some, /\nwith 1\.0\.0 \(MIT\)\n\nPermission is hereby granted\n$/);
  await assert.rejects(
    noticesOf(['node_modules/with/a.js', 'node_modules/without/a.js'], folder),
    /without 1\.0\.0 comes without the text of its licence/,
  );
});
