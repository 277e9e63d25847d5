"""Colours and curves."""

from access_gallery import control, expect


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
    test.refuses(*disabled.children)


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
    test.refuses(*disabled.children)


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
    test.refuses(*disabled.children[:3])


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
    test.refuses(*disabled.children)


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
    test.hears("CKvParamEdit", "WM_NOTIFY")
    line = number.children[0]
    expect("text", line.text, "201")
    test.focus(number, line)
    test.event(number, "PropertyChange", "accessible-value", lambda: test.key("Down"))
    test.has_value(number, 200)
    test.refuses(disabled)


@control("CKvParamBezierWnd")
def ease_window(test, ease, disabled):
    expect("control", str(ease), 'panel "Ease curve"')
    test.tree(ease, ("slider", "Start key", 0), ("slider", "Start key's handle", 2),
              ("slider", "End key's handle", 96), ("slider", "End key", 100))
    key, handle, other, _ = ease.children
    test.set(handle, 30)
    test.is_described(handle, "Time 22.5, value 30")
    test.step(other, "Decrease", 94.6)
    test.hears("CKvParamBezierWnd", "CurveChanged")
    test.focus(key)
    test.key("Next", handle, key)
    test.event(handle, "PropertyChange", "accessible-value", lambda: test.key("Up"))
    test.event(handle, "PropertyChange", "accessible-name", lambda: test.key("Right"))
    test.event(handle, "PropertyChange", "accessible-name", lambda: test.key("ctrl+z"))
    test.refuses(*disabled.children)


@control("CKvParamBezierCtrlDlg")
def ease_dialog(test, button):
    with test.dialog(button, "Parameter Curve Setup") as (_, parts):
        handle = parts['panel "Ease curve"'].children[1]
        test.has_value(handle, 2)
        faster = parts['push button "Speed Up"']
        expect("description", faster.description, "Begin slowly, end fast")
        test.event(handle, "PropertyChange", "accessible-value", lambda: faster.do("Press"))
        test.has_value(handle, 0)
        test.hears("CKvParamBezierCtrlDlg", "SetEaseData")
        undo = parts['push button "Undo"']
        test.has_state(undo, "enabled")
        test.event(handle, "PropertyChange", "accessible-value", lambda: undo.do("Press"))
        test.has_value(handle, 2)
        test.has_state(undo, "enabled", False)
        test.focus(handle)
    test.hears("CKvParamBezierCtrlDlg", "CancelEdit")


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
    test.refuses(*disabled.children)
