import type { Key } from '../i18n/catalogue';
import { t } from '../i18n/language';
import { utf8Length } from '../text/names';
import type { Context } from './context';

/** The host's limits, in bytes. It drops anything longer, mostly without an error. */
export const hostLimits = {
  copy: { bytes: 2_000_000, complaint: 'copy.tooLarge' },
  share: { bytes: 2_000_000, complaint: 'share.tooLarge' },
  shareTitle: { bytes: 2_000, complaint: 'share.tooLarge' },
  file: { bytes: 20_000_000, complaint: 'file.tooLarge' },
} as const satisfies Record<string, { bytes: number; complaint: Key }>;

/** Tells the user when a text is too long for the requested action. */
export function fits({ shell }: Context, use: keyof typeof hostLimits, text: string): boolean {
  const { bytes, complaint } = hostLimits[use];
  if (utf8Length(text) <= bytes) return true;
  shell.toasts.show(t(complaint));
  return false;
}
