import { defaultKeymap, history, historyKeymap } from '@codemirror/commands';
import { EditorView, keymap } from '@codemirror/view';
import { activeNote, type GivenState } from './given';

// The least that counts as an editor: typing, undo and line wrapping.
const { text, place } = activeNote(window as GivenState);
const view = new EditorView({
  parent: document.body,
  doc: text,
  selection: { anchor: place },
  extensions: [history(), keymap.of([...historyKeymap, ...defaultKeymap]), EditorView.lineWrapping],
});
view.dispatch({ effects: EditorView.scrollIntoView(place, { y: 'center' }) });
view.focus();
