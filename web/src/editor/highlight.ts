import { syntaxTree } from '@codemirror/language';
import { Prec } from '@codemirror/state';
import { Decoration } from '@codemirror/view';
import { highlightTree, Tag, tagHighlighter, tags } from '@lezer/highlight';
import { changedSyntax } from './changedSyntax';
import { columnTags } from './csv';
import { visibleMarks } from './visibleMarks';

/** A task's checkbox, which should not look like an atom in code. */
export const taskTag = Tag.define();
/** A link to another note, and a tag. */
export const noteLinkTag = Tag.define();
export const noteTagTag = Tag.define();

/** Maps syntax to plain class names; the style sheet decides how they look. */
export const classNames = tagHighlighter([
  { tag: tags.heading1, class: 'md-heading md-heading-1' },
  { tag: tags.heading2, class: 'md-heading md-heading-2' },
  { tag: tags.heading3, class: 'md-heading md-heading-3' },
  { tag: tags.heading, class: 'md-heading' },
  { tag: tags.emphasis, class: 'md-emphasis' },
  { tag: tags.strong, class: 'md-strong' },
  { tag: tags.strikethrough, class: 'md-struck' },
  { tag: tags.link, class: 'md-link' },
  { tag: tags.url, class: 'md-url' },
  { tag: tags.monospace, class: 'md-code' },
  { tag: tags.quote, class: 'md-quote' },
  { tag: tags.processingInstruction, class: 'md-mark' },
  { tag: tags.contentSeparator, class: 'md-mark' },
  { tag: tags.labelName, class: 'md-label' },
  { tag: taskTag, class: 'md-task-mark' },
  { tag: noteLinkTag, class: 'md-note-link' },
  { tag: noteTagTag, class: 'md-tag' },
  { tag: tags.comment, class: 'tok-comment' },
  { tag: [tags.keyword, tags.modifier, tags.controlKeyword, tags.operatorKeyword], class: 'tok-keyword' },
  { tag: [tags.string, tags.special(tags.string), tags.regexp, tags.attributeValue], class: 'tok-string' },
  { tag: [tags.number, tags.bool, tags.null, tags.atom, tags.unit, tags.color], class: 'tok-number' },
  { tag: [tags.typeName, tags.className, tags.namespace, tags.tagName], class: 'tok-type' },
  {
    tag: [
      tags.function(tags.variableName),
      tags.function(tags.propertyName),
      tags.definition(tags.variableName),
      tags.definition(tags.propertyName),
      tags.standard(tags.variableName),
      tags.macroName,
    ],
    class: 'tok-name',
  },
  { tag: [tags.attributeName, tags.propertyName], class: 'tok-property' },
  { tag: [tags.meta, tags.documentMeta, tags.annotation, tags.angleBracket], class: 'tok-meta' },
  { tag: tags.invalid, class: 'tok-invalid' },
  ...columnTags.map((tag, index) => ({ tag, class: `tok-column-${index}` })),
]);

const styles = new Map<string, Decoration>();

function style(name: string): Decoration {
  const known = styles.get(name) ?? Decoration.mark({ class: name });
  styles.set(name, known);
  return known;
}

export const highlighting = Prec.high(
  visibleMarks({
    changed: changedSyntax,
    mark: (state, { from, to }, add) =>
      highlightTree(syntaxTree(state), classNames, (start, end, name) => add(start, end, style(name)), from, to),
  }),
);
