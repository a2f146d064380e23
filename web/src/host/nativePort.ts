import type { HostAnswers, HostPort, PartsPort } from '../commands/port';
import { webCopy } from './webClipboard';

interface MessageHandler {
  postMessage(body: unknown): void;
  postPart?(part: string, isFirst: boolean): void;
  postMessageWithParts?(body: unknown, member: string): void;
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
    parts: partsPort(target.webkit?.messageHandlers?.quendoState),
    exportFile: (file) => post('quendoExport', file),
    saveAs: (file) => post('quendoSaveAs', file),
    copy: (request) => {
      if (!post('quendoClipboard', request)) webCopy(answers)(request);
    },
    share: (request) => post('quendoShare', request),
    rememberLanguage: (language) => void post('quendoLanguage', language),
  };
}

function partsPort(handler: MessageHandler | undefined): PartsPort | null {
  const [postPart, postAll] = [handler?.postPart, handler?.postMessageWithParts];
  if (!postPart || !postAll) return null;
  return {
    post: (part, isFirst) => postPart.call(handler, part, isFirst),
    save: (revision) => {
      try {
        postAll.call(handler, { revision }, 'serialized');
        return true;
      } catch {
        return false;
      }
    },
  };
}
