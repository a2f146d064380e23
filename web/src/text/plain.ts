import { convertMarkdown } from './markdown';

/** Markdown as one reads it: the marks gone, lists and quotes kept, addresses after their words. */
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
