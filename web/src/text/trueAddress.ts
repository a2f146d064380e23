import { safeAddress } from './address';
import { extensionOf } from './names';

/** What the label of a link hides: that it leads elsewhere, or that the address begins with a user name. */
export interface Surprise {
  readonly kind: 'elsewhere' | 'userName';
  /** Where the link leads, with its path if the label names the same host. */
  readonly address: string;
}

/** A label such as "plan.md" names a file, not a host. */
const files = new Set(
  (
    'c conf cpp cs css csv doc docx go h htm html ini java jpg js json jsx kt markdown md mdx pdf php png py rb rs ' +
    'sh sql svg swift toml ts tsx txt xls xlsx xml yaml yml zip'
  ).split(' '),
);
const hostName = /^[\p{L}\p{N}-]+(?:\.[\p{L}\p{N}-]+)*\.\p{L}{2,}(?=$|[/?#:])/u;

/** Compares a link's address with its label; null if the label promises nothing else. */
export function surpriseOf(label: string, href: string): Surprise | null {
  const url = new URL(href);
  if (url.username || url.password) return { kind: 'userName', address: url.host };
  const claim = claimOf(label.trim());
  if (!claim || isSame(claim, url)) return null;
  const isPath = url.host !== '' && bareHost(claim) === bareHost(url);
  return { kind: 'elsewhere', address: isPath ? url.host + url.pathname : url.host || url.pathname };
}

/** The address that a label looks like. */
function claimOf(label: string): URL | null {
  if (/\s/.test(label)) return null;
  const host = hostName.exec(label)?.[0];
  const isHost = host !== undefined && !(host === label && files.has(extensionOf(label)));
  const address = safeAddress(isHost ? `https://${label}` : label);
  return address === null ? null : new URL(address);
}

/** A label may leave out the path, the name's "www." and whether the connection is secure. */
function isSame(claim: URL, url: URL): boolean {
  if (claim.protocol === 'mailto:' || url.protocol === 'mailto:') {
    return claim.protocol === url.protocol && claim.pathname.toLowerCase() === url.pathname.toLowerCase();
  }
  if (bareHost(claim) !== bareHost(url)) return false;
  const path = claim.pathname + claim.search;
  return path === '/' || path.replace(/\/$/, '') === (url.pathname + url.search).replace(/\/$/, '');
}

function bareHost({ host }: URL): string {
  return host.replace(/^www\./, '');
}
