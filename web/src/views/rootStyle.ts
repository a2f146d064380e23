import { readTheme, type Settings } from '../state/model';

/** The size of all text at zoom 1; every size in the style sheets is a multiple of it. */
const ROOT_PIXELS = 16;

let current: Pick<Settings, 'theme' | 'zoom'> = { theme: 'system', zoom: 1 };

/** Shows the page in the chosen theme and size. */
export function applyAppearance(settings: Pick<Settings, 'theme' | 'zoom'>): void {
  current = settings;
  const { documentElement: root } = document;
  const theme = readTheme(settings.theme);
  root.dataset.theme = theme === 'system' ? (prefersDark().matches ? 'dark' : 'light') : theme;
  root.style.fontSize = `${ROOT_PIXELS * settings.zoom}px`;
}

/** Follows the desktop for as long as the page lives. */
export function followDesktop(): void {
  prefersDark().addEventListener('change', () => applyAppearance(current));
}

/** A length that grows with the text, in pixels. */
export function rootPixels(rems: number): number {
  return rems * ROOT_PIXELS * current.zoom;
}

function prefersDark(): MediaQueryList {
  return matchMedia('(prefers-color-scheme: dark)');
}
