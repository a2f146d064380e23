import { Compartment, EditorState, type StateEffect, type Text } from '@codemirror/state';
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
  /** Keys that the host's menu owns and the editor leaves alone. */
  readonly reservedKeys: ReadonlyArray<string>;
  readonly onText: (id: string, text: Text) => void;
  /** The text, the selection or the note on show is another. */
  readonly onView: () => void;
  readonly onScroll: () => void;
}

export interface OnShow {
  readonly id: string;
  readonly state: EditorState;
  readonly top: number;
  readonly syntax: string;
}

interface Session {
  readonly state: EditorState;
  readonly scroll: StateEffect<unknown>;
}

/** The one editor on the page. Each note keeps its own undo history, caret and scroll position. */
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
    // The first state decides how the library's style element is made, so it carries the nonce.
    const extensions = EditorView.cspNonce.of(options.nonce);
    this.#view = new EditorView({ parent: options.parent, extensions });
  }

  /** The shown note and where it is being read and written. */
  get place(): { readonly id: string; readonly place: Place } | null {
    return this.#shown === null ? null : { id: this.#shown, place: placeOf(this.#view) };
  }

  /** Shows a note where this editor left it, else at a place remembered from an earlier visit. */
  show(note: Note, remembered: Place | null = null): void {
    this.#syntaxName = syntaxOf(note);
    if (this.#shown === note.id && this.#view.state.doc === note.text) {
      void this.#followSyntax();
      return;
    }
    this.#keepSession();
    this.#shown = note.id;
    const session = this.#sessions.take(note.id);
    const known = session?.state.doc === note.text ? session : null;
    this.#view.setState(known?.state ?? this.#newState(note, remembered));
    this.relabel();
    if (known) this.#view.dispatch({ effects: known.scroll });
    else if (remembered) this.#view.dispatch({ effects: scrollTo(remembered, note.text.length) });
    void this.#followSyntax();
    this.#options.onView();
  }

  /** Leaves the current note, keeping its place. */
  hide(): void {
    this.#keepSession();
    this.#shown = null;
    this.#view.setState(EditorState.create({ extensions: EditorView.cspNonce.of(this.#options.nonce) }));
  }

  /** Lets go of what is kept of notes that are gone, and of those without a tab that were left long ago. */
  release(open: Iterable<string>, exists: (id: string) => boolean): void {
    this.#sessions.release(open, exists);
  }

  focus(): void {
    this.#view.focus();
  }

  /** Text has another size, which the editor does not notice by itself. */
  remeasure(): void {
    this.#view.requestMeasure();
  }

  /** What is on show: its text, what is selected of it and where its visible part begins. */
  get onShow(): OnShow | null {
    if (this.#shown === null) return null;
    const { state } = this.#view;
    const top = this.#view.scrollDOM.getBoundingClientRect().top - this.#view.documentTop;
    const block = this.#view.lineBlockAtHeight(Math.max(0, top));
    return { id: this.#shown, state, top: block.from, syntax: this.#syntaxName };
  }

  /** Runs one of the editor's own commands on the text on show. */
  run(command: (view: EditorView) => boolean): void {
    if (this.#shown === null) return;
    this.#view.focus();
    command(this.#view);
  }

  /** Brings labels and phrases to the current language. */
  relabel(): void {
    this.#view.dispatch({ effects: this.#texts.reconfigure(languageExtensions()) });
  }

  /** Shows the text in the syntax that its name asks for, as soon as that is there. */
  async #followSyntax(): Promise<void> {
    const [shown, name] = [this.#shown, this.#syntaxName];
    if (this.#view.state.facet(shownSyntax) === name) return;
    await loadSyntax(name);
    if (this.#shown !== shown || this.#syntaxName !== name) return;
    const extensions = syntaxExtensions(name, this.#view.state.doc);
    this.#view.dispatch({ effects: this.#syntax.reconfigure(extensions) });
  }

  #keepSession(): void {
    if (this.#shown === null) return;
    const { state } = this.#view;
    this.#sessions.keep(this.#shown, { state, scroll: this.#view.scrollSnapshot() });
  }

  #newState(note: Note, place: Place | null): EditorState {
    const { readOnly, nonce, reservedKeys, onText, onView, onScroll } = this.#options;
    return EditorState.create({
      doc: note.text,
      ...(place ? { selection: selectionAt(place, note.text.length) } : {}),
      extensions: [
        baseExtensions(reservedKeys, nonce),
        this.#texts.of([]),
        this.#syntax.of(syntaxExtensions(syntaxOf(note), note.text)),
        folding(note.text.length),
        readOnlyExtensions(readOnly),
        EditorView.updateListener.of((update) => {
          if (update.docChanged) onText(note.id, update.state.doc);
          if (update.docChanged || update.selectionSet) onView();
        }),
        EditorView.domEventHandlers({ scroll: () => onScroll() }),
      ],
    });
  }
}
