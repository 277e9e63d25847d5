"""Lists, and what scrolls."""

from access_gallery import control, expect


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
    test.refuses(*disabled.children[1:4])


@control("CKvScrollBar")
def scroll_bar(test, bar, disabled):
    expect("control", str(bar), 'scroll bar ""')  # its host may name it
    expect("range", bar.range, (0, 300))
    test.set(bar, 120)
    test.hears("CKvScrollBar", "WM_VSCROLL")
    test.step(bar, "Increase", 121)
    test.step(bar, "Decrease", 120)
    expect("takes the focus", "focusable" in bar.states or "SetFocus" in bar.actions, False)
    test.refuses(disabled)


@control("CKvReportListCtrl")
def report_list(test, node, disabled):
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
    test.hears("CKvReportListCtrl", "SelectionEdited")
    test.refuses(disabled.cell(0, 0), disabled.cell(2, 1))


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
    test.hears("CKvTextEditListCtrl", "TextEdited")
    test.refuses(disabled.cell(0, 0))


@control("CKvSubTitleTxtListEditor")
def subtitle_list(test, node, disabled):
    test.table(node, "Subtitles", ["SubTitle Text", "In Time Code", "Out Time Code", "Template"],
          ["The last ferry leaves at seven.", "Then we have\none hour.", "Nobody has seen him since."])
    first, second = node.cell(0, 0), node.cell(1, 0)
    expect("row", second.description,
           "Playing, In Time Code: 00:00:02:00, Out Time Code: 00:00:03:10, Template: Title")
    test.focus(first)
    test.key("Down", second, first)
    test.edit(node, node.cell(0, 1), "00:00:00:05")
    test.hears("CKvSubTitleTxtListEditor", "TimeCodeEdited")
    test.focus(first)
    test.is_described(first, "In Time Code: 00:00:00:05")
    test.edit(node, first, "The last train has left.")
    test.hears("CKvSubTitleTxtListEditor", "TextEdited")
    test.event(second, "StateChanged", "selected", lambda: second.do("Press"), 1)
    since = len(test.bus.events)
    test.event(node, "ChildrenChanged", "remove", lambda: test.key("Delete"))
    expect("size", node.table_size, (2, 4))
    expect("all cells told one by one", test.has_told(node, "ChildrenChanged", "add", since), False)
    test.hears("CKvSubTitleTxtListEditor", "RowsEdited")
    test.refuses(disabled.cell(0, 0), disabled.cell(0, 1))


@control("CKvAppLogListCtrl")
def log_list(test, node, disabled):
    test.table(node, "Log", ["Type", "Level", "Time", "Content"],
          ["Message", "Important", "Warning", "Error"])
    first, second = node.cell(0, 0), node.cell(1, 0)
    test.event(first, "StateChanged", "selected", lambda: first.do("Press"), 1)
    test.has_state(first, "focused")
    test.is_described(first, "Content: Page 0")
    test.hears("CKvAppLogListCtrl", "SelectionEdited")
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
    test.refuses(disabled.cell(0, 0))
