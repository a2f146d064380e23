/** The parts of the initial document that the bare pages read. */
interface GivenDocument {
  readonly notes: ReadonlyArray<{ readonly id: string; readonly text: string }>;
  readonly tabs: { readonly active: string };
  readonly places?: Readonly<Record<string, { readonly head: number }>>;
}

export interface GivenState {
  readonly __QUENDO_NATIVE_STATE__?: GivenDocument;
}

export function givenDocument({ __QUENDO_NATIVE_STATE__: state }: GivenState): GivenDocument {
  if (!state) throw new Error('the host provided no document');
  return state;
}

/** The text of the active note, and the caret's offset in it. */
export function activeNote(given: GivenState): { readonly text: string; readonly place: number } {
  const { notes, tabs, places } = givenDocument(given);
  const note = notes.find(({ id }) => id === tabs.active);
  if (!note) throw new Error('the document has no active note');
  return { text: note.text, place: places?.[note.id]?.head ?? 0 };
}
