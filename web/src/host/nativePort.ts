import type { HostAnswers, HostPort } from '../commands/port';
import { webCopy } from './webClipboard';

interface MessageHandler {
  postMessage(body: unknown): void;
}

export interface WebKitWindow {
  readonly webkit?: { readonly messageHandlers?: Readonly<Record<string, MessageHandler>> };
}

export function hasHost(target: WebKitWindow): boolean {
  return Boolean(target.webkit?.messageHandlers?.quendoState);
}

/** Requests to the native host, one message name each. */
export function nativePort(target: WebKitWindow, publicUrl: string, answers: () => HostAnswers): HostPort {
  /** False if the message could not be posted, so no answer will come. */
  const post = (name: string, body: unknown): boolean => {
    try {
      const handler = target.webkit?.messageHandlers?.[name];
      handler?.postMessage(body);
      return Boolean(handler);
    } catch {
      return false;
    }
  };
  return {
    native: true,
    publicUrl,
    save: (serialized, revision) => post('quendoState', { serialized, revision }),
    exportFile: (file) => post('quendoExport', file),
    saveAs: (file) => post('quendoSaveAs', file),
    copy: (request) => {
      if (!post('quendoClipboard', request)) webCopy(answers)(request);
    },
    share: (request) => post('quendoShare', request),
    rememberLanguage: (language) => void post('quendoLanguage', language),
  };
}
