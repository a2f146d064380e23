import data from '@mdn/browser-compat-data/forLegacyNode';

/** The first web view that came with the oldest supported macOS. Debian's is newer. */
export const OLDEST_SAFARI = 16;

export interface Node {
  readonly __compat?: { readonly support: { readonly safari?: Support | ReadonlyArray<Support> } };
  readonly [name: string]: unknown;
}

interface Support {
  readonly version_added: string | false | null;
  readonly version_removed?: string | boolean;
  readonly prefix?: string;
  readonly alternative_name?: string;
  readonly flags?: unknown;
}

const version = (text: string): number => Number.parseFloat(text.replace('≤', ''));

/** Whether the oldest engine has a feature under its own name, or under its name with the prefix. */
export function isOld(node: Node | undefined, prefix?: string): boolean {
  return [node?.__compat?.support.safari ?? []].flat().some((support) => {
    if (support.flags || support.alternative_name || support.prefix !== prefix) return false;
    const { version_added: added, version_removed: removed } = support;
    const isGone = removed === true || (typeof removed === 'string' && version(removed) <= OLDEST_SAFARI);
    return typeof added === 'string' && version(added) <= OLDEST_SAFARI && !isGone;
  });
}

export function child(node: Node | undefined, name: string): Node | undefined {
  return node && Object.hasOwn(node, name) ? (node[name] as Node) : undefined;
}

export function children(node: Node | undefined): ReadonlyArray<readonly [name: string, node: Node]> {
  return Object.entries(node ?? {}).filter(([name]) => name !== '__compat') as Array<[string, Node]>;
}

/** Features by their last name. A name that several features share is new only if all of them are. */
export class Names {
  readonly #old = new Map<string, boolean>();

  add(name: string, node: Node): void {
    if (node.__compat) this.#old.set(name, this.#old.get(name) === true || isOld(node));
  }

  isNew(name: string): boolean {
    return this.#old.get(name) === false;
  }
}

const { api, css, html, javascript } = data as unknown as Record<string, Node>;
export { api, css, html };
export const builtins = child(javascript, 'builtins');
