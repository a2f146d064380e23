// Bundles the tests in the given folder and runs them with Node's test runner.
import { spawn } from 'node:child_process';
import { readdir, readFile, rm, writeFile } from 'node:fs/promises';
import path from 'node:path';
import { bundleForNode, root } from './bundle.mjs';

const [folder, ...rest] = process.argv.slice(2);
if (!folder) throw new Error('usage: run-tests.mjs FOLDER [--attempts=N] [--junit=FILE] [NAME...]');
const option = (name) => rest.find((one) => one.startsWith(`--${name}=`))?.slice(name.length + 3);
const attempts = Number(option('attempts') ?? 1);
const junit = option('junit');
const only = rest.filter((one) => !one.startsWith('--'));

const files = (await readdir(path.join(root, folder)))
  .filter((name) => name.endsWith('.test.ts'))
  .filter((name) => only.length === 0 || only.some((part) => name.includes(part)))
  .sort();
const outdir = path.join(root, '.build', folder);
await rm(outdir, { recursive: true, force: true });
const built = await bundleForNode(files.map((name) => path.join(folder, name)));

/** Runs the given test files. */
async function attempt(chosen) {
  const resultsFile = path.join(outdir, 'results.jsonl');
  await rm(resultsFile, { force: true });
  const runner = spawn(
    process.execPath,
    [
      '--enable-source-maps',
      '--test',
      '--test-reporter=spec',
      '--test-reporter-destination=stdout',
      `--test-reporter=${path.join(root, 'scripts/test-results.mjs')}`,
      `--test-reporter-destination=${resultsFile}`,
      ...chosen,
    ],
    { stdio: 'inherit', cwd: root },
  );
  const status = await new Promise((resolve) => runner.on('exit', (code) => resolve(code ?? 1)));
  const lines = await readFile(resultsFile, 'utf8').catch(() => '');
  const results = lines
    .split('\n')
    .filter(Boolean)
    .map((line) => JSON.parse(line));
  return { status, results };
}

/** The name of a test's file, whether the runner reports the source or the bundle. */
const fileOf = (file = '') => path.basename(file).replace(/\.test\.[a-z]+$/, '');
const key = ({ file, name }) => JSON.stringify([fileOf(file), name]);
const { status, results } = await attempt(built);
const all = new Map(results.map((result) => [key(result), result]));
const failing = () => [...all.values()].filter((result) => result.state === 'fail');
// Browser tests depend on how busy the machine is, so failing files are run again; retries are counted and
// listed. Files with a line starting with "Never retried" test for data loss: their first failure is final.
const neverRetried = new Set();
for (const name of files) {
  const text = await readFile(path.join(root, folder, name), 'utf8');
  if (/^\/\/ Never retried\b/m.test(text)) neverRetried.add(fileOf(name));
}
const retriable = () => failing().filter(({ file }) => !neverRetried.has(fileOf(file)));
for (let count = 2; count <= attempts && retriable().length > 0; count++) {
  const failedFiles = new Set(retriable().map(({ file }) => fileOf(file)));
  const again = await attempt(built.filter((file) => failedFiles.has(fileOf(file))));
  const passedNow = new Set(again.results.filter(({ state }) => state === 'pass').map(key));
  const failedNow = new Set(again.results.filter(({ state }) => state === 'fail').map(({ file }) => fileOf(file)));
  for (const result of retriable()) {
    // A file that ended before reporting its tests is judged by the new run as a whole.
    const passed = result.name ? passedNow.has(key(result)) : !failedNow.has(fileOf(result.file));
    console.log(
      `retried: ${fileOf(result.file)}: ${result.name ?? 'the file as a whole'} (${passed ? 'passed' : 'failed again'})`,
    );
    if (passed) all.delete(key(result));
  }
  for (const result of again.results) if (!all.has(key(result))) all.set(key(result), result);
}

if (junit) await writeFile(junit, report([...all.values()]));
process.exit(failing().length > 0 || (status !== 0 && results.every(({ state }) => state !== 'fail')) ? 1 : 0);

function report(tests) {
  const escaped = (text) =>
    text
      // XML 1.0 cannot represent these.
      .replace(/[\u0000-\u0008\u000b\u000c\u000e-\u001f\ufffe\uffff]/g, '')
      .replace(/[&<>"]/g, (character) => `&#${character.charCodeAt(0)};`);
  const cases = tests.map(({ file = folder, name = 'the file as a whole', state, message }) => {
    const inner =
      state === 'fail' ? `<failure message="${escaped(message)}"/>` : state === 'skipped' ? '<skipped/>' : '';
    return `<testcase classname="${escaped(fileOf(file))}" name="${escaped(name)}">${inner}</testcase>`;
  });
  return `<?xml version="1.0"?>\n<testsuite>\n${cases.join('\n')}\n</testsuite>\n`;
}
