import type { EditorState, Extension, TransactionSpec } from '@codemirror/state';
import { EditorView } from '@codemirror/view';
import { t } from '../i18n/language';
import { matchesKey } from '../keyboard/keys';
import { toPlainText } from '../text/plain';
import { isInCode } from './codePlace';
import { lostImages, toMarkdown } from './htmlToMarkdown';
import { clean, isCode, isTooFull, isTooLong, parseHtml } from './pastedHtml';
import { shownSyntax } from './syntax';

/** The key of pasting without formats, which the web view knows, too. */
export const PLAIN_PASTE = 'Mod-Shift-v';

/** Told what could not be kept, by name. */
export type OnLost = (names: ReadonlyArray<string>) => void;

interface Found {
  readonly text: string;
  readonly lost: ReadonlyArray<string>;
}

/** Formatted text that is pasted or dropped into a Markdown note becomes Markdown. */
export function pasting(onLost: OnLost): Extension {
  let wantsPlain = false;
  let isOwn = false;
  /** Inserts what the library would not; false leaves plain text to it. */
  const insert = (view: EditorView, data: DataTransfer, place: (text: string) => TransactionSpec): boolean => {
    const found = read(view.state, data, wantsPlain);
    wantsPlain = false;
    if (!found) return false;
    if (found.lost.length) onLost(found.lost);
    if (found.text) view.dispatch(place(found.text), { scrollIntoView: true });
    return true;
  };
  return EditorView.domEventHandlers({
    keydown(event) {
      wantsPlain = matchesKey(event, PLAIN_PASTE);
      return false;
    },
    paste(event, view) {
      const { state } = view;
      if (!event.clipboardData || state.readOnly) return false;
      const place = (text: string): TransactionSpec => {
        const { from, to } = state.selection.main;
        const fitted = state.selection.ranges.length > 1 ? text : fit(state, from, to, text);
        return { ...state.replaceSelection(state.toText(fitted)), userEvent: 'input.paste' };
      };
      if (!insert(view, event.clipboardData, place)) return false;
      event.preventDefault();
      return true;
    },
    dragstart() {
      isOwn = true;
      return false;
    },
    dragend() {
      isOwn = false;
      return false;
    },
    drop(event, view) {
      const { state } = view;
      if (!event.dataTransfer || state.readOnly || isOwn || event.dataTransfer.files.length) return false;
      const at = view.posAtCoords({ x: event.clientX, y: event.clientY }, false);
      const place = (text: string): TransactionSpec => {
        const content = state.toText(fit(state, at, at, text));
        const selection = { anchor: at, head: at + content.length };
        return { changes: { from: at, insert: content }, selection, userEvent: 'input.drop' };
      };
      if (!insert(view, event.dataTransfer, place)) return false;
      event.preventDefault();
      view.focus();
      return true;
    },
  });
}

/** What to insert; null if plain text is as good. */
function read(state: EditorState, data: DataTransfer, wantsPlain: boolean): Found | null {
  const [html, plain] = [data.getData('text/html'), data.getData('text/plain')];
  if (!html) {
    if (plain || data.getData('text/uri-list') || !data.files.length) return null;
    return { text: '', lost: [...data.files].map(({ name }) => name || t('preview.image')) };
  }
  const isMarkdown = state.facet(shownSyntax) === 'markdown' && !isInCode(state, state.selection.main.from);
  const isFormatted = isMarkdown && !wantsPlain && !isTooLong(html) && !data.types.includes('vscode-editor-data');
  if (plain && !isFormatted) return null;
  try {
    return convert(html, plain, isFormatted);
  } catch {
    // An error would leave the clipboard to the web view, which inserts HTML as such.
    return plain ? null : { text: '', lost: [t('preview.image')] };
  }
}

function convert(html: string, plain: string, isFormatted: boolean): Found | null {
  const body = parseHtml(html);
  clean(body);
  if (plain && isCode(body)) return null;
  if (isTooLong(html) || isTooFull(body)) return plain ? null : { text: (body.textContent ?? '').trim(), lost: [] };
  const lost = lostImages(body, t('preview.image'));
  const markdown = toMarkdown(body);
  // Hidden or unknown elements must not take words away that the plain text has.
  if (lettersIn(markdown) * 2 < lettersIn(plain)) return lost.length ? { text: plain, lost } : null;
  if (!isFormatted) return { text: toPlainText(markdown), lost };
  if (plain && lost.length === 0 && isSame(markdown, plain)) return null;
  return { text: markdown, lost };
}

function lettersIn(text: string): number {
  return text.match(/[\p{L}\p{N}]/gu)?.length ?? 0;
}

/** Whether Markdown adds nothing to a plain text. */
function isSame(markdown: string, plain: string): boolean {
  const bare = (text: string) => text.replace(/\s+/g, ' ').trim();
  const shown = markdown.replace(/\\([!-/:-@[-`{-~])/g, '$1').replace(/<([^\s<>]+)>/g, '$1');
  return bare(shown) === bare(plain.replace(/<([^\s<>]+)>/g, '$1'));
}

const block = /^(?:#{1,6} |[-*+] |\d{1,9}[.)] |> |\||```|---$)/;
const emptyItem = /^(\s*)(?:[-*+]|\d{1,9}[.)])\s+(?:\[[ xX]\]\s+)?$/;

/** A text with the lines between it and what is around it. A list goes on in an empty item. */
function fit({ doc }: EditorState, from: number, to: number, text: string): string {
  const line = doc.lineAt(from);
  const before = line.text.slice(0, from - line.from);
  const after = doc.lineAt(to).text.slice(to - doc.lineAt(to).from);
  const lines = text.split('\n');
  const item = emptyItem.exec(before);
  if (item && /^(?:[-*+]|\d{1,9}[.)]) /.test(text)) {
    const [first = '', ...others] = lines;
    const indented = others.map((other) => (other ? (item[1] ?? '') + other : other));
    return [first.replace(/^(?:[-*+]|\d{1,9}[.)]) (?:\[[ x]\] )?/, ''), ...indented].join('\n');
  }
  const lead = before.trim() && block.test(text) ? '\n\n' : '';
  const end = after.trim() && block.test(lines.at(-1) ?? '') ? '\n\n' : '';
  return lead + text + end;
}
