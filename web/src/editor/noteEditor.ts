import { isolateHistory } from '@codemirror/commands';
import {
  type ChangeSet,
  type ChangeSpec,
  Compartment,
  EditorState,
  type StateEffect,
  type Text,
} from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import type { Note, Place } from '../state/model';
import { baseExtensions, languageExtensions, readOnlyExtensions } from './extensions';
import { folding } from './folding';
import { syntaxOf } from './languages';
import { placeOf, scrollTo, selectionAt } from './place';
import { Sessions } from './sessions';
import { loadSyntax, shownSyntax, syntaxExtensions } from './syntax';

export interface NoteEditorOptions {
  readonly parent: HTMLElement;
  readonly readOnly: boolean;
  readonly nonce: string;
  /** Keys the host's menu owns, which the editor ignores. */
  readonly reservedKeys: ReadonlyArray<string>;
  /** `removed` is how much of the text before is gone. */
  readonly onText: (id: string, text: Text, removed: number) => void;
  /** Called when the text, the selection or the shown note changes. */
  readonly onView: () => void;
  readonly onScroll: () => void;
}

export interface ShownNote {
  readonly id: string;
  readonly state: EditorState;
  readonly top: number;
  readonly syntax: string;
}

interface Session {
  readonly state: EditorState;
  readonly scroll: StateEffect<unknown>;
}

/** The page's only note editor. Each note keeps its own undo history, selection and scroll position. */
export class NoteEditor {
  readonly #view: EditorView;
  readonly #options: NoteEditorOptions;
  readonly #sessions = new Sessions<Session>();
  readonly #texts = new Compartment();
  readonly #syntax = new Compartment();
  #syntaxName = 'markdown';
  #shown: string | null = null;

  constructor(options: NoteEditorOptions) {
    this.#options = options;
    // The first state determines how the library creates its style element, so it carries the nonce.
    const extensions = EditorView.cspNonce.of(options.nonce);
    this.#view = new EditorView({ parent: options.parent, extensions });
  }

  /** The shown note with its selection and scroll position. */
  get place(): { readonly id: string; readonly place: Place } | null {
    if (this.#shown === null) return null;
    this.#applyScroll();
    return { id: this.#shown, place: placeOf(this.#view) };
  }

  /** Shows a note where this editor left it, otherwise at the place remembered from an earlier visit. */
  show(note: Note, remembered: Place | null = null): void {
    this.#syntaxName = syntaxOf(note);
    if (this.#shown === note.id && note.text.is(this.#view.state.doc)) {
      void this.#followSyntax();
      return;
    }
    this.#keepSession();
    this.#shown = note.id;
    const session = this.#sessions.take(note.id);
    const known = session && note.text.is(session.state.doc) ? session : null;
    this.#view.setState(known?.state ?? this.#newState(note, remembered));
    this.relabel();
    if (known) this.#view.dispatch({ effects: known.scroll });
    else if (remembered) this.#view.dispatch({ effects: scrollTo(remembered, note.text.length) });
    void this.#followSyntax();
    this.#options.onView();
  }

  /** Closes the current note, keeping its session. */
  hide(): void {
    this.#keepSession();
    this.#shown = null;
    this.#view.setState(EditorState.create({ extensions: EditorView.cspNonce.of(this.#options.nonce) }));
  }

  /** Drops the sessions of deleted notes and of notes without a tab that were left long ago. */
  release(open: Iterable<string>, exists: (id: string) => boolean): void {
    this.#sessions.release(open, exists);
  }

  focus(): void {
    this.#view.focus();
  }

  /** Call after the text size changes, which the editor does not notice by itself. */
  remeasure(): void {
    this.#view.requestMeasure();
  }

  /** The shown note: its state, including the selection, and the start of its visible part. */
  get shownNote(): ShownNote | null {
    if (this.#shown === null) return null;
    const { state } = this.#view;
    const top = this.#view.scrollDOM.getBoundingClientRect().top - this.#view.documentTop;
    const block = this.#view.lineBlockAtHeight(Math.max(0, top));
    return { id: this.#shown, state, top: block.from, syntax: this.#syntaxName };
  }

  /** Focuses the editor and runs one of its commands on the shown note. */
  run(command: (view: EditorView) => boolean): void {
    if (this.#shown === null) return;
    this.#view.focus();
    command(this.#view);
  }

  /** Changes the shown note's text, as one step that can be undone. */
  change(changes: ChangeSpec): void {
    if (this.#shown === null) return;
    this.#view.dispatch({ changes, annotations: isolateHistory.of('full'), userEvent: 'input.restore' });
  }

  /** Switches labels and phrases to the current language. */
  relabel(): void {
    this.#view.dispatch({ effects: this.#texts.reconfigure(languageExtensions()) });
  }

  /** Switches to the note's syntax as soon as that is loaded. */
  async #followSyntax(): Promise<void> {
    const [shown, name] = [this.#shown, this.#syntaxName];
    if (this.#view.state.facet(shownSyntax) === name) return;
    await loadSyntax(name);
    if (this.#shown !== shown || this.#syntaxName !== name) return;
    const extensions = syntaxExtensions(name, this.#view.state.doc);
    this.#view.dispatch({ effects: this.#syntax.reconfigure(extensions) });
  }

  /** The library scrolls in the next frame, and a note may be left before that. Measuring makes it scroll now. */
  #applyScroll(): void {
    this.#view.lineBlockAtHeight(0);
  }

  #keepSession(): void {
    if (this.#shown === null) return;
    this.#applyScroll();
    const { state } = this.#view;
    this.#sessions.keep(this.#shown, { state, scroll: this.#view.scrollSnapshot() });
  }

  #newState(note: Note, place: Place | null): EditorState {
    const { readOnly, nonce, reservedKeys, onText, onView, onScroll } = this.#options;
    const doc = note.text.tree;
    return EditorState.create({
      doc,
      ...(place ? { selection: selectionAt(place, doc.length) } : {}),
      extensions: [
        baseExtensions(reservedKeys, nonce),
        this.#texts.of([]),
        this.#syntax.of(syntaxExtensions(syntaxOf(note), doc)),
        folding(doc.length),
        readOnlyExtensions(readOnly),
        EditorView.updateListener.of((update) => {
          if (update.docChanged) onText(note.id, update.state.doc, removedBy(update.changes));
          if (update.docChanged || update.selectionSet) onView();
        }),
        EditorView.domEventHandlers({ scroll: () => onScroll() }),
      ],
    });
  }
}

function removedBy(changes: ChangeSet): number {
  let removed = 0;
  changes.iterChangedRanges((from, to) => {
    removed += to - from;
  });
  return removed;
}
