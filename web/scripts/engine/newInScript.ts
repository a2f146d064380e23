import ts from 'typescript';
import { api, builtins, child, children, css, html, isOld, Names, type Node } from './compat';

/** Global objects and the interfaces they have. */
const instances: Readonly<Record<string, string>> = {
  window: 'Window',
  document: 'Document',
  navigator: 'Navigator',
  location: 'Location',
};

const members = new Names();
const globals = new Names();
const events = new Names();
const attributes = new Names();
const selectors = new Names();

for (const [name, type] of [...children(api), ...children(builtins)]) {
  addType(name, type);
  // Namespaces, such as Intl, have types of their own.
  for (const [inner, innerType] of children(type)) {
    if (/^[A-Z]/.test(inner) && inner !== name) addType(inner, innerType);
  }
}
for (const [name, node] of children(child(api, 'Window'))) globals.add(name, node);
for (const [, element] of children(child(html, 'elements'))) {
  for (const [name, node] of children(element)) attributes.add(name, node);
}
for (const [name, node] of children(child(html, 'global_attributes'))) attributes.add(name, node);
for (const [name, node] of children(child(css, 'selectors'))) selectors.add(name, node);

function addType(name: string, type: Node): void {
  globals.add(name, type);
  members.add(name, type);
  for (const [member, node] of children(type)) {
    if (member.endsWith('_event')) events.add(member.replace('_event', ''), node);
    else members.add(member.replace('_static', ''), node);
  }
}

/**
 * Features in a bundled script that the oldest engine lacks. A script has no types to go by, so members and globals
 * are judged by their names, except those that the script itself defines.
 */
export function newInScript(text: string): Set<string> {
  const found = new Set<string>();
  const own = new Set<string>();
  const visit = (node: ts.Node): void => {
    if (isDefinition(node)) own.add(`.${node.name.text}`);
    else if (isDeclaration(node)) own.add(node.name.text);
    for (const name of newIn(node)) found.add(name);
    ts.forEachChild(node, visit);
  };
  visit(ts.createSourceFile('page.js', text, ts.ScriptTarget.Latest, true, ts.ScriptKind.JS));
  for (const name of own) found.delete(name);
  return found;
}

function isDefinition(node: ts.Node): node is ts.Node & { readonly name: ts.Identifier } {
  const { name } = node as Partial<ts.PropertyDeclaration>;
  if (!name || !ts.isIdentifier(name)) return false;
  if (ts.isPropertyAccessExpression(node))
    return node.expression.kind === ts.SyntaxKind.ThisKeyword && isAssigned(node);
  return ts.isClassElement(node) || ts.isObjectLiteralElement(node);
}

function isDeclaration(node: ts.Node): node is ts.Node & { readonly name: ts.Identifier } {
  const { name } = node as Partial<ts.VariableDeclaration>;
  if (!name || !ts.isIdentifier(name)) return false;
  return (
    ts.isVariableDeclaration(node) ||
    ts.isParameter(node) ||
    ts.isBindingElement(node) ||
    ts.isFunctionDeclaration(node) ||
    ts.isClassDeclaration(node)
  );
}

function isAssigned({ parent }: ts.PropertyAccessExpression): boolean {
  return ts.isBinaryExpression(parent) && parent.operatorToken.kind === ts.SyntaxKind.EqualsToken;
}

function newIn(node: ts.Node): string[] {
  if (ts.isPropertyAccessExpression(node)) return newMember(node);
  if (ts.isCallExpression(node)) return newArgument(node);
  if (ts.isPropertyAssignment(node)) return newKeys(node);
  if (ts.isStringLiteralLike(node)) return [...newInSelector(node.text), ...newInPattern(node.text, '')];
  if (ts.isRegularExpressionLiteral(node)) {
    const end = node.text.lastIndexOf('/');
    return newInPattern(node.text.slice(1, end), node.text.slice(end + 1));
  }
  if (!ts.isIdentifier(node)) return [];
  const { parent, text } = node;
  if (ts.isBindingElement(parent) && parent.propertyName === node) return members.isNew(text) ? [`.${text}`] : [];
  const isName = 'name' in parent && parent.name === node;
  return !isName && globals.isNew(text) ? [text] : [];
}

/** Events and attributes named in calls. */
function newArgument({ expression, arguments: [first] }: ts.CallExpression): string[] {
  if (!ts.isPropertyAccessExpression(expression) || !first || !ts.isStringLiteralLike(first)) return [];
  const { text } = expression.name;
  const names = text === 'addEventListener' ? events : text === 'setAttribute' ? attributes : null;
  return names?.isNew(first.text) ? [first.text] : [];
}

/** Events and attributes given to the page's own function that creates elements. */
function newKeys({ name, initializer }: ts.PropertyAssignment): string[] {
  const names = name.getText() === 'on' ? events : name.getText() === 'attrs' ? attributes : null;
  if (!names || !ts.isObjectLiteralExpression(initializer)) return [];
  const keys = initializer.properties.flatMap(({ name: key }) => (key && 'text' in key ? [key.text] : []));
  return keys.filter((key) => names.isNew(key));
}

function newMember({ expression, name: { text } }: ts.PropertyAccessExpression): string[] {
  const object = ts.isIdentifier(expression) ? expression.text : '';
  const type = child(api, instances[object] ?? object) ?? child(builtins, object);
  const exact = child(type, `${text}_static`) ?? child(type, text);
  const isNew = exact?.__compat ? !isOld(exact) : members.isNew(text);
  return isNew ? [exact ? `${object}.${text}` : `.${text}`] : [];
}

function newInSelector(text: string): string[] {
  const pseudo = [...text.matchAll(/(?<!\w)::?([a-z][a-z-]+)|(?<=[\w\])]):([a-z][a-z-]+)/g)];
  return pseudo.flatMap(([shown, ...names]) => (names.some((name) => name && selectors.isNew(name)) ? [shown] : []));
}

/** A pattern that the engine cannot read is a syntax error: the whole script would not run. */
function newInPattern(pattern: string, flags: string): string[] {
  const found: string[] = [];
  if (/\(\?<[=!]/.test(pattern)) found.push('lookbehind');
  if (/\(\?[a-z]*-?[a-z]+:/.test(pattern)) found.push('flags in a pattern');
  if (flags.includes('v')) found.push('flag v');
  return found;
}
