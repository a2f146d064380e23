"""Warnings stop a build of ./test and no other, and changing from one to the other compiles nothing anew."""

import json
import subprocess

from conftest import ROOT

PROJECT = """
cmake_minimum_required(VERSION 3.25)
project(sample LANGUAGES CXX)
include({root}/cmake/QuendoWarnings.cmake)
add_library(sample STATIC sample.cpp)
target_link_libraries(sample PRIVATE quendo_warnings)
"""


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, **options)


def configured(directory, *options):
    (directory / "CMakeLists.txt").write_text(PROJECT.format(root=ROOT))
    (directory / "sample.cpp").write_text("int sample(int unused);\nint sample(int unused) { return 0; }\n")
    run("cmake", "-G", "Ninja", "-S", directory, "-B", directory / "build", *options, check=True)
    return directory / "build"


def test_a_packagers_build_goes_on_after_a_warning(tmp_path):
    done = run("cmake", "--build", configured(tmp_path))
    assert done.returncode == 0 and "warning: unused parameter" in done.stdout


def test_a_build_of_the_tests_ends_at_a_warning_and_shares_what_is_compiled(tmp_path):
    options = tmp_path / "warning options"
    build = configured(tmp_path, f"-DQUENDO_WARNING_OPTIONS=@{options}")
    assert run("cmake", "--build", build).returncode == 0
    options.write_text("-Werror\n")
    assert "no work to do" in run("cmake", "--build", build).stdout
    (tmp_path / "sample.cpp").touch()
    assert run("cmake", "--build", build).returncode != 0
    options.write_text("\n")
    assert run("cmake", "--build", build).returncode == 0


def test_only_the_scripts_of_the_tests_ask_for_errors():
    asking = {str(path.relative_to(ROOT)) for path in (ROOT / "test", ROOT / "run", *(ROOT / "bench").glob("*"),
                                                       *(ROOT / "scripts").rglob("*"))
              if path.is_file() and "-Werror" in path.read_text(encoding="utf-8", errors="replace")}
    assert asking == {"test", "scripts/lib/build.sh", "scripts/check-tidy", "scripts/check-format"}


def test_only_the_builds_that_nobody_installs_always_end_at_a_warning():
    presets = json.loads((ROOT / "CMakePresets.json").read_text())["configurePresets"]
    strict = {preset["name"] for preset in presets if "-Werror" in json.dumps(preset)}
    assert strict == {"macos-arm64", "cocoa-doubles"}
