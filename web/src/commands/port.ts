import type { Language } from '../i18n/language';
import type { Format } from '../text/names';

/**
 * What a page cannot do by itself. Answers arrive later, through `HostAnswers`; a request that returns false
 * could not be made and gets no answer.
 */
export interface HostPort {
  /** Running under the native host, which owns the menu keys, the files and the language setting. */
  readonly native: boolean;
  readonly publicUrl: string;
  save(serialized: string, revision: number): boolean;
  /** Null if documents can only be saved whole. */
  readonly parts: PartsPort | null;
  exportFile(file: { filename: string; content: string; format: Format }): boolean;
  saveAs(file: { noteId: string; filename: string; content: string }): boolean;
  copy(request: { text: string; successMessage: string; requestId: string }): void;
  share(request: ShareRequest): boolean;
  rememberLanguage(language: Language): void;
}

/** Saves a long document without blocking the page for long. */
export interface PartsPort {
  /** Hands over a part; the first one takes the place of all before it. Throws if it could not be posted. */
  post(part: string, isFirst: boolean): void;
  /** Saves the document whose parts have been posted. */
  save(revision: number): boolean;
}

export interface ShareRequest {
  readonly attemptId: string;
  readonly title: string;
  readonly filename: string;
  readonly content: string;
  readonly url: string;
}

export interface HostAnswers {
  saved(success: boolean, revision: number): void;
  exported(success: boolean, message: string): void;
  savedAs(success: boolean, noteId: string, fileName: string, message: string): void;
  copied(success: boolean, message: string, requestId: string): void;
  shared(success: boolean, attemptId: string): void;
}
