import type { HostAnswers, HostPort } from '../commands/port';
import { h } from '../dom/elements';
import { t } from '../i18n/language';
import { webCopy } from './webClipboard';

const STORAGE_KEY = 'quendo-state';

/** Replaces the host in a plain browser: local storage, downloads, the web clipboard. */
export function browserPort(publicUrl: string, answers: () => HostAnswers): HostPort {
  return {
    native: false,
    publicUrl,
    save: (serialized, revision) => {
      const kept = store(serialized);
      if (kept) queueMicrotask(() => answers().saved(true, revision));
      return kept;
    },
    parts: null,
    exportFile: ({ filename, content }) => {
      download(filename, content);
      answers().exported(true, t('file.downloaded', { name: filename }));
      return true;
    },
    saveAs: ({ noteId, filename, content }) => {
      download(filename, content);
      answers().savedAs(true, noteId, filename, '');
      return true;
    },
    copy: webCopy(answers),
    share: ({ attemptId, title, content }) => {
      if (typeof navigator.share !== 'function') return false;
      const report = (success: boolean) => answers().shared(success, attemptId);
      navigator.share({ title, text: content }).then(
        () => report(true),
        () => report(false),
      );
      return true;
    },
    rememberLanguage: () => undefined,
  };
}

/** The document stored by an earlier visit. A damaged one is moved aside before it is overwritten. */
export function storedDocument(): unknown {
  let text: string | null = null;
  try {
    text = localStorage.getItem(STORAGE_KEY);
    return text === null ? undefined : JSON.parse(text);
  } catch {
    if (text !== null) store(text, `${STORAGE_KEY}-damaged`);
    return undefined;
  }
}

function store(text: string, key = STORAGE_KEY): boolean {
  try {
    localStorage.setItem(key, text);
    return true;
  } catch {
    return false;
  }
}

function download(filename: string, content: string): void {
  const url = URL.createObjectURL(new Blob([content], { type: 'text/plain;charset=utf-8' }));
  h('a', { attrs: { href: url, download: filename } }).click();
  setTimeout(() => URL.revokeObjectURL(url), 60_000);
}
