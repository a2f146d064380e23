"""The product's site: an HTTPS server on the loopback interface that answers as the test tells it to.

The test program (docs/testing.md) asks it for the release manifest. Its certificates come from an authority that is
made anew for each run, and that only the test program trusts.
"""

import socket
import ssl
import threading
import time

from . import desktop
from .waiting import wait_until

# Compiled into the test program.
PORT = 47443
MANIFEST = "/releases/latest.json"


class Certificates:
    """Three certificates made with openssl: a valid one, one of another authority and one for another name. `authority`
    is where the test program looks for the authority it trusts."""

    def __init__(self, directory, authority):
        self._directory = directory
        authority.parent.mkdir(parents=True, exist_ok=True)
        self._make_authority("trusted")
        self._make_authority("other")
        self.good = self._make("good", "trusted", "DNS:localhost")
        self.of_other_authority = self._make("stranger", "other", "DNS:localhost")
        self.for_other_name = self._make("misnamed", "trusted", "DNS:other.example")
        # Put in place in one step, so it is never seen half written.
        whole = authority.with_suffix(".new")
        whole.write_bytes((directory / "trusted.pem").read_bytes())
        whole.replace(authority)

    def _make_authority(self, name):
        base = self._directory / name
        desktop.run("openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
                    "-days", "2", "-subj", f"/CN=Test authority {name}", "-addext", "basicConstraints=critical,CA:TRUE",
                    "-addext", "keyUsage=critical,keyCertSign", "-keyout", f"{base}.key", "-out", f"{base}.pem")

    def _make(self, name, authority, alternative):
        base, signer = self._directory / name, self._directory / authority
        extensions = self._directory / f"{name}.ext"
        extensions.write_text(f"subjectAltName={alternative}\nextendedKeyUsage=serverAuth\n")
        desktop.run("openssl", "req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-subj",
                    f"/CN={name}", "-keyout", f"{base}.key", "-out", f"{base}.csr")
        desktop.run("openssl", "x509", "-req", "-in", f"{base}.csr", "-CA", f"{signer}.pem", "-CAkey",
                    f"{signer}.key", "-CAcreateserial", "-days", "2", "-extfile", str(extensions), "-out",
                    f"{base}.pem")
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(f"{base}.pem", f"{base}.key")
        return context


class Answer:
    """A whole response. By default with the valid certificate; `secure=False` speaks plain HTTP."""

    def __init__(self, status=200, body=b"", headers=(), certificate=None, secure=True):
        self.certificate = certificate
        self.secure = secure
        self.body = body if isinstance(body, bytes) else body.encode("utf-8")
        lines = [f"HTTP/1.1 {status} Status", *headers, "Connection: close"]
        if status not in (204, 304):
            lines += [f"Content-Length: {len(self.body)}"]
        self.head = ("\r\n".join(lines) + "\r\n\r\n").encode("ascii")

    def send(self, connection, _closing):
        connection.sendall(self.head + self.body)


class Held(Answer):
    """Holds its response back until it is released."""

    def __init__(self, **answer):
        super().__init__(**answer)
        self._released = threading.Event()

    def release(self):
        self._released.set()

    def send(self, connection, closing):
        self._released.wait(30)
        super().send(connection, closing)


class CutAnswer(Answer):
    """Announces a whole body and closes the connection in the middle of it; `orderly` with a TLS close notification."""

    def __init__(self, body, orderly=False):
        super().__init__(body=body)
        self._orderly = orderly

    def send(self, connection, _closing):
        connection.sendall(self.head + self.body[:len(self.body) // 2])
        if self._orderly:
            connection.unwrap()


class CutChunks(Answer):
    """Sends its body in chunks and closes the connection before the last one."""

    def send(self, connection, _closing):
        head = self.head.replace(f"Content-Length: {len(self.body)}".encode(), b"Transfer-Encoding: chunked")
        connection.sendall(head + f"{len(self.body):x}\r\n".encode() + self.body + b"\r\n")


class Dripping(Answer):
    """Sends its head at once, then a byte now and then, endlessly."""

    def send(self, connection, closing):
        head = self.head.replace(f"Content-Length: {len(self.body)}".encode(), b"Content-Length: 90000")
        connection.sendall(head)
        while not closing.wait(0.5):
            connection.sendall(b" ")


class Silent(Answer):
    """Takes the request and never answers."""

    def send(self, connection, closing):
        closing.wait()


def _listen(port):
    try:
        return socket.create_server(("127.0.0.1", port))
    except OSError:
        return None


class Site:
    """The server. `says(first, second, ...)` are its answers to the connections that follow, the last of them to all
    others. `requests` are the heads of the requests so far, as lists of lines; `connections` counts those too of
    which no request came."""

    def __init__(self, certificates, port=PORT):
        self._certificates = certificates
        self._lock = threading.Lock()
        self._answers = [Answer(404)]
        self._closing = threading.Event()
        self._open = []
        self.requests = []
        self.connections = 0
        self.ended = []
        self._listener = wait_until(lambda: _listen(port), 180, f"port {port}, which another run may be using", 0.5)
        self.port = self._listener.getsockname()[1]
        self._thread = threading.Thread(target=self._accept, daemon=True)
        self._thread.start()

    def says(self, *answers):
        with self._lock:
            self._answers = list(answers)

    def close(self):
        self._closing.set()
        # Closing alone would leave the thread waiting in accept().
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        self._thread.join()
        for thread in self._open:
            thread.join(5)

    def wait_for_requests(self, count, timeout=20.0):
        wait_until(lambda: len(self.requests) >= count, timeout, f"{count} requests (there were {self.requests})")

    def _accept(self):
        while not self._closing.is_set():
            try:
                connection, _ = self._listener.accept()
            except OSError:
                return
            with self._lock:
                self.connections += 1
                answer = self._answers.pop(0) if len(self._answers) > 1 else self._answers[0]
            thread = threading.Thread(target=self._serve, args=(connection, answer), daemon=True)
            self._open.append(thread)
            thread.start()

    def _serve(self, connection, answer):
        try:
            with connection:
                connection.settimeout(60)
                if answer.secure:
                    context = answer.certificate or self._certificates.good
                    with context.wrap_socket(connection, server_side=True) as secured:
                        self._talk(secured, answer)
                else:
                    self._talk(connection, answer)
        except OSError:
            # The program may close a connection it does not want at any moment.
            pass
        self.ended.append(time.monotonic())

    def _talk(self, connection, answer):
        head = b""
        # A client that starts TLS with a plain server sends nothing intelligible; answer all the same.
        while b"\r\n\r\n" not in head and not head.startswith(b"\x16"):
            read = connection.recv(65536)
            if not read:
                return
            head += read
        self.requests.append(head.split(b"\r\n\r\n")[0].decode("latin-1").split("\r\n"))
        answer.send(connection, self._closing)
