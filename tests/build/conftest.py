import os
import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

from harness.installation import Installation  # noqa: E402


@pytest.fixture(scope="session")
def installation(tmp_path_factory):
    """The build, installed."""
    build = Path(os.environ.get("QUENDO_BUILD", ROOT / "build" / "release"))
    return Installation.install(build, tmp_path_factory.mktemp("installation"))
