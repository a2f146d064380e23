import { characterEntities } from 'character-entities';

/** The characters an HTML entity stands for; unknown ones stay as they are. */
export function decodeEntity(entity: string): string {
  const numeric = /^&#(?:x([\da-f]{1,6})|(\d{1,7}));$/i.exec(entity);
  if (!numeric) {
    const name = entity.slice(1, -1);
    return Object.hasOwn(characterEntities, name) ? (characterEntities[name] ?? entity) : entity;
  }
  const code = numeric[1] ? Number.parseInt(numeric[1], 16) : Number(numeric[2]);
  const isCharacter = code > 0 && code <= 0x10ffff && (code < 0xd800 || code > 0xdfff);
  return isCharacter ? String.fromCodePoint(code) : entity;
}
