import { t } from '../i18n/language';
import { formatted } from '../i18n/shortDate';
import type { Note } from '../state/model';
import { orderTitle } from '../state/noteOrder';
import type { Sort } from '../state/settings';

/** The heading each note of the list is below: pinned, a day, week, month or year, or an initial letter. */
export function sectionsBy(sort: Sort, now: number): (note: Note) => string {
  const within = sort === 'title' ? initial : byAge(sort === 'created' ? 'created' : 'updated', now);
  return (note) => (note.pinned ? t('section.pinned') : within(note));
}

function initial(note: Note): string {
  const [first = ''] = orderTitle(note);
  return /\p{L}/u.test(first) ? first.toUpperCase() : '#';
}

function byAge(moment: 'created' | 'updated', now: number): (note: Note) => string {
  const today = new Date(now);
  const [year, month, day] = [today.getFullYear(), today.getMonth(), today.getDate()];
  const since = (days: number) => new Date(year, month, day - days).getTime();
  const near = [
    { from: since(0), text: t('section.today') },
    { from: since(1), text: t('section.yesterday') },
    { from: since(7), text: t('section.week') },
  ];
  const months = Array.from({ length: month + 1 }, (_, index) => ({
    from: new Date(year, month - index, 1).getTime(),
    text: monthName(new Date(year, month - index, 1)),
  }));
  const periods = [...near, ...months];
  return (note) => {
    const at = note[moment];
    return periods.find(({ from }) => at >= from)?.text ?? String(new Date(at).getFullYear());
  };
}

function monthName(date: Date): string {
  const name = formatted('month', date, { month: 'long' });
  return name.charAt(0).toUpperCase() + name.slice(1);
}
