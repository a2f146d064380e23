import { convertMarkdown } from './markdown';

/** Markdown as plain text: marks removed, lists and quotes kept, addresses after their labels. */
export function toPlainText(markdown: string): string {
  return convertMarkdown(markdown, {
    bold: '',
    italic: '',
    struck: '',
    code: '',
    fence: '',
    link: (label, address) => `${label} (${address})`,
  });
}
