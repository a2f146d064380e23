import { convertMarkdown } from './markdown';

/**
 * Markdown converted to WhatsApp's formatting. What WhatsApp cannot show (headings, links, tasks) becomes the
 * closest text it can.
 */
export function toWhatsApp(markdown: string): string {
  return convertMarkdown(markdown, {
    bold: '*',
    italic: '_',
    struck: '~',
    code: '`',
    fence: '```',
    link: (label, address) => `${label}: ${address}`,
  });
}
