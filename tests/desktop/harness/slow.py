"""A server that keeps a page loading."""

import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer


class SlowServer:
    """Holds every answer back until told to send it: a page that needs one keeps loading."""

    def __init__(self):
        self._go = threading.Event()
        self.asked = threading.Event()
        outer = self

        class Handler(BaseHTTPRequestHandler):
            def log_message(self, *arguments):
                pass

            def do_GET(self):
                outer.asked.set()
                outer._go.wait(60)
                try:
                    self.send_error(404)
                except OSError:
                    pass

        self._server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self._server.daemon_threads = True
        self.url = f"http://127.0.0.1:{self._server.server_address[1]}"
        threading.Thread(target=self._server.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True).start()

    def answer(self):
        self._go.set()

    def close(self):
        self.answer()
        self._server.shutdown()
        self._server.server_close()
