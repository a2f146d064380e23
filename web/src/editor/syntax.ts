import { markdown, markdownLanguage } from '@codemirror/lang-markdown';
import { type Extension, Facet, Prec, type Text } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import { styleTags } from '@lezer/highlight';
import { noteMarks } from '../text/noteMarks';
import { hasLongParagraph, mayHaveLongParagraph } from '../text/paragraphs';
import { noteLinkTag, noteTagTag, taskTag } from './highlight';
import { languageNamed, languageOfFence } from './languages';
import { windowed } from './longMarkdown';
import { markdownKeys } from './markdownKeys';
import { markdownLook } from './markdownLook';
import { renumbering } from './renumbering';
import { taskClicks } from './tasks';

/** The name of the syntax used to show a text. */
export const shownSyntax = Facet.define<string, string>({ combine: (names) => names[0] ?? 'plain' });

/** Code is not prose: no spell checking and no automatic capitals. */
const codeWriting: Extension = [
  Prec.high(EditorView.contentAttributes.of({ spellcheck: 'false', autocapitalize: 'off' })),
  EditorView.editorAttributes.of({ class: 'is-code' }),
];

/** Loads a syntax. Resolves immediately for built-in ones. */
export async function loadSyntax(name: string): Promise<void> {
  await languageNamed(name)?.load();
}

/**
 * Extensions that depend on the syntax; a language that is not loaded yet counts as plain. A long paragraph
 * would slow down every key press in it, so such a text goes without Markdown styling.
 */
export function syntaxExtensions(name: string, text: Text): Extension {
  if (name !== 'markdown') {
    const support = languageNamed(name)?.support;
    return support ? [shownSyntax.of(name), support, codeWriting] : [];
  }
  const isLong = mayHaveLongParagraph(text.length) && hasLongParagraph(text.iterLines());
  return isLong ? shownSyntax.of(name) : [shownSyntax.of(name), markdownSyntax];
}

const { language, support } = markdown({
  base: markdownLanguage,
  addKeymap: false,
  completeHTMLTags: false,
  codeLanguages: languageOfFence,
  extensions: [noteMarks, { props: [styleTags({ TaskMarker: taskTag, NoteLink: noteLinkTag, NoteTag: noteTagTag })] }],
});

const markdownSyntax: Extension = [markdownKeys, renumbering, windowed(language), support, markdownLook, taskClicks];
