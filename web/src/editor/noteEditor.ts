import { isolateHistory } from '@codemirror/commands';
import {
  Annotation,
  type ChangeSet,
  type ChangeSpec,
  Compartment,
  EditorState,
  type Extension,
  type StateEffect,
  type Text,
} from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import type { Note, Place } from '../state/model';
import { type Edit, edited } from '../text/renames';
import { baseExtensions, languageExtensions, readOnlyExtensions } from './extensions';
import { folding } from './folding';
import { nameCompletion, type Names } from './nameCompletion';
import { type Target, targetAt, targetClicks } from './targets';
import { hits, showHits } from './hits';
import { syntaxOf } from './languages';
import { type OnLost, pasting } from './paste';
import { placeOf, scrollTo, selectionAt } from './place';
import { Sessions } from './sessions';
import { type WritingModes, writingModes } from './writingModes';
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
  readonly onLost: OnLost;
  /** What can be completed in a text. */
  readonly names: () => Names;
  readonly follow: (target: Target) => void;
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

/** Marks a change that is not the user's writing. */
const rewriting = Annotation.define<boolean>();

/** The page's only note editor. Each note keeps its own undo history, selection and scroll position. */
export class NoteEditor {
  readonly #view: EditorView;
  readonly #options: NoteEditorOptions;
  readonly #sessions = new Sessions<Session>();
  readonly #texts = new Compartment();
  readonly #syntax = new Compartment();
  readonly #modes = new Compartment();
  #writingModes: Extension = [];
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

  /** Marks what a search has found in the shown note, and goes to the best of it. */
  showHits(words: ReadonlyArray<string>): void {
    if (this.#shown !== null) showHits(this.#view, words);
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

  setModes(modes: WritingModes): void {
    this.#writingModes = writingModes(modes);
    this.#view.dispatch({ effects: this.#modes.reconfigure(this.#writingModes) });
  }

  /** Changes a note's text, shown or not, as a step of its own in its undo history; returns the new text. */
  rewrite(note: Note, changes: ReadonlyArray<Edit>): Text | string {
    const spec = { changes, annotations: [isolateHistory.of('full'), rewriting.of(true)] };
    if (this.#shown === note.id) {
      this.#view.dispatch(spec);
      return this.#view.state.doc;
    }
    const session = this.#sessions.take(note.id);
    if (!session || !note.text.is(session.state.doc)) return edited(note.text.toString(), changes);
    const transaction = session.state.update(spec);
    const scroll = session.scroll.map(transaction.changes) ?? session.scroll;
    this.#sessions.keep(note.id, { state: transaction.state, scroll });
    return transaction.state.doc;
  }

  /** What the text at the caret leads to. */
  get target(): Target | null {
    const { state } = this.#view;
    return this.#shown === null ? null : targetAt(state, state.selection.main.head);
  }

  /** Selects a part of the shown note and scrolls to it. */
  select(from: number, to = from): void {
    const { length } = this.#view.state.doc;
    this.#view.dispatch({
      selection: { anchor: Math.min(from, length), head: Math.min(to, length) },
      effects: EditorView.scrollIntoView(Math.min(from, length), { y: 'center' }),
    });
  }

  /** Changes the shown note's text, as one step that can be undone. */
  change(changes: ChangeSpec): void {
    if (this.#shown === null) return;
    this.#view.dispatch({ changes, annotations: isolateHistory.of('full'), userEvent: 'input.restore' });
  }

  /** Switches labels and phrases to the current language. */
  relabel(): void {
    const texts = this.#texts.reconfigure(languageExtensions());
    this.#view.dispatch({ effects: [texts, this.#modes.reconfigure(this.#writingModes)] });
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
    const { readOnly, nonce, reservedKeys, onText, onView, onScroll, onLost, names, follow } = this.#options;
    const doc = note.text.tree;
    return EditorState.create({
      doc,
      ...(place ? { selection: selectionAt(place, doc.length) } : {}),
      extensions: [
        baseExtensions(reservedKeys, nonce),
        this.#texts.of([]),
        this.#modes.of([]),
        this.#syntax.of(syntaxExtensions(syntaxOf(note), doc)),
        pasting(onLost),
        folding(doc.length),
        nameCompletion(names, note.id),
        targetClicks(follow),
        hits(),
        readOnlyExtensions(readOnly),
        EditorView.updateListener.of((update) => {
          const isRewritten = update.transactions.some((one) => one.annotation(rewriting));
          if (update.docChanged && !isRewritten) onText(note.id, update.state.doc, removedBy(update.changes));
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
