"""Reads and edits the text boxes of the program "qt_accessible", and follows their events."""

import sys
import time

import pyatspi
from gi.repository import GLib

PATIENCE = 30  # seconds, for a busy machine
context = GLib.MainContext.default()
events = []


def wait_for(condition, what):
    """What the condition gives as soon as that is something."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        while context.iteration(False):
            pass
        found = condition()
        if found:
            return found
        time.sleep(0.02)
    sys.exit(f"{what}: not seen. Events: {events}")


def expect(actual, expected):
    if actual != expected:
        sys.exit(f"{actual!r} instead of {expected!r}")


def program():
    for found in pyatspi.Registry.getDesktop(0):
        if found and found.name == "qt_accessible" and found.childCount:
            return found
    return None


def find(role, name):
    """A part of the program's window by its role and name."""
    return wait_for(
        lambda: pyatspi.findDescendant(
            program(), lambda part: part.getRoleName() == role and part.name == name
        ),
        f"{role} {name}",
    )


def states(part):
    return {pyatspi.stateToString(state) for state in part.getState().getStates()}


def texts(part):
    return part.queryText().getText(0, -1)


def formats(part, offset):
    attributes, start, end = part.queryText().getAttributes(offset)
    return dict(pair.split(":", 1) for pair in attributes.split(";")), start, end


def expect_event(kind, text):
    wait_for(lambda: (kind, text) in events, f"{kind} {text!r}")
    events.clear()


wait_for(program, "the program")
letter = find("text", "Letter")
subject = find("text", "Subject")
notes = find("text", "Notes")
pyatspi.Registry.registerEventListener(
    lambda event: events.append((event.type.split(":system")[0].rstrip(":"), str(event.any_data))),
    "object:text-changed",
)
pyatspi.Registry.registerEventListener(
    lambda event: events.append(("caret", event.detail1)), "object:text-caret-moved"
)

# What there is: once each, and the box that is not shown not at all.
expect(letter.parent.getRoleName(), "panel")
expect(letter.parent.childCount, 1)
expect(states(letter) & {"multi line", "editable", "read only"}, {"multi line", "editable"})
expect(states(subject) & {"multi line", "editable", "read only"}, {"editable"})
expect(states(notes) & {"multi line", "editable", "read only"}, {"multi line", "read only"})
expect(subject.description, "What it is about")
relation = letter.getRelationSet()[0]
expect(relation.getRelationType(), pyatspi.RELATION_LABELLED_BY)
expect(relation.getTarget(0).getRoleName(), "label")

# Text, formats, places.
expect(texts(letter), "plain bold red\nmore")
plain, start, end = formats(letter, 0)
expect((start, end), (0, 6))
expect((plain["family-name"].strip('"'), plain["size"]), ("Liberation Serif", "12"))
expect((plain.get("weight", "400"), plain["style"]), ("400", "normal"))
bold, start, end = formats(letter, 7)
expect((bold["weight"], start, end), ("700", 6, 10))
red, start, end = formats(letter, 12)
expect((red["fg-color"], start, end), ("238,0,0", 11, 14))  # as it is shown on white
text = letter.queryText()
place = text.getCharacterExtents(6, pyatspi.DESKTOP_COORDS)
expect(
    text.getOffsetAtPoint(place[0] + 1, place[1] + place[3] // 2, pyatspi.DESKTOP_COORDS), 6
)

# Caret and selection.
text.setCaretOffset(6)
expect_event("caret", 6)
expect(text.caretOffset, 6)
text.addSelection(6, 10)
wait_for(lambda: text.getNSelections() == 1, "a selection")
expect(text.getSelection(0), (6, 10))

# An action of the tool bar, on what is selected.
bar = pyatspi.findDescendant(program(), lambda part: part.getRoleName() == "tool bar")
button = pyatspi.findDescendant(bar, lambda part: part.name == "Italic")
action = button.queryAction()
names = [action.getName(i) for i in range(action.nActions)]
action.doAction(next(i for i, name in enumerate(names) if name in ("Toggle", "Press")))
wait_for(lambda: formats(letter, 7)[0]["style"] == "italic", "italic text")
text.removeSelection(0)

# Edits.
edits = letter.queryEditableText()
events.clear()
edits.insertText(0, "ab ", 3)
expect_event("object:text-changed:insert", "ab ")
expect(texts(letter), "ab plain bold red\nmore")
edits.deleteText(3, 9)
expect_event("object:text-changed:delete", " " * 6)  # Qt no longer knows what it was
expect(texts(letter), "ab bold red\nmore")
expect(formats(letter, 4)[0]["weight"], "700")
edits.setTextContents("a\nb")
wait_for(lambda: texts(letter) == "a\nb", "the new text")

# A single line takes no second one, and what is read-only no edit at all.
edits = subject.queryEditableText()
edits.insertText(0, "x\ny", 3)
edits.insertText(0, "tea", 3)
wait_for(lambda: texts(subject) == "tea", "one line")
edits = notes.queryEditableText()
edits.insertText(0, "no", 2)
edits.deleteText(0, 2)
edits.setTextContents("other")
expect(texts(notes), "fixed")
subject.queryEditableText().insertText(3, "!", 1)
wait_for(lambda: texts(subject) == "tea!", "the last edit")
expect(texts(notes), "fixed")
