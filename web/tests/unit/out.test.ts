import assert from 'node:assert/strict';
import { beforeEach, test } from 'node:test';
import { hostAnswers } from '../../src/app/answers';
import type { Context } from '../../src/commands/context';
import { copyAsMarkdown, copyAsPlainText, copyForWhatsApp } from '../../src/commands/copies';
import { exportAsMarkdown, exportAsText, saveNoteAs } from '../../src/commands/files';
import type { HostAnswers } from '../../src/commands/port';
import { PendingCopies, PendingFiles, PendingShare } from '../../src/commands/requests';
import { shareNote } from '../../src/commands/share';
import { setLanguage } from '../../src/i18n/language';
import { emptyContents } from '../../src/state/model';
import { Workspace } from '../../src/state/workspace';

type Body = Record<string, string>;

let toasts: string[];
let sent: Array<[string, Body]>;
let hostThere: boolean;
let now: number;
let timers: Map<number, () => void>;
let context: Context;
let answers: HostAnswers;

function start(readOnly = false): void {
  toasts = [];
  sent = [];
  hostThere = true;
  now = 1000;
  timers = new Map();
  const post = (name: string) => (body: unknown) => {
    if (hostThere) sent.push([name, body as Body]);
    return hostThere;
  };
  const clock = {
    now: () => now,
    setTimer: (run: () => void) => {
      timers.set(timers.size, run);
      return timers.size - 1;
    },
    clearTimer: (timer: unknown) => void timers.delete(timer as number),
  };
  context = {
    workspace: new Workspace(emptyContents, readOnly, () => now),
    shell: { toasts: { show: (message: string) => toasts.push(message) } },
    port: {
      publicUrl: 'https://example.invalid/',
      exportFile: post('export'),
      saveAs: post('saveAs'),
      copy: post('copy'),
      share: post('share'),
    },
    copies: new PendingCopies(clock),
    share: new PendingShare(clock.now),
    outgoing: new PendingFiles(),
  } as unknown as Context;
  answers = hostAnswers(context);
}

beforeEach(() => {
  setLanguage('en');
  start();
});

function write(text: string, rest: { name?: string; format?: 'plain'; lineBreak?: '\r\n' } = {}): string {
  const note = context.workspace.addNote({ text, ...rest });
  context.workspace.openTab(note.id);
  return note.id;
}

const last = (): Body => sent.at(-1)?.[1] ?? {};

test('every command tells the user when no note is open', async () => {
  for (const run of [exportAsMarkdown, exportAsText, saveNoteAs, shareNote]) run(context);
  for (const run of [copyAsMarkdown, copyAsPlainText, copyForWhatsApp]) {
    assert.equal(await run(context), false);
  }
  assert.deepEqual(toasts, Array(7).fill('Open a note first'));
  assert.deepEqual(sent, []);
});

test("an export has the note's format, extension and line breaks", () => {
  write('# Ata\n**x**');
  exportAsMarkdown(context);
  assert.deepEqual(last(), { filename: 'Ata.md', content: '# Ata\n**x**', format: 'markdown' });
  exportAsText(context);
  assert.deepEqual(last(), { filename: 'Ata.txt', content: 'Ata\nx', format: 'plain' });
  write('a,**b**\r\nc', { name: 'dados.csv', format: 'plain', lineBreak: '\r\n' });
  exportAsText(context);
  assert.deepEqual(last(), { filename: 'dados.csv', content: 'a,**b**\r\nc', format: 'plain' });
  exportAsMarkdown(context);
  assert.deepEqual(last(), { filename: 'dados.md', content: 'a,**b**\r\nc', format: 'markdown' });
});

test('the host words the result of an export; if it sends no text, the page does', () => {
  answers.exported(false, 'Exportação cancelada');
  answers.exported(true, '');
  answers.exported(false, '');
  assert.deepEqual(toasts, ['Exportação cancelada', 'File exported', 'Could not export the file']);
});

test('Save As remembers the file name, but only on success', () => {
  const id = write('# Ata');
  saveNoteAs(context);
  assert.deepEqual(last(), { noteId: id, filename: 'Ata.md', content: '# Ata' });
  answers.savedAs(false, id, '', 'Salvamento cancelado');
  answers.savedAs(false, id, '', 'Não foi possível salvar o arquivo');
  assert.equal(context.workspace.note(id)?.fileName, null);
  answers.savedAs(true, id, 'novo.txt', 'Salvo como novo.txt');
  assert.deepEqual(toasts, ['Saving canceled', 'Could not save the file', 'Saved as novo.txt']);
  saveNoteAs(context);
  assert.equal(last().filename, 'novo.txt');
  exportAsMarkdown(context);
  assert.equal(last().filename, 'novo.md');
});

test('a closed note remembers its file name, a deleted one does not', () => {
  const closed = write('a');
  context.workspace.closeTabs([closed]);
  answers.savedAs(true, closed, 'a.txt', '');
  assert.equal(context.workspace.note(closed)?.fileName, 'a.txt');
  const deleted = write('b');
  context.workspace.deleteNote(deleted);
  answers.savedAs(true, deleted, 'b.txt', '');
  assert.equal(context.workspace.contents.bin[0]?.note.fileName, null);
  assert.equal(toasts.at(-1), 'Saved as b.txt', 'the file is there all the same');
  answers.savedAs(true, 'nobody', 'c.txt', '');
  start(true);
  answers.savedAs(true, closed, 'a.txt', '');
  assert.equal(toasts.at(-1), 'Saved as a.txt');
});

test("texts over the host's limits are refused with a message", async () => {
  write('é'.repeat(1_000_001), { format: 'plain' });
  shareNote(context);
  assert.equal(await copyAsMarkdown(context), false);
  assert.match(toasts[0] ?? '', /too large to share/);
  assert.match(toasts[1] ?? '', /too large to copy/);
  write('x'.repeat(20_000_001), { format: 'plain' });
  for (const run of [exportAsMarkdown, exportAsText, saveNoteAs]) run(context);
  assert.match(toasts[4] ?? '', /cannot be written/);
  assert.deepEqual([sent, toasts.length], [[], 5]);
  write('x'.repeat(2_000_000), { format: 'plain' });
  shareNote(context);
  void copyAsMarkdown(context);
  assert.equal(sent.length, 2, 'the limit itself is allowed');
});

test("names and titles stay within the host's limits", () => {
  write('x', { name: `${'🎉'.repeat(2000)}.md` });
  shareNote(context);
  const { title = '', filename = '' } = last();
  assert.equal(Buffer.byteLength(title), 2000);
  assert.ok(Buffer.byteLength(filename) <= 240 && filename.endsWith('🎉.md'));
});

test('one share at a time; only its own answer ends it', () => {
  write('# Um\r\n', { lineBreak: '\r\n' });
  shareNote(context);
  const first = last();
  assert.deepEqual(
    { ...first, attemptId: '' },
    {
      attemptId: '',
      title: 'Um',
      filename: 'Um.md',
      content: '# Um\r\n',
      url: 'https://example.invalid/',
    },
  );
  shareNote(context);
  assert.deepEqual([sent.length, toasts.pop()], [1, 'Something is being shared already']);
  answers.shared(true, 'other');
  assert.ok(context.share.busy);
  answers.shared(true, first.attemptId ?? '');
  answers.shared(true, first.attemptId ?? '');
  assert.deepEqual(toasts, ['Shared']);
  shareNote(context);
  assert.notEqual(last().attemptId, first.attemptId);
  answers.shared(false, last().attemptId ?? '');
  assert.deepEqual(toasts, ['Shared', 'Nothing was shared']);
});

test('a share whose answer was lost does not block sharing for good', () => {
  write('a');
  shareNote(context);
  now += 39 * 60 * 1000;
  assert.ok(context.share.busy);
  now += 60 * 1000;
  shareNote(context);
  assert.equal(sent.length, 2);
  answers.shared(true, sent[0]?.[1].attemptId ?? '');
  assert.deepEqual(toasts, []);
});

test('if the host cannot be reached, the page tells the user', () => {
  write('a');
  hostThere = false;
  shareNote(context);
  exportAsText(context);
  saveNoteAs(context);
  assert.deepEqual(toasts, ['Sharing is not available here', 'Could not export the file', 'Could not save the file']);
  assert.equal(context.share.busy, false);
});

test("each copy is answered once, by its own id, with the host's message", async () => {
  write('# Um **b** [x](https://y.z)');
  const copies = [copyAsMarkdown(context), copyAsPlainText(context), copyForWhatsApp(context)];
  assert.deepEqual(
    sent.map(([, body]) => body.text),
    ['# Um **b** [x](https://y.z)', 'Um b x (https://y.z)', '*Um b x*: https://y.z'],
  );
  assert.deepEqual(
    sent.map(([, body]) => body.successMessage),
    ['Markdown copied', 'Text copied', 'Copied for WhatsApp'],
  );
  const ids = sent.map(([, body]) => body.requestId ?? '');
  assert.equal(new Set(ids).size, 3);
  answers.copied(true, 'Of nobody', 'unknown');
  answers.copied(true, 'Copied for WhatsApp', ids[2] ?? '');
  answers.copied(false, 'Text copied', ids[1] ?? '');
  answers.copied(true, 'Too late', ids[1] ?? '');
  answers.copied(true, '', ids[0] ?? '');
  assert.deepEqual(await Promise.all(copies), [true, false, true]);
  assert.deepEqual(toasts.sort(), ['Copied for WhatsApp', 'Could not copy', 'Markdown copied']);
  assert.equal(timers.size, 0);
});

test('a copy without an answer ends as a failure, and a late answer is ignored', async () => {
  write('a');
  const copy = copyForWhatsApp(context);
  for (const run of timers.values()) run();
  assert.equal(await copy, false);
  answers.copied(true, 'Copied', last().requestId ?? '');
  await Promise.resolve();
  assert.deepEqual(toasts, ['Could not copy']);
});

test('text that is not Markdown is copied unchanged, and empty text is not copied', async () => {
  write('**a** [b](c)', { format: 'plain' });
  for (const run of [copyAsPlainText, copyForWhatsApp]) {
    void run(context);
    assert.equal(last().text, '**a** [b](c)');
  }
  write('');
  assert.equal(await copyForWhatsApp(context), false);
  assert.deepEqual([sent.length, toasts], [2, ['The note is empty: there is nothing to copy']]);
});
