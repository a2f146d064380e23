"""What the linked programs expect of the system: every symbol is on a reviewed list."""

import re

import pytest
from objects import ARCHITECTURES, ROOT, binary, run, undefined_symbols

LIST = ROOT / "tests" / "cocoa" / "checks" / "symbols"
# The C++ standard library and its runtime.
STANDARD = re.compile(r"__Z(N[KVr]*St|N[KVr]*10__cxxabiv1|T[ISVT]N?[K]*St|T[ISV]N10__cxxabiv1|T[ISV][a-zA-Z]$|St|nw|na|dl|da|"
                      r"NKSt|GVNSt)")


def reviewed():
    return {line.split()[0] for line in LIST.read_text().splitlines() if line and not line.startswith("#")}


def unknown(symbols, listed):
    return sorted(one for one in symbols if one not in listed and not STANDARD.match(one))


@pytest.mark.parametrize("architecture", ARCHITECTURES)
def test_every_undefined_symbol_is_a_documented_one(architecture):
    symbols = undefined_symbols(binary(architecture))
    assert len(symbols) > 100
    assert unknown(symbols, reviewed()) == []


def test_the_list_has_nothing_that_no_program_uses():
    used = {one for architecture in ARCHITECTURES for one in undefined_symbols(binary(architecture))}
    assert sorted(reviewed() - used) == []


def test_an_undocumented_symbol_is_found():
    assert unknown(["_NSBeep", "_NSSecretCall", "__ZNSt3__16vectorE", "__ZN6quendo4gone"], reviewed()) == [
        "_NSSecretCall", "__ZN6quendo4gone"]


@pytest.mark.parametrize("architecture", ARCHITECTURES)
def test_the_program_is_made_for_its_processor_and_macos_13(architecture):
    header = run("llvm-objdump-19", "--macho", "--private-headers", binary(architecture)).stdout
    assert re.search(r"platform (macos|1)\b", header, re.IGNORECASE) and re.search(r"minos 13\.0", header)
    assert {"arm64": "ARM64", "x86_64": "X86_64"}[architecture] in header
