"""Lets a test page and its test talk: reports one way, commands the other, over loopback HTTP.

Test pages have no content security policy, so that they may use the network. Nothing here is the
program's: it works in every web view, and says nothing about the bridge that is being tested.
"""

import itertools
import json
import sys
import threading
from collections import deque
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

from .waiting import Timeout, wait_until

# Runs in the page. Any script may call `report`; the loop at the end runs the commands.
_SCRIPT = """
(() => {
  const base = '%s';
  const post = (path, value) =>
    fetch(base + path, { method: 'POST', mode: 'no-cors', keepalive: false, body: JSON.stringify(value) });
  // Lets the program quit without changing the document on disk: this revision is below every other.
  window.quendoPrepareForTermination = () => ({ serialized: '{"revision":-1}' });
  window.report = (name, value) => post('/report', { name, value: value === undefined ? null : value });
  const describe = (error) => String(error && error.stack ? error + '\\n' + error.stack : error);
  const loop = async () => {
    const generation = Math.random().toString(36).slice(2);
    await post('/hello', generation);
    for (;;) {
      let command;
      try {
        const response = await fetch(base + '/next?' + generation, { cache: 'no-store' });
        if (response.status !== 200) continue;
        command = await response.json();
      } catch {
        await new Promise((resolve) => setTimeout(resolve, 50));
        continue;
      }
      const answer = { id: command.id };
      try {
        const value = await new Function('return (async () => {' + command.body + '})()')();
        answer.value = value === undefined ? null : value;
      } catch (error) {
        answer.error = describe(error);
      }
      await post('/answer', answer);
    }
  };
  if (%s) loop();
})();
"""


class PageError(AssertionError):
    """A command failed in the page."""


class _Server(ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, request, client_address):
        # A page that is left or killed drops its connections; that needs no traceback.
        if not isinstance(sys.exc_info()[1], ConnectionError):
            super().handle_error(request, client_address)


class Reporter:
    """A small server on the loopback interface. Close it when the test ends."""

    def __init__(self):
        self._condition = threading.Condition()
        self._reports = []
        self._requests = []
        self._commands = deque()
        self._answers = {}
        self._generation = None
        self._generations = 0
        self._numbers = itertools.count(1)
        self.files = {}
        self._closing = False
        self._server = _Server(("127.0.0.1", 0), self._handler())
        self._thread = threading.Thread(target=self._server.serve_forever,
                                        kwargs={"poll_interval": 0.05}, daemon=True)
        self._thread.start()

    @property
    def url(self):
        """Address of the server, without a trailing slash."""
        return f"http://127.0.0.1:{self._server.server_address[1]}"

    def script(self, commands=True):
        """A <script> element for the test page: defines report(name, value), and, with `commands`, makes the
        page do what `run` asks."""
        return "<script>" + _SCRIPT % (self.url, "true" if commands else "false") + "</script>"

    def page(self, body="", head="", title="Quendo"):
        """A whole index.html with the script first in its head."""
        return (f"<!doctype html><html><head><meta charset='utf-8'>{self.script()}"
                f"<title>{title}</title>{head}</head><body>{body}</body></html>")

    def close(self):
        self._closing = True
        with self._condition:
            self._condition.notify_all()
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()

    # Reports from the page.

    def reports(self, name=None):
        """Values reported under a name, in order; without a name, all (name, value) pairs."""
        with self._condition:
            if name is None:
                return list(self._reports)
            return [value for one, value in self._reports if one == name]

    def wait_for(self, name, count=1, timeout=10.0):
        """Waits for the `count`-th report under a name and returns its value."""
        values = wait_until(lambda: len(found := self.reports(name)) >= count and found, timeout,
                            f"report {name!r} of the page (it reported {[n for n, _ in self.reports()]})")
        return values[count - 1]

    def requests(self):
        """Paths requested with GET, in order, without the harness's own."""
        with self._condition:
            return list(self._requests)

    # Commands to the page.

    def wait_for_page(self, count=1, timeout=20.0):
        """Waits until a page that takes commands has been loaded for the `count`-th time."""
        wait_until(lambda: self._generations >= count, timeout, f"the test page to be loaded ({count})")

    @property
    def loads(self):
        """How often a page that takes commands has been loaded."""
        return self._generations

    def post(self, body):
        """Queues the body of an async function for the page and returns its number without waiting."""
        with self._condition:
            number = next(self._numbers)
            self._commands.append({"id": number, "body": body})
            self._condition.notify_all()
        return number

    def run(self, body, timeout=10.0):
        """Runs the body of an async function in the page and returns its result through JSON."""
        self.wait_for_page(timeout=timeout)
        number = self.post(body)
        with self._condition:
            if not self._condition.wait_for(lambda: number in self._answers, timeout):
                raise Timeout(f"the page did not answer within {timeout:g} s: {body[:200]}")
            answer = self._answers.pop(number)
        if "error" in answer:
            raise PageError(answer["error"])
        return answer["value"]

    def evaluate(self, expression, timeout=10.0):
        """Evaluates an expression in the page; a promise is awaited."""
        return self.run(f"return ({expression});", timeout)

    def _handler(self):
        reporter = self

        class Handler(BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def log_message(self, *arguments):
                pass

            def _send(self, status, content=b"", kind="text/plain"):
                self.send_response(status)
                self.send_header("Content-Type", kind)
                self.send_header("Content-Length", str(len(content)))
                self.send_header("Access-Control-Allow-Origin", "*")
                self.send_header("Cache-Control", "no-store")
                self.end_headers()
                self.wfile.write(content)

            def do_POST(self):
                body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
                value = json.loads(body) if body else None
                with reporter._condition:
                    if self.path == "/report":
                        reporter._reports.append((value["name"], value["value"]))
                    elif self.path == "/answer":
                        reporter._answers[value["id"]] = value
                    elif self.path == "/hello":
                        reporter._generation = value
                        reporter._generations += 1
                    else:
                        reporter._reports.append((self.path, value))
                    reporter._condition.notify_all()
                self._send(204)

            def do_GET(self):
                path, _, generation = self.path.partition("?")
                if path == "/next":
                    self._next(generation)
                    return
                with reporter._condition:
                    reporter._requests.append(self.path)
                content = reporter.files.get(path)
                if content is None:
                    self._send(404)
                else:
                    self._send(200, content.encode() if isinstance(content, str) else content, "text/html")

            def _next(self, generation):
                with reporter._condition:
                    # A page that has been left must not take commands meant for the current one.
                    reporter._condition.wait_for(
                        lambda: reporter._closing or reporter._generation != generation or reporter._commands, 5)
                    mine = reporter._generation == generation and reporter._commands and not reporter._closing
                    command = reporter._commands.popleft() if mine else None
                try:
                    if command is None:
                        self._send(204)
                    else:
                        self._send(200, json.dumps(command).encode(), "application/json")
                except OSError:
                    # The page that asked is gone; its successor gets the command.
                    if command is not None:
                        with reporter._condition:
                            reporter._commands.appendleft(command)

        return Handler
