"""A test page that posts messages to the host as the real page does, and collects the answers."""

import json

# A save that is never written if a document with a revision is stored, with an unmistakable answer.
_FENCE = -770077

_SCRIPT = """
<script>
  window.answers = [];
  const waiting = [];
  for (const name of ['quendoNativeSaveDidFinish', 'quendoNativeClipboardDidFinish']) {
    window[name] = (...values) => {
      answers.push(values);
      for (const look of waiting.splice(0)) look();
    };
  }
  window.post = (name, body) => webkit.messageHandlers[name].postMessage(body);
  window.answersUntil = async (condition) => {
    while (!condition()) await new Promise((resolve) => waiting.push(resolve));
    return answers.splice(0);
  };
  // Identifies a text by its length and a hash of its code units.
  window.fingerprint = (text) => {
    let sum = 0x811c9dc5;
    for (let i = 0; i < text.length; i++) sum = Math.imul(sum ^ text.charCodeAt(i), 0x01000193);
    return [text.length, sum >>> 0];
  };
</script>
"""


def bridge_page(reporter, body="", head=""):
    """The text of the page."""
    return reporter.page(body=body, head=_SCRIPT + head)


class Bridge:
    """The page's side of the messages. Bodies are JavaScript expressions."""

    def __init__(self, reporter):
        self._reporter = reporter

    def answer(self, name, body, timeout=20.0):
        """Posts a message and returns the arguments of the next answer."""
        self._reporter.run(f"answers.length = 0; post({json.dumps(name)}, {body});", timeout)
        return self._reporter.run("return (await answersUntil(() => answers.length > 0))[0];", timeout)

    def save(self, text, revision, timeout=20.0):
        """Saves a document given as Python text; returns whether the answer was true."""
        body = f"{{ serialized: {json.dumps(text)}, revision: {revision} }}"
        success, answered = self.answer("quendoState", body, timeout)
        assert answered == revision
        return success

    def answers_to_saves(self, *bodies, timeout=20.0):
        """Posts "quendoState" messages one after the other and returns all answers to them. A save of the harness's own
        follows: answers come in the order of the messages, so its answer is the last."""
        fence = f"{{ serialized: '{{}}', revision: {_FENCE} }}"
        posts = "".join(f"post('quendoState', {body});" for body in (*bodies, fence))
        self._reporter.run("answers.length = 0;" + posts, timeout)
        answers = self._reporter.run(
            f"return (await answersUntil(() => answers.some((one) => one[1] === {_FENCE})))"
            ".map(([success, revision]) => [success, String(revision)]);", timeout)
        assert answers[-1] == [True, str(_FENCE)]
        return answers[:-1]
