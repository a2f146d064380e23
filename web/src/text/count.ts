import type { Text } from '@codemirror/state';

export interface Count {
  readonly words: number;
  /** Code points, so an emoji counts once; line breaks included. */
  readonly characters: number;
}

/** A run of letters and digits, or one character of a script that does not separate words with spaces. */
const word =
  /[\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}]|(?:(?![\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}])[\p{L}\p{N}\p{M}])+(?:['’.,_-](?=[\p{L}\p{N}])(?:(?![\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}])[\p{L}\p{N}\p{M}])+)*/gu;

/** Texts share nodes where they are equal, so only new nodes have to be counted. */
const counted = new WeakMap<Text, Count>();

export function countString(text: string): Count {
  let words = 0;
  word.lastIndex = 0;
  while (word.test(text)) words++;
  let pairs = 0;
  for (let i = 0; i < text.length; i++) if ((text.charCodeAt(i) & 0xfc00) === 0xd800) pairs++;
  return { words, characters: text.length - pairs };
}

/** Counts a text, yielding after each node; returns the total. */
export function* countText(text: Text): Generator<undefined, Count> {
  const known = counted.get(text);
  if (known) return known;
  let words = 0;
  let characters = 0;
  if (text.children) {
    for (const child of text.children) {
      const count = yield* countText(child);
      words += count.words;
      characters += count.characters;
    }
    characters += text.children.length - 1;
  } else {
    ({ words, characters } = countString(text.toString()));
    yield;
  }
  const count = { words, characters };
  counted.set(text, count);
  return count;
}
