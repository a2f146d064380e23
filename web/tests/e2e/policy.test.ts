import assert from 'node:assert/strict';
import { createServer, type Server } from 'node:http';
import type { AddressInfo } from 'node:net';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import type { Browser, Page } from 'playwright-core';
import { launch } from './browser';

/** What a script that got into the page might do, by the directive that forbids it. `URL` is a server's address. */
const ATTEMPTS: ReadonlyArray<readonly [directive: string, script: string]> = [
  ['script-src', `add('script', { textContent: 'ran()' })`],
  ['script-src', `add('script', { src: 'URL/script.js' })`],
  ['script-src', `add('script', { src: 'data:text/javascript,ran()' })`],
  ['script-src', `{ const one = add('p'); one.setAttribute('onclick', 'ran()'); one.click(); }`],
  ['script-src', `add('a', { href: 'javascript:ran()' }).click()`],
  ['script-src', `import('URL/module.js').catch(() => {})`],
  ['worker-src', `try { new Worker('data:text/javascript,fetch("URL/worker")'); } catch {}`],
  ['style-src', `add('style', { textContent: '@import "URL/style.css"; p { color: red }' })`],
  ['style-src', `add('link', { rel: 'stylesheet', href: 'URL/style.css' })`],
  ['img-src', `add('img', { src: 'URL/image.png' })`],
  ['media-src', `add('video', { src: 'URL/video.mp4' })`],
  ['connect-src', `fetch('URL/fetch').catch(() => {})`],
  ['connect-src', `{ const one = new XMLHttpRequest(); one.open('GET', 'URL/request'); one.send(); }`],
  ['connect-src', `navigator.sendBeacon('URL/beacon', 'text')`],
  ['connect-src', `try { new WebSocket('URL/socket'.replace('http', 'ws')); } catch {}`],
  ['connect-src', `new EventSource('URL/events')`],
  ['frame-src', `add('iframe', { src: 'URL/frame' })`],
  ['object-src', `add('object', { data: 'URL/object' })`],
  ['form-action', `add('form', { action: 'URL/form', method: 'post' }).submit()`],
  ['base-uri', `add('base', { href: 'URL/' })`],
];

const PREPARED = `
  window.violated = [];
  window.hasRun = false;
  window.ran = () => { window.hasRun = true; };
  document.addEventListener('securitypolicyviolation', (event) => violated.push(event.effectiveDirective));
  window.add = (name, members = {}) => {
    const one = Object.assign(document.createElement(name), members);
    document.body.append(one);
    return one;
  };`;

let browser: Browser;
let server: Server;
let url: string;
const asked: string[] = [];
before(async () => {
  browser = await launch();
  server = createServer((request, response) => {
    asked.push(request.url ?? '');
    response.setHeader('Access-Control-Allow-Origin', '*');
    response.end();
  });
  await new Promise<void>((resolve) => server.listen(0, '127.0.0.1', resolve));
  url = `http://127.0.0.1:${(server.address() as AddressInfo).port}`;
});
after(async () => {
  await browser.close();
  server.close();
});

async function openPage(bypassCSP: boolean): Promise<Page> {
  const context = await browser.newContext({ bypassCSP });
  const page = await context.newPage();
  await page.addInitScript({ content: PREPARED });
  await page.goto(pathToFileURL(path.resolve('dist/index.html')).href);
  return page;
}

test("the page's policy forbids whatever a script that got into it might do", async () => {
  const page = await openPage(false);
  for (const [directive, script] of ATTEMPTS) {
    await page.evaluate(`violated.length = 0; ${script.replaceAll('URL', url)}`);
    // One attempt can be reported more than once, and late.
    await page.waitForFunction(
      (name) => (window as unknown as { violated: string[] }).violated.some((one) => one.startsWith(name)),
      directive,
    );
  }
  assert.equal(await page.evaluate('hasRun'), false);
  // Whatever was asked for was asked for before this.
  const free = await openPage(true);
  await free.evaluate(`fetch('${url}/last')`);
  assert.deepEqual(asked, ['/last']);
  await free.context().close();
  await page.context().close();
});

test('without the policy, the same scripts run', async () => {
  const page = await openPage(true);
  const running = ATTEMPTS.filter(([, script]) => script.includes('ran()'));
  assert.equal(running.length, 4);
  for (const [, script] of running) {
    await page.evaluate(`hasRun = false; ${script}`);
    await page.waitForFunction('hasRun');
  }
  await page.context().close();
});
