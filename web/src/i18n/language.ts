import { macSigns, onMac } from '../keyboard/keys';
import { catalogue, type Key } from './catalogue';

export const languages = ['pt', 'en', 'es'] as const;
export type Language = (typeof languages)[number];

const htmlTags: Record<Language, string> = { pt: 'pt-BR', en: 'en', es: 'es' };
const listeners = new Set<() => void>();
let current: Language = 'pt';

export function isLanguage(value: unknown): value is Language {
  return languages.some((language) => language === value);
}

/** The first requested language that is supported; Portuguese if none is. */
export function pickLanguage(tags: ReadonlyArray<string>): Language {
  for (const tag of tags) {
    const code = tag.slice(0, 2).toLowerCase();
    if (isLanguage(code)) return code;
  }
  return 'pt';
}

export function currentLanguage(): Language {
  return current;
}

export function htmlTag(): string {
  return htmlTags[current];
}

export function setLanguage(language: Language): void {
  if (language === current) return;
  current = language;
  for (const listener of listeners) listener();
}

export function onLanguageChange(listener: () => void): void {
  listeners.add(listener);
}

const keyNames: Readonly<Record<string, Key>> = {
  enter: 'key.enter',
  delete: 'key.delete',
  escape: 'key.escape',
  tab: 'key.tab',
};

/** A text in the current language, with its `{placeholders}` filled in; `{enter}` and other keys fill themselves. */
export function t(key: Key, values: Record<string, string | number> = {}): string {
  const text = catalogue[key][languages.indexOf(current)] ?? key;
  return text.replace(/\{(\w+)\}/g, (hole, name) => String(values[name] ?? keyName(name) ?? hole));
}

/** A text in every language, the current one first. */
export function inEveryLanguage(key: Key): ReadonlyArray<string> {
  const here = languages.indexOf(current);
  const others = catalogue[key].filter((_, index) => index !== here);
  return [t(key), ...others];
}

function keyName(name: string): string | undefined {
  if (onMac) return macSigns[name];
  const key = keyNames[name];
  return key && t(key);
}

/** The singular or plural form of a text with a count. */
export function counted(key: CountedKey, n: number, values: Record<string, string> = {}): string {
  return t(`${key}.${n === 1 ? 'one' : 'many'}`, { ...values, n });
}

type CountedKey = Key extends infer K ? (K extends `${infer Base}.one` ? Base : never) : never;
