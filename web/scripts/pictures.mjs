// Takes a picture of every view, light and dark, in every language: `npm run pictures`. They are there to be
// looked at; what a program can judge of them is in the tests.
import { pathToFileURL } from 'node:url';
import { bundleForNode } from './bundle.mjs';

const [program] = await bundleForNode(['scripts/pictures/takePictures.ts']);
await import(pathToFileURL(program).href);
