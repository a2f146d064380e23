import { nextFrame, Recording } from './clock';

interface Search {
  readonly query: string;
  /** From the input event until all notes have been looked through. */
  readonly found: number;
  /** From the input event to the end of the frame that shows the list. */
  readonly shown: number;
}

const searches = new Recording<Search>('typedSearches');
let typed: { readonly query: string; readonly began: number } | null = null;

window.addEventListener(
  'input',
  ({ target }) => {
    if (!searches.wanted || !(target instanceof HTMLInputElement)) return;
    const now = performance.now();
    // One that the next key has overtaken took at least so long.
    if (typed) searches.add({ query: typed.query, found: now - typed.began, shown: now - typed.began });
    typed = { query: target.value, began: now };
  },
  { capture: true },
);

// Both pages say how much was found once all has been looked through, though it be the same words again.
window.addEventListener('DOMContentLoaded', () => {
  const outcome = document.querySelector('.outcome');
  if (!outcome) throw new Error('the page says nowhere what was found');
  new MutationObserver(() => {
    const search = typed;
    if (!search) return;
    typed = null;
    const found = performance.now() - search.began;
    nextFrame(({ ended }) => searches.add({ query: search.query, found, shown: ended - search.began }));
  }).observe(outcome, { childList: true, characterData: true, subtree: true });
});
