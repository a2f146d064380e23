"""The methods that the system calls by name: their selectors and types, as the object files have them."""

import re

import pytest
from objects import ARCHITECTURES, COCOA, compilations, implemented_methods

# What the classes have of their own, and nobody else calls.
OWN = re.compile(r"(init\w*:?|forget|set(Owner|Navigation|Ui|Delegate|Receive|OpenFiles):|owner|navigation|ui|receive|"
                 r"openFiles|(setD|d)idChange:?|(setP|p)erformMenuKey:?|hasEnded|perform:|\.cxx_\w+)$")
LIST = COCOA.parents[2] / "tests" / "cocoa" / "checks" / "selectors"


def expected():
    """{(class, selector, type)}, with B for a BOOL."""
    lines = [line for line in LIST.read_text().splitlines() if line and not line.startswith("#")]
    return {tuple(line.split()) for line in lines}


@pytest.mark.parametrize("architecture", ARCHITECTURES)
def test_the_methods_that_the_system_calls_have_the_reviewed_selectors_and_types(architecture):
    found = set()
    for source, (_, object_file) in compilations(architecture).items():
        if COCOA not in source.parents:
            continue
        for class_name, selector, types in implemented_methods(object_file):
            # A BOOL is a C bool on one processor and a signed char on the other.
            if architecture == "x86_64":
                types = types.replace("c", "B")
            if not OWN.match(selector):
                found.add((class_name, selector, types))
    assert found == expected()


def test_every_menu_command_has_an_action_method():
    table = (COCOA.parents[1] / "menu" / "MenuTable.cpp").read_text()
    commands = set(re.findall(r'(?:page|native)\("[^"]*",\s*"(\w+)"', table)) | {"changeLanguage"}
    methods = {selector for class_name, selector, _ in expected() if class_name == "QuendoMenuTarget"}
    assert {command + ":" for command in commands} == methods - {"validateMenuItem:"}
