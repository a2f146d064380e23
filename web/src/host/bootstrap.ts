import { isLanguage, type Language, pickLanguage } from '../i18n/language';

/** What the host sets before the page's script runs. None of it exists in a browser. */
interface BootstrapGlobals {
  __QUENDO_IS_MAC__?: unknown;
  __QUENDO_PUBLIC_URL__?: unknown;
  __QUENDO_NATIVE_LANGUAGE__?: unknown;
  __QUENDO_NATIVE_STATE__?: unknown;
}

export interface Bootstrap {
  /** The host's flag: true under the native host on every platform. */
  readonly native: boolean;
  readonly publicUrl: string;
  readonly language: Language | null;
}

export function readBootstrap(globals: BootstrapGlobals): Bootstrap {
  const language = globals.__QUENDO_NATIVE_LANGUAGE__;
  const url = globals.__QUENDO_PUBLIC_URL__;
  return {
    native: globals.__QUENDO_IS_MAC__ === true,
    publicUrl: typeof url === 'string' ? url : '',
    language: isLanguage(language) ? language : null,
  };
}

/** The stored document, or undefined if there is none. A global would hold it as long as the page lives. */
export function takeDocument(globals: BootstrapGlobals): unknown {
  const stored = globals.__QUENDO_NATIVE_STATE__;
  delete globals.__QUENDO_NATIVE_STATE__;
  return stored;
}

/** The host's language, then the one chosen earlier in the page, then the system's. */
export function startLanguage(bootstrap: Bootstrap, chosen: Language | null): Language {
  return bootstrap.language ?? chosen ?? pickLanguage(navigator.languages);
}
