// Wildcard comparison of file names.
#pragma once

#include <string_view>

namespace kv {

/// Simple Unicode case folding of one code point; characters without one come back unchanged.
char32_t FoldCase(char32_t character);

/// True when the whole name fits the specification: `*` is any run, `?` one character, the comparison
/// ignores case (simple Unicode case folding). Takes at most name × specification steps.
bool FitsWildcard(std::wstring_view name, std::wstring_view specification);

} // namespace kv
