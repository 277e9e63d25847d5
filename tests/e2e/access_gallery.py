"""The program with all controls, and what a user with a screen reader does there."""

import subprocess
from contextlib import contextmanager

from access_bus import PATIENCE, Bus, Failure, Node

UNNAMED = ("scroll bar", "filler", "cell")  # by the toolkit; without a text
LOOKED_AT = 40  # parts of a control: a list may have thousands
CONTROLS = {}


def control(*cards):
    """Registers a test; it is called with the gallery and the controls of these cards: the enabled one of
    each, and behind it the disabled one where the gallery has one."""
    def register(function):
        CONTROLS[function.__name__] = (function, cards)
        return function
    return register


def expect(what, found, wanted):
    if found != wanted:
        raise Failure(f"{what}: {found!r} instead of {wanted!r}")


class Gallery:
    """The program with all controls, and what a user does to them."""

    def __init__(self, program):
        self.bus = Bus()
        self.process = subprocess.Popen([program, "--gallery", "--size", "1500x900"])
        self.application = self.bus.application("titler")
        self.window = self.window_named("Gallery of controls")
        self.told = self.window.children[-1]

    def window_named(self, name):
        """A window of that name, once it is the active one."""
        def find():
            return next((window for window in self.application.children
                         if window.name == name and "active" in window.states), None)
        return self.bus.until(f"window {name}", find)

    def is_gone(self, window):
        """Waits until a window is hidden or deleted."""
        def gone():
            return not any(child == window and "showing" in child.states
                           for child in self.application.children)
        self.bus.until("the window to go", gone)

    def cards(self, name, node=None):
        """The controls below each label of that name."""
        children = (node or self.window).children
        if children and str(children[0]) == f'label "{name}"':
            yield children[1:]
            return
        for child in children:
            if child.role == "filler":
                yield from self.cards(name, child)

    def card_names(self, node=None):
        """What stands above the controls, on all cards."""
        children = (node or self.window).children
        names = {child.name for child in children[:1] if child.role == "label" and child.name.startswith("CKv")}
        return names.union(*(self.card_names(child) for child in children if child.role == "filler"))

    def hears(self, name, message):
        """Waits until the gallery says that a control told its host something."""
        text = f"{name} told: {message},"
        self.bus.until(f"{text!r}, not {self.told.name!r}", lambda: self.told.name.startswith(text))

    def tree(self, node, *rows):
        """The children: role and name, and the value of those that have one."""
        found = [(child.role, child.name, *([child.value] if "Value" in child.interfaces else []))
                 for child in node.children]
        expect(f"children of {node}", found, list(rows))
        self.check(node)

    def check(self, node):
        """What holds for all parts at all times."""
        left, top, width, height = node.extents
        for index, child in enumerate(node.children[:LOOKED_AT]):
            expect(f"parent of {child}", child.parent, node)
            expect(f"place of {child}", child.index, index)
            states = child.states
            if "showing" in states:
                x, y, w, h = child.extents
                if w < 1 or h < 1 or x < left or y < top or x + w > left + width or y + h > top + height:
                    raise Failure(f"{child} at {child.extents} is not inside of {node.extents}")
            if not child.name and child.role not in UNNAMED:
                raise Failure(f"a {child.role} of {node} has no name")
            if "Action" in child.interfaces and "SetFocus" in child.actions and "focusable" not in states:
                raise Failure(f"{child} takes the focus and does not say so")

    def event(self, node, kind, detail, action, value=None):
        """Does something and waits for the event that it brings."""
        since = len(self.bus.events)
        action()

        def matches(event):
            return (event.path == node.path and event.kind == kind and event.detail == detail and
                    (value is None or event.value == value))
        return self.bus.event(since, f"{kind}:{detail} of {node}", matches)

    def has_told(self, node, kind, detail, since):
        """Whether such an event has come since."""
        return any((event.path, event.kind, event.detail) == (node.path, kind, detail)
                   for event in self.bus.events[since:])

    def set(self, part, number):
        """Sets a value as a reader does, and hears of it."""
        def assign():
            part.value = number
        self.event(part, "PropertyChange", "accessible-value", assign)
        self.has_value(part, number)

    def has_value(self, part, number):
        self.bus.until(f"value {number} of {part}, which is {part.value}",
                       lambda: abs(part.value - number) < 0.01)

    def step(self, part, action, number):
        """Increases or decreases, and hears of it."""
        self.event(part, "PropertyChange", "accessible-value", lambda: part.do(action))
        self.has_value(part, number)

    def is_named(self, part, name):
        self.bus.until(f"name {name!r} of {part}", lambda: part.name == name)

    def is_described(self, part, text):
        self.bus.until(f"description {text!r} of {part}, which is {part.description!r}",
                       lambda: text in part.description)

    def has_state(self, part, state, has=True):
        self.bus.until(f"{part} {'' if has else 'not '}{state}", lambda: (state in part.states) == has)

    def focus(self, part, taker=None):
        """Puts the focus on a part; another one may take it in its place."""
        self.event(taker or part, "StateChanged", "focused", part.grab_focus, 1)
        self.has_state(taker or part, "focused")

    def key(self, keys, part=None, before=None):
        """Presses keys. The focus goes to a part and leaves the one that had it."""
        def press():
            subprocess.run(["xdotool", "key", *keys.split()], check=True)
        if not part:
            press()
            return
        self.event(part, "StateChanged", "focused", press, 1)
        self.has_state(part, "focused")
        if before:
            self.has_state(before, "focused", False)
        self.has_state(part.parent, "focused", False)

    def finds_focused(self, keys, wanted):
        """Presses keys and finds what gets the focus by its event alone, as a popup stands in no tree."""
        since = len(self.bus.events)
        self.key(keys)

        def node(event):
            return Node(self.bus, self.application.owner, event.path)
        event = self.bus.event(since, f"focus on {wanted}", lambda event: event.detail == "focused" and
                               event.value == 1 and str(node(event)) == wanted)
        return node(event)

    @contextmanager
    def dialog(self, button, name):
        """A dialog, opened by its button, and its parts by role and name; Escape leaves it."""
        button.do("Press")
        dialog = self.window_named(name)
        self.check(dialog)
        yield dialog, {str(part): part for part in dialog.children}
        self.key("Escape")
        self.is_gone(dialog)

    def table(self, node, name, headers, rows):
        """A list as a table: its size and what stands in the first column."""
        expect("control", str(node), f'table "{name}"')
        expect("size", node.table_size, (len(rows), max(1, len(headers))))
        expect("headers", [child.name for child in node.children if child.role == "column header"], headers)
        expect("cells", [node.cell(row, 0).name for row in range(len(rows))], rows)
        self.check(node)

    def text_of(self, node):
        """The text that is edited in a list: it stands before the cells, in a frame of its own."""
        return next((part for child in node.children[:9] if child.role in ("filler", "panel")
                     for part in child.children if part.role == "text"), None)

    def edit(self, node, cell, text):
        """Opens a cell, writes and commits."""
        count = node.child_count
        cell.do("edit")
        editor = self.bus.until("the editor", lambda: node.child_count > count and self.text_of(node))
        self.has_state(editor, "focused")
        editor.write(text)
        expect("text", editor.text, text)
        self.event(cell, "PropertyChange", "accessible-name", lambda: self.key("Return"))
        self.is_named(cell, text)

    def refuses(self, *parts):
        """Parts of a disabled control can be read, and nothing can be done to them."""
        for part in parts:
            if {"enabled", "sensitive"} & part.states:
                raise Failure(f"{part} is not disabled")
            has_value = "Value" in part.interfaces

            def reading():
                return (part.name, part.description, part.value if has_value else None, part.states,
                        part.parent.child_count, self.told.name)
            before = reading()
            for action in part.actions if "Action" in part.interfaces else ():
                part.do(action)  # one at a time: Decrease takes Increase back
                expect(f"the disabled {part} after {action}", reading(), before)
            for number in part.range if has_value else ():
                part.value = number
                expect(f"the disabled {part} after its value was set", reading(), before)

    def quit(self):
        """Ends the program as a user does: what goes then is told to the reader, too."""
        self.window_named(self.window.name)
        self.key("ctrl+q")
        expect("exit status", self.process.wait(PATIENCE), 0)

    def kill(self):
        """After a failure."""
        self.process.kill()
        self.process.wait()
