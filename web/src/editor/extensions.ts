import { defaultKeymap, history, historyKeymap, indentWithTab } from '@codemirror/commands';
import { bracketMatching, indentUnit } from '@codemirror/language';
import { highlightSelectionMatches, search, searchKeymap } from '@codemirror/search';
import { EditorState, type Extension } from '@codemirror/state';
import { EditorView, type KeyBinding, keymap, placeholder } from '@codemirror/view';
import { htmlTag, t } from '../i18n/language';
import { onMac } from '../keyboard/keys';
import { lineDirections } from './direction';
import { findPanel, openReplace } from './findPanel';
import { foldKeys } from './folding';
import { highlighting } from './highlight';
import { joinLines } from './lines';
import { multipleCursors } from './multipleCursors';
import { nativeSelectAll, undoOnlyWithFocus } from './nativeCommands';
import { phrases } from './phrases';
import { TOP_MARGIN } from './place';
import { wrapping } from './wrapping';

const keys: ReadonlyArray<KeyBinding> = [
  // A Mac's key for replacing, taken elsewhere too.
  { key: 'Mod-Alt-f', run: openReplace, scope: 'editor search-panel' },
  { key: 'Mod-j', run: joinLines, preventDefault: true },
  ...foldKeys,
  ...searchKeymap,
  ...historyKeymap,
  ...defaultKeymap,
  indentWithTab,
];

/** The extensions of every editor. Keys in `reserved` belong to the host's menu. */
export function baseExtensions(reserved: ReadonlyArray<string>, nonce: string): Extension[] {
  const taken = new Set(reserved.map(canonical));
  return [
    history(),
    bracketMatching(),
    indentUnit.of('  '),
    search({ top: true, createPanel: findPanel }),
    multipleCursors,
    lineDirections,
    wrapping,
    highlightSelectionMatches({ minSelectionLength: 3, wholeWords: true }),
    EditorView.lineWrapping,
    EditorView.scrollMargins.of(() => ({ top: TOP_MARGIN, bottom: 48 })),
    EditorView.cspNonce.of(nonce),
    highlighting,
    nativeSelectAll(),
    undoOnlyWithFocus,
    keymap.of(keys.filter((binding) => !isReserved(binding, taken))),
  ];
}

/** Extensions that depend on the interface language. */
export function languageExtensions(): Extension[] {
  return [
    EditorState.phrases.of(phrases()),
    placeholder(t('editor.placeholder')),
    EditorView.contentAttributes.of({
      'aria-label': t('editor.label'),
      'aria-multiline': 'true',
      lang: htmlTag(),
      spellcheck: 'true',
      tabindex: '0',
      autocapitalize: 'sentences',
    }),
  ];
}

export function readOnlyExtensions(readOnly: boolean): Extension {
  return readOnly ? [EditorState.readOnly.of(true)] : [];
}

function isReserved(binding: KeyBinding, taken: ReadonlySet<string>): boolean {
  const key = (onMac ? binding.mac : binding.linux) ?? binding.key;
  return key !== undefined && taken.has(canonical(key));
}

/** A canonical spelling for a key: modifiers in a fixed order, the platform's Mod by that name. */
function canonical(key: string): string {
  const parts = key.split(/-(?!$)/);
  const name = (parts.pop() ?? '').toLowerCase();
  const mod = onMac ? /^(?:cmd|meta|mod)$/i : /^(?:ctrl|mod)$/i;
  const modifiers = parts.map((part) => (mod.test(part) ? 'Mod' : part));
  return [...modifiers.sort(), name].join('-');
}
