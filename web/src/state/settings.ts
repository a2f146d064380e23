import { isLanguage, type Language } from '../i18n/language';
import type { Extra } from './extra';
import { readZoom } from './zoom';

export const themes = ['system', 'light', 'dark'] as const;
export type Theme = (typeof themes)[number];

/** The theme for a stored value; unknown values follow the system. */
export function readTheme(chosen: string): Theme {
  return themes.find((theme) => theme === chosen) ?? 'system';
}

export const textFaces = ['sans', 'serif', 'mono'] as const;
export type TextFace = (typeof textFaces)[number];

/** The text face for a stored value; unknown values mean the desktop's own. */
export function readTextFace(chosen: string): TextFace {
  return textFaces.find((face) => face === chosen) ?? 'sans';
}

export const lineWidths = ['medium', 'narrow', 'wide'] as const;
export type LineWidth = (typeof lineWidths)[number];

export function readLineWidth(chosen: string): LineWidth {
  return lineWidths.find((width) => width === chosen) ?? 'medium';
}

/** The sidebar's width in pixels, at the normal text size. */
export const sidebarWidths = { least: 180, usual: 272, most: 560 } as const;

export function readSidebarWidth(value: unknown): number {
  if (typeof value !== 'number' || Number.isNaN(value)) return sidebarWidths.usual;
  return Math.round(Math.min(Math.max(value, sidebarWidths.least), sidebarWidths.most));
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
  /** One of `textFaces` and one of `lineWidths`, or a later version's values, which are preserved. */
  textFace: (value: unknown): string => (typeof value === 'string' ? value : 'sans'),
  lineWidth: (value: unknown): string => (typeof value === 'string' ? value : 'medium'),
  sidebarWidth: readSidebarWidth,
  /** Text size factor; 1 is the default. */
  zoom: readZoom,
  /**
   * Whether the preview is kept open beside the text. The preview in place of the text is not persisted, so
   * the page always starts ready for writing.
   */
  previewBeside: (value: unknown): boolean => value === true,
  focusMode: (value: unknown): boolean => value === true,
  typewriter: (value: unknown): boolean => value === true,
  /** Whether the tags are shown below the list. */
  tagsOpen: (value: unknown): boolean => value !== false,
};

type Values = { readonly [Name in keyof typeof readers]: ReturnType<(typeof readers)[Name]> };
export type Settings = Values & { readonly extra: Extra };

export const settingNames = Object.keys(readers) as ReadonlyArray<keyof Values>;

export function readSettings(members: Readonly<Record<string, unknown>>, extra: Extra = []): Settings {
  const values = Object.fromEntries(settingNames.map((name) => [name, readers[name](members[name])]));
  return { ...(values as Values), extra };
}

export const defaultSettings: Settings = readSettings({});
