#!/usr/bin/env bash
# designer.sh [BUILD] [PICTURE]: opens the form of all controls in Qt Designer, on a display of its own, with the
# plugin of a build (build/release), and keeps a picture of it (docs/images/designer.png).
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$(realpath "${1:-$here/build/release}")
picture=$(realpath -m "${2:-$here/docs/images/designer.png}")
source "$here/cmake/setup.sh"
need "${packages_test[@]}" "${packages_run[@]}" designer-qt6 imagemagick
screen=1920x1080 # the form fits beside Designer's own windows
source "$here/tests/e2e/display.sh"

[ -e "$build/lib/designer/libKvGuiAdvCtrlsDesigner.so" ] || fail "$build has no plugin"
mkdir -p "$XDG_CONFIG_HOME/QtProject" # the toolkit's own widgets stand folded, above ours
cat >"$XDG_CONFIG_HOME/QtProject/Designer.conf" <<'END'
[WidgetBox]
Closed%20categories=Layouts, Spacers, Buttons, Item Views (Model-Based), Item Widgets (Item-Based), Containers, Input Widgets, Display Widgets
END
QT_PLUGIN_PATH=$build/lib start designer /usr/lib/qt6/bin/designer "$here/tests/designer/all.ui"
window=$(focus 'Qt Designer')
xdotool windowsize --sync "$window" 1918 1056
sleep 5 # until it has drawn: it tells nobody
if xdotool search --onlyvisible --name 'Designer - '; then fail "Designer has complaints"; fi
# The form goes to where it is seen as a whole.
xdotool mousemove 600 95 mousedown 1 mousemove 640 95 mousemove 955 95 mouseup 1
sleep 1
xdotool mousemove 480 360 click 1 # the gradient is selected
sleep 1
xdotool mousemove 1460 700 click 1 key End # its own properties are in view
sleep 1
import -window root "$picture"
