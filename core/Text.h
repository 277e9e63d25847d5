// Conversions and substitutions that do not depend on the process locale.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kv {

/// UTF-8 of a wide text (UTF-16 or UTF-32 by the platform's wchar_t). What is no character (a lone
/// surrogate, a value above U+10FFFF) becomes U+FFFD.
std::string ToUtf8(std::wstring_view text);

/// Wide text of UTF-8 bytes. Each byte sequence that is no UTF-8 becomes U+FFFD.
std::wstring FromUtf8(std::string_view bytes);

/// Wide text of a file name's bytes, without loss: a byte that is no UTF-8 becomes the lone surrogate
/// U+DC80 … U+DCFF, which ToFileName turns into that byte again.
std::wstring FromFileName(std::string_view bytes);

/// The bytes of a wide file name or path, the inverse of FromFileName. Every other lone surrogate becomes
/// U+FFFD.
std::string ToFileName(std::wstring_view name);

/// Fills the placeholders %s, %d and %.1f (and %% for a percent sign) of a table text in order; a translation
/// that needs another order names the argument, counted from 1: %2$s, %1$d, %3$.1f. The text may come from an
/// overlay file, so it never reaches printf: every other "%" and placeholders beyond the arguments stand as
/// they are, arguments beyond the placeholders are left out.
std::wstring FillText(std::wstring_view text, std::initializer_list<std::wstring_view> arguments);

/// Decimal text of a number, with `decimals` digits after "." when it is a floating-point one.
std::wstring NumberText(std::int64_t value);
std::wstring NumberText(double value, int decimals);

} // namespace kv
