import { isLanguage, type Language } from '../i18n/language';
import type { Extra } from './extra';
import { readZoom } from './zoom';

export const themes = ['system', 'light', 'dark'] as const;
export type Theme = (typeof themes)[number];

/** The theme for a stored value; unknown values follow the system. */
export function readTheme(chosen: string): Theme {
  return themes.find((theme) => theme === chosen) ?? 'system';
}

export const sorts = ['edited', 'created', 'title'] as const;
/** What the list of notes is ordered by. */
export type Sort = (typeof sorts)[number];

/** The order for a stored value; unknown values order by the last edit. */
export function readSort(chosen: string): Sort {
  return sorts.find((sort) => sort === chosen) ?? 'edited';
}

/** How each setting is read; a value that cannot be used, or none, gives the default. */
const readers = {
  language: (value: unknown): Language | null => (isLanguage(value) ? value : null),
  sidebarOpen: (value: unknown): boolean => value !== false,
  sidebarMode: (value: unknown): string => (typeof value === 'string' ? value : 'all'),
  /** One of `sorts`, or a later version's value, which is preserved. */
  sort: (value: unknown): string => (typeof value === 'string' ? value : 'edited'),
  /** One of `themes`, or a later version's value, which is preserved. */
  theme: (value: unknown): string => (typeof value === 'string' ? value : 'system'),
  /** Text size factor; 1 is the default. */
  zoom: readZoom,
  /**
   * Whether the preview is kept open beside the text. The preview in place of the text is not persisted, so
   * the page always starts ready for writing.
   */
  previewBeside: (value: unknown): boolean => value === true,
};

type Values = { readonly [Name in keyof typeof readers]: ReturnType<(typeof readers)[Name]> };
export type Settings = Values & { readonly extra: Extra };

export const settingNames = Object.keys(readers) as ReadonlyArray<keyof Values>;

export function readSettings(members: Readonly<Record<string, unknown>>, extra: Extra = []): Settings {
  const values = Object.fromEntries(settingNames.map((name) => [name, readers[name](members[name])]));
  return { ...(values as Values), extra };
}

export const defaultSettings: Settings = readSettings({});
