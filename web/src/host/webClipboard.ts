import type { HostAnswers, HostPort } from '../commands/port';

/** Copies through the browser's clipboard API when there is no host. */
export function webCopy(answers: () => HostAnswers): HostPort['copy'] {
  return ({ text, successMessage, requestId }) => {
    const report = (success: boolean) => answers().copied(success, successMessage, requestId);
    if (!navigator.clipboard) report(false);
    else
      navigator.clipboard.writeText(text).then(
        () => report(true),
        () => report(false),
      );
  };
}
