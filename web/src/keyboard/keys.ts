/** Keys are written as modifiers and a name, joined by hyphens: "Mod-Shift-s". */

/** Whether this is a Mac. The host's platform flag does not tell: it is true on every platform. */
export const onMac = /mac/i.test(globalThis.navigator?.platform ?? '');

type Modifiers = Pick<KeyboardEvent, 'ctrlKey' | 'metaKey'>;

/** Whether the modifier of commands is held: Command on a Mac, where Control edits text, elsewhere Control. */
export function hasMod(event: Modifiers): boolean {
  return onMac ? event.metaKey : event.ctrlKey;
}

/** Whether the other one is held. */
export function hasOtherMod(event: Modifiers): boolean {
  return onMac ? event.ctrlKey : event.metaKey;
}

export function matchesKey(event: KeyboardEvent, key: string): boolean {
  const parts = key.split('-');
  const name = parts.pop() ?? '';
  return (
    !hasOtherMod(event) &&
    hasMod(event) === parts.includes('Mod') &&
    (event.shiftKey === parts.includes('Shift') || signs[name] !== undefined) &&
    event.altKey === parts.includes('Alt') &&
    (event.key.toLowerCase() === name ||
      signs[name]?.includes(event.key) === true ||
      codesOf(name).includes(event.code))
  );
}

/** Whether a key press belongs to an input method. WebKit ends the composition before the key that ends it. */
export function isComposing(event: KeyboardEvent): boolean {
  return event.isComposing || event.keyCode === COMPOSING_KEY_CODE;
}

/** Whether the key removes what is selected in a list. A Mac's delete key is Backspace. */
export function isDelete({ key }: KeyboardEvent): boolean {
  return key === 'Delete' || (onMac && key === 'Backspace');
}

/** Whether the key opens the menu of what has the focus. */
export function isMenuKey({ key, shiftKey }: KeyboardEvent): boolean {
  return key === 'ContextMenu' || (key === 'F10' && shiftKey);
}

/** A key as labelled on this platform's keyboards. */
export function keyLabel(key: string): string {
  const parts = key.split('-');
  const name = parts.pop() ?? '';
  const shown = (onMac ? macSigns[name] : undefined) ?? names[name] ?? name.toUpperCase();
  const held = (modifier: string, label: string): string[] => (parts.includes(modifier) ? [label] : []);
  if (onMac) return [...held('Alt', '⌥'), ...held('Shift', '⇧'), ...held('Mod', '⌘'), shown].join('');
  // The order of GTK's menus.
  return [...held('Shift', 'Shift'), ...held('Mod', 'Ctrl'), ...held('Alt', 'Alt'), shown].join('+');
}

/** The key code that stands for an input method in every browser. */
const COMPOSING_KEY_CODE = 229;

const codes: Record<string, string> = { '[': 'BracketLeft', ']': 'BracketRight' };
/** On some keyboards these characters need Shift, so Shift is not compared for them. */
const signs: Record<string, string> = { plus: '+=', minus: '-' };
const names: Record<string, string> = {
  plus: '+',
  minus: '−',
  up: '↑',
  enter: 'Enter',
  tab: 'Tab',
  escape: 'Esc',
  pageup: 'PageUp',
  pagedown: 'PageDown',
};
/** The signs in a Mac's menus. */
export const macSigns: Readonly<Record<string, string>> = {
  enter: '↩',
  tab: '⇥',
  escape: '⎋',
  delete: '⌫',
  pageup: '⇞',
  pagedown: '⇟',
};

/** The physical key, for layouts whose letters are not Latin, and for Option, which types other characters. */
function codesOf(name: string): string[] {
  const code = codes[name];
  return [`Key${name.toUpperCase()}`, `Digit${name}`, ...(code ? [code] : [])];
}
