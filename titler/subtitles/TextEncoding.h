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

/// The likeliest of `Encodings()` for a text without any sign, as a first choice for the user: UTF-8 when
/// nearly all of it is sound, UTF-16 by a zero byte in the first character, what statistics say, else
/// windows-1252.
std::string GuessEncoding(std::string_view bytes);

/// The encodings that the user can choose from, by name: Unicode's and the older code pages that are still
/// met.
std::span<const char* const> Encodings();

/// Whether a converter has that name; upper and lower case and hyphens do not count.
bool IsEncoding(const std::string& name);

struct ConvertedText
{
    std::string bytes;
    std::size_t replaced; ///< characters that could not be converted and became U+FFFD (a "?" in a code page)
    std::size_t firstLine; ///< of the first of them when decoding, from 1; else 0
};

/// UTF-8 of bytes in that encoding, without a byte order mark.
/// @return nothing for an unknown encoding and for more than a gigabyte.
std::optional<ConvertedText> DecodeText(std::string_view bytes, const std::string& encoding);

/// How a file has its text; enough to write it as it was.
struct TextForm
{
    std::string encoding = "UTF-8";
    bool hasMark = false; ///< a byte order mark
    std::string lineEnd = "\n";

    friend bool operator==(const TextForm&, const TextForm&) = default;
};

/// @param text what the bytes are in UTF-8; its line ends count, the most frequent one wins.
TextForm TextFormOf(std::string_view bytes, const std::string& encoding, std::string_view text);

/// A file's bytes in that form, from UTF-8 with "\n" as line end. An encoding that cannot hold all characters
/// becomes UTF-8, also in `form`.
std::string EncodeFile(std::string_view utf8, TextForm& form);

/// The first character that an encoding cannot hold; empty when it holds all, and for an unknown encoding.
std::string FirstNotIn(std::string_view utf8, const std::string& encoding);

/// The bytes of UTF-8 in that encoding, without a byte order mark; nothing as with DecodeText.
std::optional<ConvertedText> EncodeText(std::string_view utf8, const std::string& encoding);

} // namespace titler
