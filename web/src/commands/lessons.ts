import type { Key } from '../i18n/catalogue';
import { keyLabel } from '../keyboard/keys';
import type { Lesson } from '../views/practice';

/** Whether the start's first word was replaced everywhere by one and the same other word. */
function isReplaced(text: string, start: string): boolean {
  const word = firstWord(start);
  const parts = start.split(word).map((part) => part.replace(/[.*+?^${}()|[\]\\]/g, '\\$&'));
  const [first = '', second = '', ...others] = parts;
  const found = new RegExp(`^${first}(.+?)${[second, ...others].join('\\1')}$`, 'u').exec(text);
  return found !== null && found[1] !== word;
}

function firstWord(text: string): string {
  return /^\p{L}+/u.exec(text)?.[0] ?? '';
}

const lines = (text: string): string[] => text.split('\n');
const lastLine = (text: string): number => text.lastIndexOf('\n') + 1;

/** The guide's exercises. A lesson is done when the text matches, whichever keys were used. */
export const lessons: ReadonlyArray<Lesson> = [
  {
    label: 'guide.nextMatch',
    keys: keyLabel('Mod-d'),
    hint: 'practice.nextMatch',
    text: 'practice.nextMatch.text',
    isDone: isReplaced,
  },
  {
    label: 'guide.cursors',
    keys: `${keyLabel('Mod-Alt-up')} ↓`,
    hint: 'practice.cursors',
    text: 'practice.cursors.text',
    isDone: (text, start) =>
      text ===
      lines(start)
        .map((line) => `- ${line}`)
        .join('\n'),
  },
  {
    label: 'guide.moveLine',
    keys: `${keyLabel('Alt-up')} ↓`,
    hint: 'practice.moveLine',
    text: 'practice.moveLine.text',
    select: (start) => [lastLine(start), lastLine(start)],
    isDone: (text, start) => text === [...lines(start).slice(-1), ...lines(start).slice(0, -1)].join('\n'),
  },
  {
    label: 'guide.copyLine',
    keys: `${keyLabel('Alt-Shift-up')} ↓`,
    hint: 'practice.copyLine',
    text: 'practice.copyLine.text',
    isDone: (text, start) => text === `${start}\n${start}`,
  },
  {
    label: 'guide.joinLines',
    keys: keyLabel('Mod-j'),
    hint: 'practice.joinLines',
    text: 'practice.joinLines.text',
    isDone: (text, start) => text === lines(start).join(' '),
  },
  {
    label: 'guide.task',
    keys: keyLabel('Mod-enter'),
    hint: 'practice.task',
    text: 'practice.task.text',
    isDone: (text, start) => text === start.replaceAll('[ ]', '[x]'),
  },
  {
    label: 'guide.marks',
    keys: `${keyLabel('Mod-b')} · ${keyLabel('Mod-i')} · ${keyLabel('Mod-e')}`,
    hint: 'practice.marks',
    text: 'practice.marks.text',
    select: (start) => [0, firstWord(start).length],
    isDone: (text, start) => text === start.replace(firstWord(start), '**$&**'),
  },
];

/** The keys a lesson teaches, under their names in the guide's table. */
export function lessonKeys(): ReadonlyArray<readonly [Key, string]> {
  return lessons.map(({ label, keys }) => [label, keys]);
}
