import { readLineWidth, readTextFace, readTheme, type Settings } from '../state/settings';
import { loadFace } from './faces';

type Appearance = Pick<Settings, 'theme' | 'zoom' | 'textFace' | 'lineWidth'>;

/** The root font size at zoom 1, in pixels; the style sheets size text in rem. */
const ROOT_PIXELS = 16;

let current: Appearance = { theme: 'system', zoom: 1, textFace: 'sans', lineWidth: 'medium' };

/** Applies the theme, and how the text is set. */
export function applyAppearance(settings: Appearance): void {
  current = settings;
  const { documentElement: root } = document;
  const theme = readTheme(settings.theme);
  const shown = theme === 'system' ? (prefersDark().matches ? 'dark' : 'light') : theme;
  if (root.dataset.theme !== shown) {
    root.dataset.theme = shown;
    tellColour(root);
  }
  const face = readTextFace(settings.textFace);
  root.dataset.face = face;
  root.dataset.lines = readLineWidth(settings.lineWidth);
  loadFace(face);
  root.style.fontSize = `${ROOT_PIXELS * settings.zoom}px`;
}

/** Follows the system's theme for the lifetime of the page. */
export function followDesktop(): void {
  prefersDark().addEventListener('change', () => applyAppearance(current));
}

/** Converts rem to pixels at the current zoom. */
export function rootPixels(rems: number): number {
  return rems * ROOT_PIXELS * current.zoom;
}

/** Whoever frames the page can take its colour from here. */
function tellColour(root: HTMLElement): void {
  const colour = getComputedStyle(root).getPropertyValue('--paper').trim();
  document.querySelector('meta[name=theme-color]')?.setAttribute('content', colour);
}

function prefersDark(): MediaQueryList {
  return matchMedia('(prefers-color-scheme: dark)');
}
