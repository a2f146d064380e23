import { child, children, css, isOld, Names, type Node } from './compat';

const properties = child(css, 'properties');
const atRules = child(css, 'at-rules');
const selectors = child(css, 'selectors');
const functions = new Names();
addFunctions(child(css, 'types'));

/** Units that are documented under another name. */
const families: ReadonlyArray<readonly [RegExp, string]> = [
  [/^dv/, 'viewport_percentage_units_dynamic'],
  [/^sv/, 'viewport_percentage_units_small'],
  [/^lv/, 'viewport_percentage_units_large'],
  [/^cq/, 'container_query_length_units'],
];

function addFunctions(types: Node | undefined): void {
  for (const [name, node] of children(types)) {
    functions.add(name, node);
    addFunctions(node);
  }
}

/** Features in a bundled style sheet that the oldest engine lacks. Nesting is already resolved by the bundler. */
export function newInStyles(text: string): Set<string> {
  const found = new Set<string>();
  const report = (isNew: boolean, name: string) => void (isNew && found.add(name));
  const plain = text.replaceAll(/\/\*[\s\S]*?\*\//g, '').replaceAll(/"[^"]*"|'[^']*'|url\([^)]*\)/g, '""');
  let block: string[] = [];
  for (const [, part = '', end] of plain.matchAll(/([^{};]*)([{};])/g)) {
    const words = part.trim();
    if (words.startsWith('@')) newInRule(words, report);
    else if (end === '{') newInSelector(words, report);
    else if (words) block.push(words);
    if (end === ';' && !words.startsWith('@')) continue;
    newInBlock(block, report);
    block = [];
  }
  return found;
}

type Report = (isNew: boolean, name: string) => void;

function newInRule(words: string, report: Report): void {
  const name = /^@([a-z-]+)/.exec(words)?.[1] ?? '';
  report(!isOld(child(atRules, name)), `@${name}`);
  if (name !== 'media') return;
  for (const [, feature = ''] of words.matchAll(/\(([a-z-]+)/g)) {
    const node = child(child(atRules, 'media'), feature.replace(/^(?:min|max)-/, ''));
    report(!isOld(node), `@media (${feature})`);
  }
}

function newInSelector(words: string, report: Report): void {
  for (const [shown, name = ''] of words.matchAll(/::?([a-z-]+)/g)) {
    report(!isOld(child(selectors, name)), shown);
  }
}

function newInBlock(block: ReadonlyArray<string>, report: Report): void {
  const written = block.map((declaration) => declaration.split(':')[0]?.trim() ?? '');
  for (const declaration of block) {
    const [, name = '', value = ''] = /^([^:]*):([\s\S]*)$/.exec(declaration) ?? [];
    if (!name.startsWith('--')) newInProperty(name.trim(), value, written, report);
    newInValue(value, report);
  }
}

function newInProperty(name: string, value: string, written: ReadonlyArray<string>, report: Report): void {
  const [, prefix, bare = ''] = /^(-webkit-)?(.*)$/.exec(name) ?? [];
  const node = child(properties, name) ?? child(properties, bare);
  const isPrefixed = prefix !== undefined && isOld(node, prefix);
  const isDoubled = written.includes(`-webkit-${name}`);
  if (!isPrefixed && !isDoubled) report(!isOld(node), name);
  for (const [keyword] of value.matchAll(/(?<![\w-])[a-z][a-z-]*(?![\w(-])/g)) {
    const known = child(node, keyword);
    if (known?.__compat) report(!isOld(known), `${name}: ${keyword}`);
  }
}

function newInValue(value: string, report: Report): void {
  for (const [, name = ''] of value.matchAll(/([a-z][a-z-]*)\(/g)) report(functions.isNew(name), `${name}()`);
  for (const [, unit = ''] of value.matchAll(/(?<![\w#-])[\d.]+([a-z]+)/g)) {
    const family = families.find(([pattern]) => pattern.test(unit))?.[1] ?? unit;
    const node = child(child(child(css, 'types'), 'length'), family);
    if (node?.__compat) report(!isOld(node), unit);
  }
}
