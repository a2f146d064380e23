import { PracticeEditor, type PracticeOptions } from '../editor/practiceEditor';
import type { Key } from '../i18n/catalogue';
import { t } from '../i18n/language';
import { h } from '../dom/elements';

/** An exercise that teaches a key. */
export interface Lesson {
  readonly label: Key;
  readonly keys: string;
  readonly hint: Key;
  readonly text: Key;
  /** What is selected at the start; by default, the caret is at the beginning. */
  readonly select?: (start: string) => readonly [from: number, to: number];
  readonly isDone: (text: string, start: string) => boolean;
}

export interface Practice {
  readonly element: HTMLElement;
  focus(): void;
  destroy(): void;
}

/** The exercises, which can be done in any order. */
export function practice(
  lessons: ReadonlyArray<Lesson>,
  options: Pick<PracticeOptions, 'nonce' | 'reservedKeys'>,
): Practice {
  let current = 0;
  let start = '';
  const done = new Set<number>();
  const hint = h('span', {});
  const keys = h('kbd', {});
  const outcome = h('p', { class: 'practice-outcome', attrs: { role: 'status' } });
  const paper = h('div', { class: 'editor practice-text' });
  const next = button('practice.next', () => show(following()));
  const steps = lessons.map((lesson, index) => {
    const step = h('button', {
      class: 'practice-step',
      attrs: { type: 'button' },
      on: { click: () => show(index) },
    });
    step.append(
      h('span', { class: 'practice-tick', attrs: { 'aria-hidden': 'true' } }),
      h('span', { t: lesson.label }),
    );
    return step;
  });
  const element = h(
    'section',
    { class: 'practice', attrs: { 'aria-labelledby': 'practiceTitle' } },
    h('h3', { t: 'practice.title', attrs: { id: 'practiceTitle' } }),
    h('ol', { class: 'practice-steps' }, ...steps.map((step) => h('li', {}, step))),
    h(
      'div',
      { class: 'practice-sheet' },
      h('p', { class: 'practice-hint', attrs: { id: 'practiceHint' } }, keys, hint),
      paper,
      h(
        'div',
        { class: 'practice-foot' },
        outcome,
        button('practice.again', () => show(current)),
        next,
      ),
    ),
  );
  const editor = new PracticeEditor({
    parent: paper,
    describedBy: 'practiceHint',
    onText: (text) => {
      if (done.has(current) || !lessons[current]?.isDone(text, start)) return;
      done.add(current);
      mark();
      outcome.dataset.t = done.size === lessons.length ? 'practice.allDone' : 'practice.done';
      outcome.textContent = t(outcome.dataset.t as Key);
    },
    ...options,
  });

  function show(index: number): void {
    const lesson = lessons[index];
    if (!lesson) return;
    current = index;
    done.delete(index);
    start = t(lesson.text);
    hint.dataset.t = lesson.hint;
    hint.textContent = t(lesson.hint);
    keys.textContent = lesson.keys;
    delete outcome.dataset.t;
    outcome.textContent = '';
    editor.show(start, ...(lesson.select?.(start) ?? ([0, 0] as const)));
    mark();
    editor.focus();
  }

  /** The next unfinished lesson, or simply the next one. */
  function following(): number {
    const after = lessons.map((_, step) => (current + 1 + step) % lessons.length);
    return after.find((index) => !done.has(index)) ?? after[0] ?? 0;
  }

  function mark(): void {
    steps.forEach((step, index) => {
      step.classList.toggle('is-done', done.has(index));
      if (index === current) step.setAttribute('aria-current', 'step');
      else step.removeAttribute('aria-current');
    });
    next.classList.toggle('primary', done.has(current));
  }

  show(0);
  return { element, focus: () => editor.focus(), destroy: () => editor.destroy() };
}

function button(label: Key, run: () => void): HTMLButtonElement {
  return h('button', { class: 'button', t: label, attrs: { type: 'button' }, on: { click: run } });
}
