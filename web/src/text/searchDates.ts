/** Two moments in milliseconds since 1970; the first is within, the second is not. */
export interface Period {
  readonly from: number;
  readonly to: number;
}

const DAY = 86_400_000;
/** Days of an age's units: days, weeks, months, years, and "a" for the Portuguese and Spanish year. */
const UNITS: Readonly<Record<string, number>> = { d: 1, s: 7, w: 7, m: 30, y: 365, a: 365 };
/** How many days ago a named day was; already folded. */
const NAMED: Readonly<Record<string, number>> = {
  today: 0,
  hoje: 0,
  hoy: 0,
  yesterday: 1,
  ontem: 1,
  ayer: 1,
};

/**
 * The period of a date such as "2026", "2026-11", ">=2026-11-05", "today" or, as an age, "<30d"; null if it is none
 * of these.
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
  const ago = NAMED[text];
  if (ago !== undefined) {
    const today = new Date(now);
    const [year, month, day] = [today.getFullYear(), today.getMonth(), today.getDate() - ago];
    return { from: start(year, month, day), to: start(year, month, day + 1) };
  }
  const parts = /^(\d{4})(?:-(\d{1,2})(?:-(\d{1,2}))?)?$/.exec(text);
  if (!parts) return null;
  const [year, month, day] = parts.slice(1).map(Number) as [number, number, number];
  if (parts[2] === undefined) return { from: start(year, 0, 1), to: start(year + 1, 0, 1) };
  if (month < 1 || month > 12) return null;
  if (parts[3] === undefined) return { from: start(year, month - 1, 1), to: start(year, month, 1) };
  // The thirtieth of February is no day.
  if (new Date(start(year, month - 1, day)).getDate() !== day) return null;
  return { from: start(year, month - 1, day), to: start(year, month - 1, day + 1) };
}

function start(year: number, month: number, day: number): number {
  return new Date(year, month, day).getTime();
}
