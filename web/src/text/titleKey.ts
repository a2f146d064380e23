import { extensionOf } from './names';

/** Titles with equal keys are the same to a link: case, blanks and the characters that end a link do not count. */
export function titleKey(title: string): string {
  return linkable(title).normalize('NFC').toLowerCase();
}

/** A title as it can be written into a link. */
export function linkable(title: string): string {
  return title.replace(/[[\]|\s]+/g, ' ').trim();
}

/** The name of a file without its extension, by which links may call an imported note. */
export function withoutExtension(name: string): string {
  const extension = extensionOf(name);
  return extension ? name.slice(0, -extension.length - 1) : name;
}

/** Tags that differ in case are the same one. */
export function tagKey(name: string): string {
  return name.normalize('NFC').toLowerCase();
}
