import { h } from '../dom/elements';
import { safeAddress } from '../text/address';

/** Opens an address outside of the page, as a link in the preview does; returns whether it may be opened. */
export function openAddress(address: string): boolean {
  const href = safeAddress(address);
  if (href === null) return false;
  const link = h('a', { attrs: { href, target: '_blank', rel: 'noopener noreferrer' } });
  link.click();
  return true;
}
