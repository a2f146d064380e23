import { defaultKeymap, history, historyKeymap } from '@codemirror/commands';
import { EditorView, keymap } from '@codemirror/view';
import { activeNote, type GivenState } from './given';

// The least that a person would call an editor: it takes keys, undoes them and wraps lines.
const { text, place } = activeNote(window as GivenState);
const view = new EditorView({
  parent: document.body,
  doc: text,
  selection: { anchor: place },
  extensions: [history(), keymap.of([...historyKeymap, ...defaultKeymap]), EditorView.lineWrapping],
});
view.dispatch({ effects: EditorView.scrollIntoView(place, { y: 'center' }) });
view.focus();
