import { h } from '../dom/elements';
import type { TextFace } from '../state/settings';

const loaded = new Set<TextFace>(['sans']);

/** Loads a text face, once. The desktop's own needs nothing, so the page starts without waiting for any. */
export function loadFace(face: TextFace): void {
  if (loaded.has(face)) return;
  loaded.add(face);
  const own = document.querySelector<HTMLLinkElement>('link[rel=stylesheet]');
  if (!own) return;
  const sheet = h('link', { attrs: { rel: 'stylesheet', href: new URL(`${face}.css`, own.href).href } });
  sheet.nonce = own.nonce;
  own.before(sheet);
}

/** Reports that a face is there, after which lines may break elsewhere. */
export function onFaceLoaded(listener: () => void): void {
  document.fonts.addEventListener('loadingdone', listener);
}
