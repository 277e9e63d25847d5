// Finding a text within a text in any case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kv {

/// A text in its simple Unicode case folding, of the same length. What is no character stays as it is.
std::wstring FoldText(std::wstring_view text);

/// Where a folded text stands in another in any case. @param folded from FoldText; not empty.
/// @param from where the search begins. @return its place in wchar_ts; std::wstring_view::npos when it is
/// not there.
std::size_t FindFolded(std::wstring_view text, std::wstring_view folded, std::size_t from);

} // namespace kv
