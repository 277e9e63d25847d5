// The ease curve window's handles and places in words and numbers.
#pragma once

#include "curves/EaseLayout.h"

#include <string>

namespace kv {

/// "Start key" and so on, from the string table.
std::wstring HandleName(EaseHandle handle);
/// "Time 0.250, value 0.500", with as many digits as a pixel of the layout can tell apart.
std::wstring PlaceText(const EaseLayout& layout, SKvCurvePoint place);
/// "Start key: time 0.250, value 0.500".
std::wstring HandleText(const EaseLayout& layout, EaseHandle handle, SKvCurvePoint place);

} // namespace kv
