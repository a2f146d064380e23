import type { Place } from './model';

/** How many notes' places are remembered; the oldest are dropped first. */
const PLACES = 1000;

/** With a note's place as the latest; the same map if nothing changes. */
export function withPlace(places: ReadonlyMap<string, Place>, id: string, place: Place): ReadonlyMap<string, Place> {
  const before = places.get(id);
  if (before?.anchor === place.anchor && before.head === place.head && before.top === place.top) return places;
  const changed = new Map(places);
  changed.delete(id);
  changed.set(id, place);
  for (const oldest of changed.keys()) {
    if (changed.size <= PLACES) break;
    changed.delete(oldest);
  }
  return changed;
}

export function withoutPlaces(
  places: ReadonlyMap<string, Place>,
  ids: ReadonlyArray<string>,
): ReadonlyMap<string, Place> {
  const changed = new Map(places);
  for (const id of ids) changed.delete(id);
  return changed;
}
