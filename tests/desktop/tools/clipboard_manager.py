"""A clipboard manager: takes what a program that ends asks it to keep, and offers it from then on.

It keeps the text alone, up to the size that the display takes in one piece.
"""

from Xlib import X, Xatom, display
from Xlib.protocol import event

_display = display.Display()
_root = _display.screen().root
_window = _root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
_kept = b""


def atom(name):
    return _display.intern_atom(name)


def notify(request, given):
    request.requestor.send_event(event.SelectionNotify(
        time=request.time, requestor=request.requestor, selection=request.selection, target=request.target,
        property=request.property if given else X.NONE))
    _display.flush()


def take():
    """Reads the clipboard's text from its owner."""
    _window.convert_selection(atom("CLIPBOARD"), atom("UTF8_STRING"), atom("KEPT"), X.CurrentTime)
    while True:
        one = _display.next_event()
        if one.type == X.SelectionNotify:
            found = one.property and _window.get_full_property(atom("KEPT"), X.AnyPropertyType)
            return bytes(found.value) if found else b""


def answer(request):
    global _kept
    if request.selection == atom("CLIPBOARD_MANAGER"):
        saves = request.target == atom("SAVE_TARGETS")
        if saves:
            _kept = take()
            _window.set_selection_owner(atom("CLIPBOARD"), X.CurrentTime)
            request.requestor.change_property(request.property, atom("NULL"), 32, [])
        notify(request, saves)
        return
    if request.target == atom("TARGETS"):
        request.requestor.change_property(request.property, Xatom.ATOM, 32, [atom("TARGETS"), atom("UTF8_STRING")])
        notify(request, True)
        return
    is_text = request.target == atom("UTF8_STRING")
    if is_text:
        request.requestor.change_property(request.property, request.target, 8, _kept)
    notify(request, is_text)


_window.set_selection_owner(atom("CLIPBOARD_MANAGER"), X.CurrentTime)
_display.sync()
print("ready", flush=True)
while True:
    happened = _display.next_event()
    if happened.type == X.SelectionRequest:
        answer(happened)
