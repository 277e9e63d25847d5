#!/usr/bin/python3
"""Each control of the gallery as a screen reader finds and works it, over the accessibility bus.

access.py TITLER CONTROL runs one of them, access.py --list names them all.
"""

import sys

import access_colours  # noqa: F401
import access_lists  # noqa: F401
import access_tools  # noqa: F401
from access_gallery import CONTROLS, Gallery, control, expect


@control()
def every_control(test):
    """Whoever adds a control to the gallery adds its test."""
    tested = {card for _, cards in CONTROLS.values() for card in cards}
    expect("cards that only the gallery or only the tests have", test.card_names() ^ tested, set())


def main(arguments):
    if arguments == ["--list"]:
        print("\n".join(CONTROLS))
        return 0
    program, name = arguments
    test = Gallery(program)
    function, cards = CONTROLS[name]
    controls = [part for card in cards for parts in test.cards(card) for part in parts]
    try:
        function(test, *controls)
        test.quit()
    except Exception:
        shown = [window for window in test.application.children if window != test.window] + controls
        print("Events:", *test.bus.events[-40:], *(line for node in shown for line in node.lines()), sep="\n",
              file=sys.stderr)
        test.kill()
        raise
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
