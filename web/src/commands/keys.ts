/** Keys are written as modifiers and a name, joined by hyphens: "Mod-Shift-s". */

/** Whether this is a Mac. The host's platform flag does not tell. */
const onMac = /mac/i.test(globalThis.navigator?.platform ?? '');

/** Host menu keys that have no command here. */
export const menuOnlyKeys = ['Mod-h', 'Mod-Alt-h', 'Mod-m', 'Mod-q', 'Mod-Shift-w'];

export function matchesKey(event: KeyboardEvent, key: string): boolean {
  const parts = key.split('-');
  const name = parts.pop() ?? '';
  const mod = onMac ? event.metaKey : event.ctrlKey;
  const otherMod = onMac ? event.ctrlKey : event.metaKey;
  return (
    !otherMod &&
    mod === parts.includes('Mod') &&
    (event.shiftKey === parts.includes('Shift') || signs[name] !== undefined) &&
    event.altKey === parts.includes('Alt') &&
    (event.key.toLowerCase() === name ||
      signs[name]?.includes(event.key) === true ||
      codesOf(name).includes(event.code))
  );
}

/** A key as labelled on this platform's keyboards. */
export function keyLabel(key: string): string {
  const parts = key.split('-');
  const name = parts.pop() ?? '';
  const shown = names[name] ?? name.toUpperCase();
  if (onMac) {
    const modifiers = [
      parts.includes('Alt') ? '⌥' : '',
      parts.includes('Shift') ? '⇧' : '',
      parts.includes('Mod') ? '⌘' : '',
    ];
    return modifiers.join('') + shown;
  }
  const words = [
    parts.includes('Mod') ? 'Ctrl' : '',
    parts.includes('Alt') ? 'Alt' : '',
    parts.includes('Shift') ? 'Shift' : '',
    shown,
  ];
  return words.filter(Boolean).join('+');
}

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
};

/** The physical key, for layouts whose letters are not Latin. */
function codesOf(name: string): string[] {
  const code = codes[name];
  return [`Key${name.toUpperCase()}`, `Digit${name}`, ...(code ? [code] : [])];
}
