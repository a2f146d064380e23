import { t } from '../i18n/language';
import type { Note } from '../state/model';
import { toPlainText } from '../text/plain';
import { toWhatsApp } from '../text/whatsapp';
import { type Context, requireNote } from './context';
import { fits } from './limits';

export function copyAsMarkdown(context: Context): Promise<boolean> {
  return copy(context, (text) => text, 'copied.markdown');
}

export function copyAsPlainText(context: Context): Promise<boolean> {
  return copy(context, toPlainText, 'copied.plain');
}

export function copyForWhatsApp(context: Context): Promise<boolean> {
  return copy(context, toWhatsApp, 'copied.whatsapp');
}

/** The note's text with its Markdown converted, if it is Markdown. */
export function converted(note: Note, convert: (text: string) => string): string {
  const text = note.text.toString();
  return note.format === 'markdown' ? convert(text) : text;
}

/** Copies the active note's text and reports the outcome in a single toast. */
async function copy(
  context: Context,
  convert: (text: string) => string,
  done: 'copied.markdown' | 'copied.plain' | 'copied.whatsapp',
): Promise<boolean> {
  const note = requireNote(context);
  // Check the length before converting too: a text far over the limit is not worth converting.
  if (!note || !fits(context, 'copy', note.text.toString())) return false;
  const text = converted(note, convert);
  if (!fits(context, 'copy', text)) return false;
  if (!text) {
    context.shell.toasts.show(t('copy.empty'));
    return false;
  }
  return copyText(context, text, t(done));
}

/** Copies any text and reports the outcome in a toast. */
export async function copyText(context: Context, text: string, successMessage: string): Promise<boolean> {
  const requestId = crypto.randomUUID();
  const answer = context.copies.open(requestId);
  context.port.copy({ text, successMessage, requestId });
  const message = await answer;
  context.shell.toasts.show(message === null ? t('copy.failed') : message || successMessage);
  return message !== null;
}
