const allowed = new Set(['http:', 'https:', 'mailto:']);

/**
 * An address that a link in the preview may use, or null. Only absolute web and mail addresses pass; anything
 * else, disguised with whitespace or not, is shown as text.
 */
export function safeAddress(written: string): string | null {
  const address = written.trim();
  if (/[\u0000-\u0020\u007f]/.test(address)) return null;
  const whole = /^www\./i.test(address) ? `https://${address}` : isMail(address) ? `mailto:${address}` : address;
  try {
    const url = new URL(whole);
    return allowed.has(url.protocol) ? url.href : null;
  } catch {
    return null;
  }
}

function isMail(address: string): boolean {
  return /^[^\s@:/?#]+@[^\s@:/?#]+\.[^\s@:/?#]+$/.test(address);
}
