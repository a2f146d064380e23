import { nextFrame, Recording } from './clock';

interface Search {
  readonly query: string;
  /** From the input event until all notes have been searched. */
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
    // A search overtaken by the next key took at least this long.
    if (typed) searches.add({ query: typed.query, found: now - typed.began, shown: now - typed.began });
    typed = { query: target.value, began: now };
  },
  { capture: true },
);

// Both pages report the number of matches when the search is complete, even if the text is the same as
// before.
window.addEventListener('DOMContentLoaded', () => {
  const outcome = document.querySelector('.outcome');
  if (!outcome) throw new Error('the page has no .outcome element');
  new MutationObserver(() => {
    const search = typed;
    if (!search) return;
    typed = null;
    const found = performance.now() - search.began;
    nextFrame(({ ended }) => searches.add({ query: search.query, found, shown: ended - search.began }));
  }).observe(outcome, { childList: true, characterData: true, subtree: true });
});
