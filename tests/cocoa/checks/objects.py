"""The macOS builds on this machine: how their sources are compiled, and what is in the result."""

import json
import re
import shlex
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
COCOA = ROOT / "src" / "platform" / "cocoa"
ARCHITECTURES = ("arm64", "x86_64")


def build(architecture):
    return ROOT / "build" / f"macos-{architecture}"


def compilations(architecture):
    """{source: (arguments without the source and the output, object file)}"""
    entries = json.loads((build(architecture) / "compile_commands.json").read_text())
    found = {}
    for entry in entries:
        arguments = shlex.split(entry["command"])
        output = arguments.index("-o")
        object_file = Path(entry["directory"]) / arguments[output + 1]
        del arguments[output:output + 2]
        arguments = [one for one in arguments if one not in ("-c", entry["file"])]
        found[Path(entry["file"])] = (arguments, object_file)
    return found


def run(*command):
    return subprocess.run([str(one) for one in command], capture_output=True, text=True)


def binary(architecture):
    return build(architecture) / "Quendo.app" / "Contents" / "MacOS" / "Quendo"


def undefined_symbols(path):
    return [line.split()[-1] for line in run("llvm-nm-19", "-u", path).stdout.splitlines() if line.strip()]


def implemented_methods(path):
    """[(class, selector, type encoding)] of the classes that an object file implements."""
    text = run("llvm-objdump-19", "--macho", "--objc-meta-data", path).stdout
    methods = []
    class_name = None
    in_methods = False
    for line in text.splitlines():
        if match := re.match(r"[0-9a-f]+ \S+ _OBJC_CLASS_\$_(\w+)$", line):
            class_name = match[1]
        elif re.match(r"\s+Meta Class", line) or re.match(r"\s*isa ", line):
            in_methods = False
        if re.match(r"\s+baseMethods ", line):
            in_methods = " 0x0" not in line
        elif re.match(r"\s+(baseProtocols|ivars|weakIvarLayout|baseProperties) ", line):
            in_methods = False
        elif in_methods and (match := re.match(r"\s+name \S+ (\S+)$", line)):
            selector = match[1]
        elif in_methods and (match := re.match(r"\s+types \S+ (\S+)$", line)):
            methods.append((class_name, selector, match[1]))
    return methods
