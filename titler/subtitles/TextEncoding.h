// The encodings in which text files are met. Names are those of the converters: "UTF-8", "windows-1256".
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace titler {

/// The encoding that the bytes themselves tell: by a byte order mark UTF-8, UTF-16LE or UTF-16BE; UTF-16
/// without one, when the first character has a zero byte as every digit and letter of ASCII has; UTF-8, when
/// they are sound UTF-8. @return empty when only the user can say.
std::string DetectEncoding(std::string_view bytes);

/// The likeliest encoding of a text without any sign, as a first choice for the user. @return empty without
/// one.
std::string GuessEncoding(std::string_view bytes);

/// The older code pages that are still met, for the user to choose from, by name.
std::span<const char* const> CodePages();

struct ConvertedText
{
    std::string bytes;
    std::size_t replaced; ///< characters that could not be converted and became U+FFFD (a "?" in a code page)
};

/// UTF-8 of bytes in that encoding, without a byte order mark.
/// @return nothing for an unknown encoding and for more than a gigabyte.
std::optional<ConvertedText> DecodeText(std::string_view bytes, const std::string& encoding);

/// The bytes of UTF-8 in that encoding, without a byte order mark; nothing as with DecodeText.
std::optional<ConvertedText> EncodeText(std::string_view utf8, const std::string& encoding);

} // namespace titler
