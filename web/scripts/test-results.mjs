// A reporter for Node's test runner: one line of JSON per finished test. A line without a name stands for a
// file that ended before it could report its tests.
export default async function* results(source) {
  for await (const { type, data } of source) {
    if (type !== 'test:pass' && type !== 'test:fail') continue;
    const { name, file, details, skip, todo } = data;
    if (details?.type === 'suite') continue;
    const whole = /\.test\.[cm]?[jt]s$/.test(name);
    // A passed file has already been reported by its tests.
    if (whole && type === 'test:pass') continue;
    const result = {
      file: whole ? name : file,
      name: whole ? undefined : name,
      state: skip !== undefined || todo !== undefined ? 'skipped' : type.slice('test:'.length),
      message: String(details?.error?.cause?.message ?? details?.error?.message ?? ''),
    };
    yield `${JSON.stringify(result)}\n`;
  }
}
