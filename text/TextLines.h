// Texts of several lines: where they break, and a block of text as rows. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// The lines of a text, which end at "\r\n", "\r" or "\n". A break at the very end begins no further line; an
/// empty text has none.
std::vector<std::wstring> SplitLines(std::wstring_view text);

/// Up to the first break.
std::wstring FirstLine(std::wstring_view text);

/// One below the other, without a break after the last.
std::wstring JoinLines(const std::vector<std::wstring>& lines);

} // namespace kv
