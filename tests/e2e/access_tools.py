"""Caption bars, characters, dialogs and buttons."""

from access_gallery import control, expect


@control("CKvRibbonTitlebar")
def title_bar(test, bar, disabled):
    expect("control", str(bar), 'page tab list "titler"')
    test.tree(bar, ("push button", "titler"), ("push button", "Close"), ("push button", "Maximize"),
              ("push button", "Minimize"), ("push button", "AppMenu"), ("page tab", "Design"),
              ("page tab", "Animate"), ("page tab", "Log"), ("label", "titler – Harbour"))
    design, animate, log = bar.children[5:8]
    test.has_state(design, "selected")
    test.event(animate, "StateChanged", "selected", lambda: animate.do("Press"), 1)
    test.has_state(design, "selected", False)
    test.hears("CKvRibbonTitlebar", "RibbonItemSelected")
    test.focus(animate)
    test.key("Right", log, animate)
    test.key("Right", bar.children[4], log)
    test.key("Home", bar.children[0])
    test.key("Escape")
    test.has_state(bar.children[0], "focused", False)
    test.refuses(*disabled.children)


@control("CKvRibbonMenuBar")
def menu_bar(test, bar, disabled):
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
    edit_item.do("Press")
    test.finds_focused("Down", 'menu item "Open"')
    test.key("Return")
    test.hears("CKvRibbonMenuBar", "triggered")
    test.refuses(*disabled.children)


@control("CKvCharMapPreviewWnd")
def character_grid(test, grid, disabled):
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
    test.refuses(disabled.child(letter.index), disabled.child(following.index))


@control("CKvCharMapDlg")
def character_map(test, button):
    with test.dialog(button, "Character Map") as (dialog, parts):
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


@control("CKvFindReplaceTxtDlg")
def find_dialog(test, button):
    with test.dialog(button, "Find and Replace") as (_, parts):
        text = parts['text "Find what:"']
        test.has_state(text, "focused")
        text.write("harbour")
        expect("text", text.text, "harbour")
        case = parts['check box "Match case"']
        test.event(case, "StateChanged", "checked", lambda: case.do("Toggle"), 1)
        expect("description", parts['push button "Find Next"'].description, "Go to the next place (Enter or F3)")
        test.key("Tab", parts['text "Replace with:"'], text)
        parts['push button "Find Next"'].do("Press")
        test.hears("CKvFindReplaceTxtDlg", "Find")


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
    test.refuses(disabled, disabled_picture, disabled_radio)
