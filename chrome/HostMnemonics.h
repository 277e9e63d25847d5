// The letters and digits that the widgets and shortcuts of a window answer to together with Alt.
#pragma once

#include <string>

class QWidget;

namespace kv {

/// "A" to "Z" and "0" to "9", as visible labels with a buddy, buttons, group boxes, tabs, menu bars, actions
/// and shortcuts of the window hold them, disabled ones too: what they hold is not to change its meaning.
std::wstring HostMnemonics(const QWidget& window);

} // namespace kv
