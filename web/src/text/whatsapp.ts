import { convertMarkdown } from './markdown';

/**
 * Markdown as the messenger WhatsApp marks it up. What it cannot show (headings, links, tasks)
 * becomes the nearest text that it can.
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
