"""The installed program is hardened, as its own file says. Read with the tools that come with the compiler."""

import os
import platform
import re
import subprocess

import pytest



@pytest.fixture(scope="module")
def program(installation):
    return installation.program


def read(program, *options):
    return subprocess.run(["readelf", "--wide", *options, program], check=True, capture_output=True, text=True,
                          env=os.environ | {"LC_ALL": "C"}).stdout


def dynamic_flags(program):
    return set(" ".join(re.findall(r"\(FLAGS(?:_1)?\)\s+(?:Flags:\s*)?(.*)", read(program, "--dynamic"))).split())


def imports(program):
    """Names of the functions that the program takes from libraries, without their versions."""
    rows = (line.split() for line in read(program, "--dyn-syms").splitlines())
    return {row[7].split("@")[0] for row in rows if len(row) > 7 and row[6] == "UND"}


def segments(program):
    """Name -> flags of the program headers."""
    return {row[1]: row[2].replace(" ", "") for row in
            re.finditer(r"^\s+([A-Z_]+)\s+(?:0x\w+\s+){5}([RWE ]{3})", read(program, "--segments"), re.M)}


def test_the_program_is_loaded_at_any_address(program):
    assert re.search(r"Type:\s+DYN", read(program, "--file-header"))
    assert "PIE" in dynamic_flags(program)


def test_addresses_of_functions_are_bound_at_once_and_read_only_then(program):
    assert {"BIND_NOW", "NOW"} <= dynamic_flags(program)
    assert "GNU_RELRO" in segments(program)


def test_nothing_in_memory_is_both_written_and_run(program):
    found = segments(program)
    assert found["GNU_STACK"] == "RW"
    assert not [name for name, flags in found.items() if {"W", "E"} <= set(flags)]


def test_stack_frames_are_guarded(program):
    assert "__stack_chk_fail" in imports(program)


def test_calls_that_write_memory_are_fortified(program):
    assert [name for name in imports(program) if re.fullmatch(r"__\w+_chk", name) and name != "__stack_chk_fail"]


def test_the_standard_library_checks_its_preconditions(program):
    assert [name for name in imports(program) if "__glibcxx_assert_fail" in name]


def test_functions_begin_where_jumps_may_land(program):
    # Not read off the file's property note: the linker leaves that out where the system's start-up code is unguarded.
    landings = {"x86_64": {"endbr64"}, "aarch64": {"bti", "paciasp", "pacibsp", "hint"}}[platform.machine()]
    code = subprocess.run(["objdump", "--disassemble", "--no-show-raw-insn", "--section=.text", program], check=True,
                          capture_output=True, text=True).stdout
    # What the compiler split off a function, named with a dot, is only reached by direct jumps.
    first = dict(re.findall(r"^\w+ <(_ZNK?6quendo[^.>]+)>:\n\s*\w+:\s+(\w+)", code, re.M))
    local = {row.split()[-1] for row in read(program, "--syms").splitlines() if " LOCAL " in row}
    unguarded = [name for name, instruction in first.items() if name not in local and instruction not in landings]
    assert len(first) > 100 and not unguarded
