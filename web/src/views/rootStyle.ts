import { readTheme, type Settings } from '../state/settings';

/** The root font size at zoom 1, in pixels; the style sheets size text in rem. */
const ROOT_PIXELS = 16;

let current: Pick<Settings, 'theme' | 'zoom'> = { theme: 'system', zoom: 1 };

/** Applies the theme and zoom. */
export function applyAppearance(settings: Pick<Settings, 'theme' | 'zoom'>): void {
  current = settings;
  const { documentElement: root } = document;
  const theme = readTheme(settings.theme);
  root.dataset.theme = theme === 'system' ? (prefersDark().matches ? 'dark' : 'light') : theme;
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

function prefersDark(): MediaQueryList {
  return matchMedia('(prefers-color-scheme: dark)');
}
