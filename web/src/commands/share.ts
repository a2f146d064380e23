import { t } from '../i18n/language';
import { titleOf } from '../state/titleOf';
import { shorten } from '../text/names';
import { type Context, requireNote } from './context';
import { suggestedName, withLineBreaks } from './files';
import { fits, hostLimits } from './limits';

/** Shares the active note with other programs. The host allows one share at a time. */
export function shareNote(context: Context): void {
  const { port, share, shell } = context;
  const note = requireNote(context);
  if (!note) return;
  if (share.busy) {
    shell.toasts.show(t('share.busy'));
    return;
  }
  const content = withLineBreaks(note, note.text.toString());
  if (!fits(context, 'share', content)) return;
  const title = shorten(titleOf(note) || t('untitled'), hostLimits.shareTitle.bytes);
  const attemptId = share.begin();
  const filename = suggestedName(note);
  if (port.share({ attemptId, title, filename, content, url: port.publicUrl })) return;
  share.end(attemptId);
  shell.toasts.show(t('share.unavailable'));
}

/**
 * The host gives the same answer for a dismissed share and a failed one, so neither is reported as an error.
 */
export function shared({ share, shell }: Context, success: boolean, attemptId: string): void {
  if (share.end(attemptId)) shell.toasts.show(t(success ? 'share.done' : 'share.failed'));
}
