import { type Language, setLanguage, t } from '../i18n/language';
import type { Theme } from '../state/settings';
import { zoomStep } from '../state/zoom';
import type { Context } from './context';

/** The user picked a language in the page; the host's menus follow it. */
export function chooseLanguage({ port }: Context, language: Language): void {
  setLanguage(language);
  port.rememberLanguage(language);
}

export function chooseTheme({ workspace }: Context, theme: Theme): void {
  workspace.setSettings({ theme });
}

export function changeZoom(context: Context, direction: 1 | -1): void {
  setZoom(context, zoomStep(context.workspace.settings.zoom, direction));
}

export function resetZoom(context: Context): void {
  setZoom(context, 1);
}

/** Announces the size even when it did not change, at either end of the range. */
function setZoom({ workspace, shell }: Context, zoom: number): void {
  if (zoom !== workspace.settings.zoom) workspace.setSettings({ zoom });
  shell.toasts.show(t('zoom.now', { percent: Math.round(zoom * 100) }), undefined, 'zoom');
}
