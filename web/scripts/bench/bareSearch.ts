import { type GivenState, givenDocument } from './given';

const ROWS = 24;

// The least a search can do: scan every text and list the first ones that match.
const texts = givenDocument(window as GivenState).notes.map(({ text }) => text);
const input = document.createElement('input');
input.id = 'searchInput';
const outcome = document.createElement('p');
outcome.className = 'outcome';
const list = document.createElement('div');
document.body.append(input, outcome, list);
input.addEventListener('input', () => {
  const found = texts.filter((text) => text.includes(input.value));
  list.replaceChildren(
    ...found.slice(0, ROWS).map((text) => {
      const row = document.createElement('div');
      row.textContent = text.slice(0, 80);
      return row;
    }),
  );
  outcome.textContent = String(found.length);
});
input.focus();
