"""Update checks of the whole program against a real HTTPS server on the loopback interface.

The program here is the test program: the same code, linked with a site that is on this machine.
"""

import time

import pytest

from harness import desktop
from harness.site import (MANIFEST, PORT, Answer, Certificates, CutAnswer, CutChunks, Dripping, Held, Silent, Site)
from harness.updates import (APART, AUTHORITY, DOWNLOAD, FAILED, LATEST, PROGRAM, TIME_OUT, UNDER_WAY, Updates,
                             build_number, configured, manifest, offer, padded, version)
from harness.waiting import stays, wait_until


@pytest.fixture(scope="module")
def certificates(tmp_path_factory):
    return Certificates(tmp_path_factory.mktemp("certificates"), AUTHORITY)


@pytest.fixture(scope="module")
def site(certificates):
    site = Site(certificates)
    yield site
    site.close()


@pytest.fixture
def elsewhere(certificates):
    """Another server on its own port."""
    site = Site(certificates, port=0)
    yield site
    site.close()


@pytest.fixture(scope="module")
def running(tmp_path_factory, installation, program_arguments, site):
    updates = Updates(tmp_path_factory.mktemp("updates"), installation, program_arguments, site)
    yield updates.start()
    updates.stop()


@pytest.fixture
def updates(running):
    running.site.requests.clear()
    running.site.ended.clear()
    yield running
    # An offer left open by a failed test would block those of the others.
    if running.program.running and len(running.program.windows()) > 1:
        running.dismiss()


def test_a_newer_release_is_offered_and_its_address_is_opened(updates):
    updates.ask(Answer(body=manifest(release_notes="  Faster.\n\nBetter. \n")))
    updates.wait_for_offer(offer("Faster.\n\nBetter."))
    assert list(updates.buttons()) == ["Download Update", "Remind Me Later"]
    desktop.press("Return")
    updates.wait_until_alone()
    updates.program.external.wait_for(DOWNLOAD)
    assert updates.program.external.opened() == [DOWNLOAD]
    stored = updates.settings()
    assert stored["Strings"]["QuendoLastPromptedUpdateVersion"] == "9.0"
    assert "QuendoLastUpdatePromptDate" in stored["Dates"]
    assert stored["Dates"]["QuendoLastAutomaticUpdateCheck"].startswith("2200-"), "a manual check leaves it alone"


def test_a_newer_release_is_offered_again_and_may_be_put_off(updates):
    opened = updates.program.external.opened()
    for leave in (updates.dismiss, lambda: desktop.press("Escape")):
        updates.ask(Answer(body=manifest()))
        updates.wait_for_offer(offer())
        leave()
        updates.wait_until_alone()
    stays(lambda: updates.program.external.opened() == opened, 0.5, "nothing more opened")


@pytest.mark.parametrize("notes", ["n" * 5000, "\n".join("n" * 5000), "Word " * 1000])
def test_long_notes_are_cut_and_the_buttons_stay_within_reach(updates, notes):
    opened = updates.program.external.opened()
    updates.ask(Answer(body=manifest(release_notes=notes)))
    updates.wait_for_offer(offer(notes[:1200]))
    alert = next(one for one in updates.program.windows() if one.id != updates.program.window.id)
    assert desktop.geometry(alert)[3] < 600
    desktop.press("Return")
    updates.wait_until_alone()
    wait_until(lambda: updates.program.external.opened() == [*opened, DOWNLOAD], 10, "the address to be opened")


def test_a_manifest_of_the_greatest_length_is_taken(updates):
    updates.ask(Answer(body=padded(100_000)))
    updates.wait_for_offer(offer())
    updates.dismiss()


def test_nothing_is_offered_over_a_sheet_nor_after_it(updates):
    before = updates.settings()
    held = Held(body=manifest(version="9.1"))
    updates.ask(held)
    updates.site.wait_for_requests(1)
    updates.server.post("report('prompt', prompt('What is your name?'));")
    # Its caret blinks, so waiting for a still window would fail.
    updates.program.accessible().find("label", "What is your name?")
    held.release()
    wait_until(lambda: updates.site.ended, 10, "the answer to be sent")
    stays(lambda: len(updates.program.windows()) == 2, 1, "the prompt alone")
    answers = len(updates.server.reports("prompt"))
    desktop.press("Return")
    updates.server.wait_for("prompt", answers + 1)
    updates.wait_until_alone()
    stays(lambda: len(updates.program.windows()) == 1, 1, "no sheet")
    assert len(updates.toasts()) == updates.seen
    assert updates.settings() == before, "nothing is recorded"
    updates.ask(Answer(body=manifest(version="0.1")))
    assert updates.toast() == LATEST


@pytest.mark.parametrize("older", ["0.9.9", "0.0.1", "v9.0", "9.0-beta", "1.0.0.0.1"])
def test_a_release_that_is_not_newer_is_not_offered(updates, older):
    updates.ask(Answer(body=manifest(version=older, build=99)))
    assert updates.toast() == LATEST


def test_the_same_release_is_not_offered_but_its_next_build_is(updates):
    updates.ask(Answer(body=manifest(version=version(), build=build_number())))
    assert updates.toast() == LATEST
    updates.ask(Answer(body=manifest(version=version(), build=build_number() + 1)))
    updates.program.wait_for_alert(f"Quendo {version()} is available")
    updates.dismiss()


FAILURES = {
    "204": Answer(204),
    "206": Answer(206, manifest()),
    "304": Answer(304),
    "401": Answer(401, manifest(), ['WWW-Authenticate: Basic realm="all"']),
    "404": Answer(404, manifest()),
    "500": Answer(500, manifest()),
    "no body": Answer(200),
    "a page": Answer(200, "<!doctype html><title>Sign in</title>", ["Content-Type: text/html"]),
    "a build number in quotes": Answer(body=manifest(build="42")),
    "a version that is a number": Answer(body=manifest(version=9)),
    "another host": Answer(body=manifest(url="https://example.org/Quendo.dmg")),
    "a host that looks like it": Answer(body=manifest(url="https://localhost.example.org/Quendo.dmg")),
    "an address without encryption": Answer(body=manifest(url="http://localhost/Quendo.dmg")),
    "another file type": Answer(body=manifest(url="https://localhost/Quendo.zip")),
    "a byte too much": Answer(body=padded(100_001)),
    "much too long": Answer(body=padded(30_000_000)),
    "a compressed body": Answer(200, b"\x1f\x8b\x08\x00", ["Content-Encoding: gzip"]),
    "cut in the middle": CutAnswer(body=padded(50_000)),
    "cut at the end of what is a manifest": CutAnswer(body=padded(2 * len(manifest()))),
    "ended in good order before it is whole": CutAnswer(body=padded(50_000), orderly=True),
    "cut between chunks": CutChunks(body=manifest()),
    "a plain server": Answer(body=manifest(), secure=False),
    "a redirect without an address": Answer(302, manifest()),
    "a redirect in a circle": Answer(302, headers=[f"Location: {MANIFEST}"]),
}


@pytest.mark.parametrize("what", FAILURES)
def test_what_is_no_manifest_is_a_failure(updates, what):
    updates.ask(FAILURES[what])
    assert updates.toast() == FAILED
    assert len(updates.program.windows()) == 1


def test_a_certificate_that_does_not_fit_is_a_failure_and_nothing_is_asked(updates, certificates):
    for certificate in (certificates.of_other_authority, certificates.for_other_name):
        updates.ask(Answer(body=manifest(), certificate=certificate))
        assert updates.toast() == FAILED
    assert updates.site.requests == []
    updates.ask(Answer(body=manifest(version="0.1")))
    assert updates.toast() == LATEST, "the right certificate is trusted as before"


def test_a_redirect_is_followed_to_https(updates, elsewhere):
    elsewhere.says(Answer(body=manifest()))
    updates.ask(Answer(302, headers=[f"Location: https://localhost:{elsewhere.port}/other.json?a=b"]))
    updates.wait_for_offer()
    updates.dismiss()
    assert elsewhere.requests[0][0] == "GET /other.json?a=b HTTP/1.1"
    updates.ask(Answer(307, headers=["Location: ../moved.json"]), Answer(body=manifest(version="0.1")))
    assert updates.toast() == LATEST
    assert updates.site.requests[-1][0] == "GET /moved.json HTTP/1.1"


def test_a_redirect_is_not_followed_out_of_https(updates, elsewhere):
    elsewhere.says(Answer(body=manifest(), secure=False))
    for scheme in ("http", "HTTP", "file"):
        updates.ask(Answer(302, headers=[f"Location: {scheme}://localhost:{elsewhere.port}/latest.json"]))
        assert updates.toast() == FAILED
    assert elsewhere.connections == 0


def test_a_certificate_must_fit_after_a_redirect_too(updates, elsewhere, certificates):
    elsewhere.says(Answer(body=manifest(), certificate=certificates.of_other_authority))
    updates.ask(Answer(302, headers=[f"Location: https://localhost:{elsewhere.port}/latest.json"]))
    assert updates.toast() == FAILED
    assert elsewhere.requests == []


def test_the_request_tells_what_it_must_and_no_more(updates):
    updates.ask(Answer(body=manifest(version="0.1"),
                       headers=["Set-Cookie: who=me; Path=/; Max-Age=9999", "Cache-Control: public, max-age=9999",
                                'ETag: "tag"', "Last-Modified: Sat, 01 Jan 2000 00:00:00 GMT"]))
    assert updates.toast() == LATEST
    updates.ask(Answer(body=manifest(version="0.1")))
    assert updates.toast() == LATEST
    assert len(updates.site.requests) == 2, "the second answer did not come out of a cache"
    for first, *headers in updates.site.requests:
        assert first == f"GET {MANIFEST} HTTP/1.1"
        assert sorted(one for one in headers if not one.startswith("Connection:")) == [
            "Accept: application/json", "Cache-Control: no-cache", f"Host: localhost:{PORT}", "Pragma: no-cache",
            f"User-Agent: Quendo/{version()}"]


def test_a_server_that_never_ends_is_given_up_after_its_time(updates, tmp_path, installation, program_arguments):
    # In parallel: this program meets a silent server, another one a server that drips.
    other = Updates(tmp_path, installation, program_arguments, updates.site)
    try:
        other.start(APART)
        other.ask(Dripping(body=manifest()))
        updates.site.wait_for_requests(1)
        dripping = time.monotonic()
        updates.program.focus()
        updates.ask(Silent())
        updates.site.wait_for_requests(2)
        silent = time.monotonic()

        updates.program.choose("Quendo", "Check for Updates…")
        assert updates.toast() == UNDER_WAY
        assert other.toast(timeout=TIME_OUT + 5) == FAILED
        assert TIME_OUT - 2 < time.monotonic() - dripping < TIME_OUT + 3
        assert updates.toast(2, timeout=TIME_OUT + 5) == FAILED
        assert TIME_OUT - 2 < time.monotonic() - silent < TIME_OUT + 3
        assert len(updates.site.requests) == 2
    finally:
        other.stop()


def test_a_check_comes_by_itself_once_and_not_again_after_a_restart(tmp_path, installation, program_arguments, site):
    updates = Updates(tmp_path, installation, program_arguments, site, settings="")
    site.says(Answer(body=manifest()))
    site.requests.clear()
    try:
        updates.start(APART)
        started = time.monotonic()
        stays(lambda: not site.requests, 5, "no request in the first seconds")
        updates.program.wait_for_alert("Quendo 9.0 is available", offer())
        assert time.monotonic() - started < 20
        stored = updates.settings()
        assert stored["Strings"]["QuendoLastPromptedUpdateVersion"] == "9.0"
        assert stored["Dates"]["QuendoLastUpdatePromptDate"] == stored["Dates"]["QuendoLastAutomaticUpdateCheck"]
        updates.dismiss()
        assert updates.toasts() == []
        assert updates.program.terminate() == 0

        updates.start(APART)
        stays(lambda: len(site.requests) == 1, 10, "the one request")
        assert len(updates.program.windows()) == 1
    finally:
        updates.stop()


def test_what_is_installed_knows_only_its_own_site(installation):
    site = f"localhost:{PORT}".encode()
    assert site in PROGRAM.read_bytes()
    assert AUTHORITY.name.encode() in PROGRAM.read_bytes()
    installed = installation.program.read_bytes()
    assert site not in installed and AUTHORITY.name.encode() not in installed
    assert f"https://{configured('QUENDO_SITE_DOMAIN')}{MANIFEST}".encode() in installed
    assert [one.name for one in installation.program.parent.iterdir()] == ["quendo"]
