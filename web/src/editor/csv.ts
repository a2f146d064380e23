import { StreamLanguage, type StringStream } from '@codemirror/language';
import { Tag } from '@lezer/highlight';

const COLUMNS = 4;

/** Cycles through the colours, so neighbouring columns differ. */
export const columnTags: ReadonlyArray<Tag> = Array.from({ length: COLUMNS }, () => Tag.define());

interface State {
  column: number;
  quoted: boolean;
  /** The first separator outside quotes is the separator of the whole file. */
  separator: string;
}

/** Delimited tables: commas, semicolons or tabs, with quoted fields that may span lines. */
export const csvLanguage = StreamLanguage.define<State>({
  name: 'csv',
  startState: () => ({ column: 0, quoted: false, separator: '' }),
  token: (stream, state) => {
    if (stream.sol() && !state.quoted) state.column = 0;
    if (!state.quoted && isSeparator(stream.peek(), state)) {
      state.separator = stream.next() ?? '';
      state.column++;
      return 'separator';
    }
    readField(stream, state);
    return `column${state.column % COLUMNS}`;
  },
  tokenTable: {
    separator: Tag.define(),
    ...Object.fromEntries(columnTags.map((tag, index) => [`column${index}`, tag])),
  },
});

function readField(stream: StringStream, state: State): void {
  while (!stream.eol()) {
    if (!state.quoted && isSeparator(stream.peek(), state)) return;
    if (stream.next() === '"') state.quoted = !state.quoted;
  }
}

function isSeparator(character: string | undefined, { separator }: State): boolean {
  if (character === undefined) return false;
  return separator ? character === separator : /[,;\t]/.test(character);
}
