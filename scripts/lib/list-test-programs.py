"""Prints the test programs of a build directory, one per line, without duplicates."""

import json
import subprocess
import sys

listing = subprocess.run(["ctest", "--test-dir", sys.argv[1], "--show-only=json-v1"], check=True,
                         capture_output=True).stdout
programs = {test["command"][0]: None for test in json.loads(listing)["tests"] if test.get("command")}
for program in programs:
    print(program)
