import { htmlTag } from './language';

const formats = new Map<string, Intl.DateTimeFormat>();

/** A moment as short as it can be told from `now`: the time of today, a day of this year, or a date. */
export function shortDate(moment: number, now: number): string {
  const [date, today] = [new Date(moment), new Date(now)];
  if (date.toDateString() === today.toDateString()) {
    return formatted('time', date, { hour: 'numeric', minute: '2-digit' });
  }
  if (date.getFullYear() === today.getFullYear()) return formatted('day', date, { day: 'numeric', month: 'short' });
  return formatted('date', date, { dateStyle: 'short' });
}

/** Formats in the language of the interface. Creating a format is slow, so each is created once. */
export function formatted(name: string, date: Date, options: Intl.DateTimeFormatOptions): string {
  const key = `${htmlTag()} ${name}`;
  let format = formats.get(key);
  if (!format) {
    format = new Intl.DateTimeFormat(htmlTag(), options);
    formats.set(key, format);
  }
  return format.format(date);
}
