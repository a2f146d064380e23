// Takes a screenshot of every view, light and dark, in every language: `npm run pictures`. They are for
// people to look at; everything a program can check is in the tests.
import { pathToFileURL } from 'node:url';
import { bundleForNode } from './bundle.mjs';

const [program] = await bundleForNode(['scripts/pictures/takePictures.ts']);
await import(pathToFileURL(program).href);
