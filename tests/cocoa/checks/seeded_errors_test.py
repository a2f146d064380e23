"""Errors put into the sources on purpose: each must be found, and for its own reason."""

import pytest
from objects import COCOA, compilations, run

ARGUMENTS = compilations("arm64")

# (name, file, what is replaced, by what, what the compiler must say)
SEEDS = (
    ("a wrong selector", "application/CocoaWindow.mm", "[window_ center];", "[window_ centre];",
     "declares the selector 'centre'"),
    ("a missing bridge", "web/WebKitView.mm", "pageDelegate_.owner = this;",
     "pageDelegate_.owner = this;\n  void* raw = (void*)view_;\n  (void)raw;", "requires a bridged cast"),
    ("a retain cycle", "web/WebKitUserContent.mm", "handler->didReceiveScriptMessage(",
     "(void)receiver.receive;\n    handler->didReceiveScriptMessage(", "likely to lead to a retain cycle"),
    ("an unguarded newer call", "web/WebKitView.mm", "if (@available(macOS 13.3, *)) ", "",
     "is only available on macOS 13.3 or newer"),
    ("a misspelled delegate method", "application/CocoaApplication.mm",
     "applicationShouldTerminate:(NSApplication*)sender {", "applicationShouldTerminated:(NSApplication*)sender {",
     "method 'applicationShouldTerminate:' in protocol 'NSApplicationDelegate' not implemented"),
    ("a delegate method of another type", "application/CocoaWindow.mm", "- (BOOL)windowShouldClose:",
     "- (NSInteger)windowShouldClose:", "conflicting return type in implementation of 'windowShouldClose:'"),
    ("a wrong argument type", "application/CocoaWindow.mm", "window_.title = stringFrom(title);",
     "window_.title = title;", "no viable conversion from 'const std::string'"),
    ("an undeclared action", "panels/CocoaSavePanel.mm", "@selector(saveAsExtensionDidChange:)",
     "@selector(saveAsExtensionChanged:)", "undeclared selector 'saveAsExtensionChanged:'"),
    ("a block with another parameter", "panels/CocoaAlert.mm", "completionHandler:^(NSModalResponse response) {",
     "completionHandler:^(NSModalResponse response, BOOL) {", "cannot initialize a parameter of type 'void (^ _Nullable)(NSModalResponse)'"),
    ("a property that does not exist", "panels/CocoaSavePanel.mm", "panel_.canCreateDirectories",
     "panel_.canCreateFolders", "property 'canCreateFolders' not found"),
)

@pytest.mark.parametrize("error, name, before, after, message", SEEDS, ids=[seed[0] for seed in SEEDS])
def test_the_compiler_refuses(tmp_path, error, name, before, after, message):
    source = COCOA / name
    text = source.read_text()
    assert text.count(before) == 1
    seeded = tmp_path / source.name
    seeded.write_text(text.replace(before, after))
    result = run(*ARGUMENTS[source][0], "-fsyntax-only", seeded)
    assert result.returncode != 0 and message in result.stderr, result.stderr
    errors = [line for line in result.stderr.splitlines() if ": error:" in line]
    assert len(errors) == 1, errors
