/** Two moments in milliseconds since 1970; the first is within, the second is not. */
export interface Period {
  readonly from: number;
  readonly to: number;
}

const DAY = 86_400_000;
/** Days of an age's units: days, weeks, months, years, and "a" for the Portuguese and Spanish year. */
const UNITS: Readonly<Record<string, number>> = { d: 1, s: 7, w: 7, m: 30, y: 365, a: 365 };
/** A period that a day is in; the month counts from 0. */
type Span = (year: number, month: number, day: number) => Period;

const ofDay: Span = (year, month, day) => ({ from: start(year, month, day), to: start(year, month, day + 1) });
const ofYesterday: Span = (year, month, day) => ofDay(year, month, day - 1);
const ofLastDays: Span = (year, month, day) => ({ from: start(year, month, day - 6), to: start(year, month, day + 1) });
const ofMonth: Span = (year, month) => ({ from: start(year, month, 1), to: start(year, month + 1, 1) });
const ofYear: Span = (year) => ({ from: start(year, 0, 1), to: start(year + 1, 0, 1) });

/** Periods by their names in the three languages, already folded. */
const named: ReadonlyMap<string, Span> = new Map([
  ...['today', 'hoje', 'hoy'].map((name) => [name, ofDay] as const),
  ...['yesterday', 'ontem', 'ayer'].map((name) => [name, ofYesterday] as const),
  ...['week', 'semana'].map((name) => [name, ofLastDays] as const),
  ...['month', 'mes'].map((name) => [name, ofMonth] as const),
  ...['year', 'ano'].map((name) => [name, ofYear] as const),
]);

/**
 * The period of a date such as "2026", "2026-11", ">=2026-11-05", "today", "week" or, as an age, "<30d"; null if
 * it is none of these.
 */
export function periodOf(text: string, now: number): Period | null {
  const [, sign = '', rest = ''] = /^([<>]=?)?(.*)$/s.exec(text) ?? [];
  const age = /^(\d{1,4})([dwsmya])$/.exec(rest);
  if (age) {
    const then = now - Number(age[1]) * (UNITS[age[2] ?? ''] ?? 1) * DAY;
    return sign.startsWith('>') ? { from: Number.NEGATIVE_INFINITY, to: then } : { from: then, to: Infinity };
  }
  const period = calendarPeriod(rest, now);
  if (!period) return null;
  const { from, to } = period;
  if (sign === '<') return { from: Number.NEGATIVE_INFINITY, to: from };
  if (sign === '<=') return { from: Number.NEGATIVE_INFINITY, to };
  if (sign === '>') return { from: to, to: Infinity };
  return sign === '>=' ? { from, to: Infinity } : period;
}

/** The year, month or day, by the calendar of the user's place. */
function calendarPeriod(text: string, now: number): Period | null {
  const span = named.get(text);
  if (span) {
    const date = new Date(now);
    return span(date.getFullYear(), date.getMonth(), date.getDate());
  }
  const parts = /^(\d{4})(?:-(\d{1,2})(?:-(\d{1,2}))?)?$/.exec(text);
  if (!parts) return null;
  const [year, month, day] = parts.slice(1).map(Number) as [number, number, number];
  if (parts[2] === undefined) return ofYear(year, 0, 1);
  if (month < 1 || month > 12) return null;
  if (parts[3] === undefined) return ofMonth(year, month - 1, 1);
  // The thirtieth of February is no day.
  if (new Date(start(year, month - 1, day)).getDate() !== day) return null;
  return ofDay(year, month - 1, day);
}

function start(year: number, month: number, day: number): number {
  return new Date(year, month, day).getTime();
}
