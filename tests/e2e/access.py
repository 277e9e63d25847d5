#!/usr/bin/python3
"""Each control of the gallery as a screen reader finds and works it, over the accessibility bus.

access.py TITLER CONTROL runs one of them, access.py --list names them all.
"""

import sys

from access_gallery import Gallery, expect

CONTROLS = {}


def control(*cards):
    """Registers a test; it is called with the gallery and the controls of these cards: the enabled one of
    each, and behind it the disabled one where the gallery has one."""
    def register(function):
        CONTROLS[function.__name__] = (function, cards)
        return function
    return register


@control("CKvGradientCtrl")
def gradient(test, control, disabled):
    stops = [("slider", "Stop 1 of 4, blue", 0), ("slider", "Mid point between stops 1 and 2", 50),
             ("slider", "Stop 2 of 4, yellow", 30), ("slider", "Stop 3 of 4, red", 60),
             ("slider", "Stop 4 of 4, magenta", 100)]
    expect("control", str(control), 'panel "Gradient"')
    test.tree(control, *stops)
    _, middle, second, third, last = control.children
    expect("range", second.range, (0, 100))
    test.set(second, 45)
    test.is_described(second, "Position 45 percent")
    test.hears("CKvGradientCtrl", "WM_NOTIFY")
    test.step(third, "Decrease", 59)
    test.set(middle, 70)
    test.is_described(middle, "70 percent of the way")
    test.focus(second)
    test.key("Down", third, second)
    test.event(control, "ChildrenChanged", "remove", lambda: test.key("Delete"))
    test.is_named(last, "Stop 3 of 3, magenta")
    test.has_state(last, "focused")
    test.refuses(disabled.children[2], 45)


@control("CKvQuadGradCtrl")
def four_corners(test, control, disabled):
    expect("control", str(control), 'list "Four-corner gradient"')
    test.tree(control, ("list item", "Top left corner, red"), ("list item", "Top right corner, green"),
              ("list item", "Bottom left corner, blue"), ("list item", "Bottom right corner, magenta"))
    left, right, _, last = control.children
    expect("colour", last.description, "R 255  G 0  B 255  A 255  #FFFF00FF")
    test.event(right, "StateChanged", "focused", lambda: right.do("Press"), 1)
    test.has_state(right, "selected")
    test.has_state(left, "selected", False)
    test.hears("CKvQuadGradCtrl", "WM_NOTIFY")
    test.focus(left)
    test.key("ctrl+c")
    test.key("Right", right, left)
    test.event(right, "PropertyChange", "accessible-name", lambda: test.key("Control_L+v"))
    test.is_named(right, "Top right corner, red")
    test.refuses(disabled.children[1])


@control("CKvSolidColorTemplate")
def swatches(test, control, disabled):
    expect("control", str(control), 'list "Swatches"')
    first, second = control.children[:2]
    expect("first", str(first), 'list item "Swatch 1 of 32, red"')
    expect("last", str(control.children[-1]), 'list item "Alpha 255"')
    expect("colour", second.description, "R 16  G 235  B 16  A 255  #FF10EB10")
    test.check(control)
    second.do("Press")
    test.hears("CKvSolidColorTemplate", "WM_NOTIFY")
    test.focus(first)
    test.key("Right", second, first)
    test.key("End", control.children[-1], second)
    test.refuses(disabled.children[1])


@control("CKvColorMapWnd")
def colour_map(test, field, disabled, slider, *_):
    expect("field", str(field), 'panel "Color field"')
    test.tree(field, ("slider", "Saturation", 77), ("slider", "Brightness", 100))
    expect("slider", str(slider), 'panel "Color slider"')
    test.tree(slider, ("slider", "Hue", 216))
    saturation, brightness = field.children
    test.set(saturation, 40)
    test.is_described(saturation, "Saturation 40 %, blue")
    test.step(brightness, "Decrease", 99)
    test.hears("CKvColorMapWnd", "WM_NOTIFY")
    hue = slider.children[0]
    expect("range", hue.range, (0, 360))
    test.set(hue, 60)
    test.is_described(hue, "Hue 60°, yellow")
    test.focus(saturation)
    test.event(saturation, "PropertyChange", "accessible-value", lambda: test.key("Right"))
    test.key("Down", brightness, saturation)
    test.refuses(disabled.children[0], 40)


@control("CKvColorPanel")
def colour_panel(test, panel):
    expect("control", str(panel), 'panel "Color"')
    test.check(panel)
    parts = {str(part): part for part in panel.children}
    number, preview = parts['spin box "Green, 0 to 255"'], parts['graphic "Current color"']
    fields = parts['panel "Color field"'].children
    test.tree(parts['panel "Color field"'], ("slider", "Green", 138), ("slider", "Blue", 31))
    test.event(fields[0], "PropertyChange", "accessible-value", lambda: test.set(number, 20))
    test.is_described(preview, "red, R 255  G 20  B 31")
    test.hears("CKvColorPanel", "WM_NOTIFY")
    test.set(parts['panel "Alpha slider"'].children[0], 128)
    test.is_described(preview, "A 128")
    line = number.children[0]
    test.focus(number, line)
    test.key("Tab", parts['spin box "Blue, 0 to 255"'].children[0], line)
    blue = parts['radio button "Blue on the slider"']
    test.event(blue, "StateChanged", "checked", lambda: blue.do("Toggle"), 1)
    test.has_state(parts['radio button "Red on the slider"'], "checked", False)
    test.tree(parts['panel "Color slider"'], ("slider", "Blue", 31))
    parts['radio button "Hue, saturation, brightness"'].do("Toggle")
    test.is_named(number, "Saturation, 0 to 100")
    test.has_value(number, 92)
    swatch = parts['list "Swatches"'].children[2]
    swatch.do("Press")
    test.is_described(preview, "blue, R 16  G 16  B 235")


@control("CKvParamEdit")
def number_entry(test, number, disabled):
    expect("control", str(number), 'spin box "Length"')
    expect("range", number.range, (0, 255))
    test.tree(number, ("text", "Length"))
    test.set(number, 200)
    test.step(number, "Increase", 201)
    test.hears("CKvParamEdit", "WM_")
    line = number.children[0]
    expect("text", line.text, "201")
    test.focus(number, line)
    test.event(number, "PropertyChange", "accessible-value", lambda: test.key("Down"))
    test.has_value(number, 200)
    test.refuses(disabled, 9)


@control("CKvParamBezierWnd")
def ease_window(test, ease, disabled):
    expect("control", str(ease), 'panel "Ease curve"')
    test.tree(ease, ("slider", "Start key", 0), ("slider", "Start key's handle", 2),
              ("slider", "End key's handle", 96), ("slider", "End key", 100))
    key, handle, other, _ = ease.children
    test.set(handle, 30)
    test.is_described(handle, "Time 22.5, value 30")
    test.step(other, "Decrease", 94.6)
    test.focus(key)
    test.key("Next", handle, key)
    test.event(handle, "PropertyChange", "accessible-value", lambda: test.key("Up"))
    test.event(handle, "PropertyChange", "accessible-name", lambda: test.key("Right"))
    test.event(handle, "PropertyChange", "accessible-name", lambda: test.key("ctrl+z"))
    test.refuses(disabled.children[1], 30)


@control("CKvParamBezierCtrlDlg")
def ease_dialog(test, button):
    dialog = test.opens(button, "Parameter Curve Setup")
    test.check(dialog)
    parts = {part.name: part for part in dialog.children}
    handle = parts["Ease curve"].children[1]
    test.has_value(handle, 2)
    faster = parts["Speed Up"]
    expect("description", faster.description, "Begin slowly, end fast")
    test.event(handle, "PropertyChange", "accessible-value", lambda: faster.do("Press"))
    test.has_value(handle, 0)
    undo = parts["Undo"]
    test.has_state(undo, "enabled")
    test.event(handle, "PropertyChange", "accessible-value", lambda: undo.do("Press"))
    test.has_value(handle, 2)
    test.has_state(undo, "enabled", False)
    test.focus(handle)
    test.key("Escape")
    test.is_gone(dialog)


@control("CKvKeyFrameCtrl")
def keyframes(test, strip, disabled):
    expect("control", str(strip), 'panel "Keyframes"')
    test.tree(strip, ("check box", "Toggle Animation"), ("push button", "Go To Prev/Head KeyFrame"),
              ("check box", "Add/Remove KeyFrame"), ("push button", "Go To Next/Tail KeyFrame"))
    toggle, _, operator, following = strip.children
    following.do("Press")
    test.hears("CKvKeyFrameCtrl", "WM_NOTIFY")
    test.event(operator, "StateChanged", "checked", lambda: operator.do("Toggle"), 0)
    test.focus(operator)
    test.key("Right", following, operator)
    test.event(toggle, "StateChanged", "checked", lambda: toggle.do("Toggle"), 0)
    test.has_state(operator, "showing", False)
    test.has_state(toggle, "focused")
    test.refuses(disabled.children[0])


@control("CKvLayoutSelector")
def layout_strip(test, strip, disabled):
    expect("control", str(strip), 'list "Layouts"')
    test.check(strip)
    bar, first, second, third = strip.children[:4]
    expect("first", str(first), 'list item "Page 1, layout 1 of 40"')
    test.has_state(second, "selected")
    test.event(third, "StateChanged", "selected", lambda: third.do("Press"), 1)
    test.has_state(third, "selected")
    test.has_state(second, "selected", False)
    test.hears("CKvLayoutSelector", "WM_COMMAND")
    test.focus(first)
    test.key("Right", second, first)
    test.key("End", strip.children[-1], second)
    test.is_named(strip.children[-1], "Page 40, layout 40 of 40")
    bar.value = 0
    test.has_state(first, "showing")
    test.refuses(disabled.children[2])


@control("CKvScrollBar")
def scroll_bar(test, bar):
    expect("control", bar.role, "scroll bar")
    test.set(bar, 120)
    test.hears("CKvScrollBar", "WM_VSCROLL")
    expect("range", bar.range, (0, 300))


@control("CKvReportListCtrl")
def report_list(test, node):
    test.table(node, "Pages", ["Name", "Length"], [f"Page {page}" for page in range(1, 21)])
    first, second = node.cell(0, 0), node.cell(1, 0)
    expect("cell", node.cell(2, 1).name, "75")
    test.has_state(node.cell(2, 0), "selected")
    test.event(first, "StateChanged", "selected", lambda: first.do("Press"), 1)
    test.has_state(first, "focused")
    test.is_described(first, "Length: 25")
    test.key("Down", second, first)
    test.key("Right", node.cell(1, 1), second)
    test.edit(node, second, "Opening")


@control("CKvTextEditListCtrl")
def text_list(test, node, disabled):
    test.table(node, "Texts", [], ["NORTHERN LIGHTS", "A film in three parts\nby the harbour", "الضوء"])
    first, second = node.cell(0, 0), node.cell(1, 0)
    test.has_state(second, "selected")
    test.focus(first)
    test.key("Down", second, first)
    test.edit(node, first, "SOUTHERN LIGHTS")
    test.event(first, "PropertyChange", "accessible-name", lambda: test.key("ctrl+z"))
    test.is_named(first, "NORTHERN LIGHTS")
    test.refuses(disabled.cell(0, 0))


@control("CKvSubTitleTxtListEditor")
def subtitle_list(test, node):
    test.table(node, "Subtitles", ["SubTitle Text", "In Time Code", "Out Time Code", "Template"],
          ["The last ferry leaves at seven.", "Then we have\none hour.", "Nobody has seen him since."])
    first, second = node.cell(0, 0), node.cell(1, 0)
    expect("row", second.description,
           "Playing, In Time Code: 00:00:02:00, Out Time Code: 00:00:03:10, Template: Title")
    test.focus(first)
    test.key("Down", second, first)
    test.edit(node, node.cell(0, 1), "00:00:00:05")
    test.focus(first)
    test.is_described(first, "In Time Code: 00:00:00:05")
    test.edit(node, first, "The last train has left.")
    test.event(second, "StateChanged", "selected", lambda: second.do("Press"), 1)
    since = len(test.bus.events)
    test.event(node, "ChildrenChanged", "remove", lambda: test.key("Delete"))
    expect("size", node.table_size, (2, 4))
    expect("all cells told one by one", test.has_told(node, "ChildrenChanged", "add", since), False)


@control("CKvAppLogListCtrl")
def log_list(test, node):
    test.table(node, "Log", ["Type", "Level", "Time", "Content"],
          ["Message", "Important", "Warning", "Error"])
    first, second = node.cell(0, 0), node.cell(1, 0)
    test.event(first, "StateChanged", "selected", lambda: first.do("Press"), 1)
    test.has_state(first, "focused")
    test.is_described(first, "Content: Page 0")
    test.key("Down", second, first)
    count = node.child_count
    test.key("ctrl+f")
    find = test.bus.until("the find bar", lambda: test.text_of(node))
    test.has_state(find, "focused")
    expect("name", find.name, "Find")
    expect("children", node.child_count, count + 1)
    test.event(node.cell(3, 0), "StateChanged", "selected", lambda: find.write("Page 3"), 1)
    test.has_state(node.cell(3, 0), "selected")
    test.check(find.parent)
    test.key("Escape", node.cell(3, 0), find)


@control("CKvRibbonTitlebar")
def title_bar(test, bar):
    expect("control", str(bar), 'page tab list "titler"')
    test.tree(bar, ("push button", "titler"), ("push button", "Close"), ("push button", "Maximize"),
              ("push button", "Minimize"), ("push button", "AppMenu"), ("page tab", "Design"),
              ("page tab", "Animate"), ("page tab", "Log"), ("label", "titler – Harbour"))
    design, animate, log = bar.children[5:8]
    test.has_state(design, "selected")
    test.event(animate, "StateChanged", "selected", lambda: animate.do("Press"), 1)
    test.has_state(design, "selected", False)
    test.focus(animate)
    test.key("Right", log, animate)
    test.key("Right", bar.children[4], log)
    test.key("Home", bar.children[0])
    test.key("Escape")
    test.has_state(bar.children[0], "focused", False)


@control("CKvRibbonMenuBar")
def menu_bar(test, bar):
    expect("control", str(bar), 'menu bar "titler"')
    test.tree(bar, ("push button", "titler"), ("push button", "Close"), ("push button", "Maximize"),
              ("push button", "Minimize"), ("push button", "AppMenu"), ("menu item", "File"),
              ("menu item", "Edit"), ("menu item", "View"), ("label", "titler – Harbour"))
    file, edit_item = bar.children[5:7]
    test.focus(file)
    test.key("Right", edit_item, file)
    edit_item.do("Press")
    test.has_state(edit_item, "expanded")
    entry = test.finds_focused("Down", 'menu item "Open"')
    expect("popup", entry.parent.role, "popup menu")
    test.key("Escape", edit_item)
    test.has_state(edit_item, "expanded", False)


@control("CKvCharMapPreviewWnd")
def character_grid(test, grid):
    expect("control", str(grid), 'list "Characters"')
    test.check(grid)
    letter = next(child for child in grid.children if child.name == "U+0041 LATIN CAPITAL LETTER A")
    following = grid.child(letter.index + 1)
    test.focus(letter)
    test.has_state(letter, "selected")
    test.key("Right", following, letter)
    following.do("Press")
    test.hears("CKvCharMapPreviewWnd", "WM_COMMAND")
    test.key("End", grid.child(grid.child_count - 1), following)


@control("CKvCharMapDlg")
def character_map(test, button):
    dialog = test.opens(button, "Character Map")
    test.check(dialog)
    parts = {str(part): part for part in dialog.children}
    search = parts['text "Search by name, code or character"']
    test.has_state(search, "focused")
    search.write("U+E9")
    name = "U+00E9 LATIN SMALL LETTER E WITH ACUTE"
    test.bus.until("the label", lambda: any(child.name.startswith(name) for child in dialog.children))
    selected = next(child for child in parts['list "Characters"'].children if child.name == name)
    test.has_state(selected, "selected")
    favourite, favourites = parts['check box "Favorite"'], parts['list "Favorites:"']
    test.event(favourites, "ChildrenChanged", "add", lambda: favourite.do("Toggle"))
    test.tree(favourites, ("list item", name))
    test.has_state(favourite, "checked")
    parts['push button "Collect"'].do("Press")
    test.bus.until("the line", lambda: parts['text "Collected:"'].text == "é")
    test.focus(selected)
    test.key("Right", parts['list "Characters"'].child(selected.index + 1), selected)
    test.key("Escape")
    test.is_gone(dialog)


@control("CKvFindReplaceTxtDlg")
def find_dialog(test, button):
    dialog = test.opens(button, "Find and Replace")
    test.check(dialog)
    parts = {str(part): part for part in dialog.children}
    text = parts['text "Find what:"']
    test.has_state(text, "focused")
    text.write("harbour")
    expect("text", text.text, "harbour")
    case = parts['check box "Match case"']
    test.event(case, "StateChanged", "checked", lambda: case.do("Toggle"), 1)
    expect("description", parts['push button "Find Next"'].description, "Go to the next place (Enter or F3)")
    test.key("Tab", parts['text "Replace with:"'], text)
    test.key("Escape")
    test.is_gone(dialog)


@control("CKvButton", "CKvBitmapButton", "CKvRadioBitmapButton")
def buttons(test, button, disabled, picture, disabled_picture, radio, disabled_radio):
    expect("text button", str(button), 'push button "Take the last change back"')
    expect("picture button", str(picture), 'push button "Save the project"')
    expect("radio button", str(radio), 'radio button "Red"')
    button.do("Press")
    test.hears("CKvButton", "WM_COMMAND")
    radio.do("Toggle")  # its owner says what is checked
    test.hears("CKvRadioBitmapButton", "WM_COMMAND")
    test.focus(button)
    test.key("Tab", picture, button)
    test.key("space")
    test.hears("CKvBitmapButton", "WM_COMMAND")
    for other in disabled, disabled_picture, disabled_radio:
        test.refuses(other)


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
