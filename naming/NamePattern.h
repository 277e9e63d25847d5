// The pattern engine: reads names with naming patterns and derives the specifications of their siblings.
//
// A pattern is literal text with the labels <File>, <Number> and <Ext>; any other text between "<" and ">" is
// literal. A name is cut at the literal runs, each at its first occurrence, and what stands between two of
// them holds the values of the labels there:
//
//   <File>_A<Number><Ext>   my_A_clip_A01.wav   →   <File> = my_A_clip, <Number> = 01, <Ext> = .wav
//
// Nothing here goes back to try another cut, so reading a name takes time in its length only.
#pragma once

#include "KvFileNaming.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// What a pattern consists of. The labels have the numbers that a label value list stores.
enum class TokenKind : std::uint16_t
{
    File = 0,   ///< the base part of the name
    Number = 1, ///< a run of decimal digits
    Ext = 2,    ///< the extension with its leading "."
    Literal = 0xFFFF,
};

/// The wildcard that stands for a label: "*" or, for <Ext>, ".*"; empty for any other kind.
std::wstring_view WildcardPiece(TokenKind kind);

/// A label or a literal run: a place in the pattern's text.
struct PatternToken
{
    TokenKind kind;
    std::size_t begin;
    std::size_t length;
};

/// What a label stands for in a name; `text` is a view into that name.
struct NameValue
{
    TokenKind kind = TokenKind::File;
    std::wstring_view text;
};

/// The values of a name's labels in pattern order, in place: filling it never allocates. Meant to be reused.
class NameValues
{
public:
    /// As many labels as a pattern of full length can hold: the shortest one is <Ext>.
    static constexpr std::size_t kCapacity = (kKvNamingTextSize - 1) / 5;

    void Clear() { m_size = 0; }
    void Add(TokenKind kind, std::wstring_view text) { m_values[m_size++] = {kind, text}; }
    /// The first value of a kind; nothing when there is none.
    std::optional<std::wstring_view> First(TokenKind kind) const;

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    const NameValue& operator[](std::size_t index) const { return m_values[index]; }
    const NameValue* data() const { return m_values.data(); }
    const NameValue* begin() const { return m_values.data(); }
    const NameValue* end() const { return m_values.data() + m_size; }

private:
    std::array<NameValue, kCapacity> m_values;
    std::size_t m_size = 0;
};

/// A compiled pattern. Cheap to use for many names, from any number of threads at a time.
/// A text of more than 127 characters is no pattern: it fits no name and reads none.
class NamePattern
{
public:
    explicit NamePattern(std::wstring_view text);

    const std::wstring& Text() const { return m_text; }
    /// Labels and literal runs in order; two literal runs never stand side by side.
    const std::vector<PatternToken>& Tokens() const { return m_tokens; }
    std::wstring_view TokenText(const PatternToken& token) const
    {
        return std::wstring_view(m_text).substr(token.begin, token.length);
    }
    /// The pattern with each label replaced by its wildcard; literal text stays, also a `*` or `?` in it.
    const std::wstring& Specification() const { return m_specification; }
    bool HasNumber() const { return m_hasNumber; }

    /// True when the name fits: it passes the specification (any case) and can be read (exact case).
    /// @param values receives one value for each label, views into `name`; empty when the name does not fit.
    bool Fit(std::wstring_view name, NameValues& values) const;

    /// As `Fit`, without the specification: enough for a name that has passed a narrower one.
    bool Read(std::wstring_view name, NameValues& values) const;

    /// The number that stands for the first <Number> of the pattern, see LeadingNumber.
    /// @return nothing when the pattern has no <Number> or the name cannot be read.
    std::optional<std::int32_t> ReadNumber(std::wstring_view name) const;

private:
    bool Walk(std::wstring_view name, NameValues& values) const;
    std::size_t FindLiteral(std::wstring_view name, std::size_t from, const PatternToken& literal) const;

    std::wstring m_text;
    std::vector<PatternToken> m_tokens;
    std::wstring m_specification;
    bool m_hasNumber = false;
    bool m_usable = false;
    bool m_specificationAddsToReading = false;
};

/// The specification of a file that belongs to a name: each <File> of `pattern` is replaced by the name's
/// <File> value, every other label by its wildcard. The substitution is textual: a `*`, a `?` or a label
/// inside the value acts as such, and the value of a second <File> would replace a <File> inside the first
/// value.
/// @param values the values that the name gave to its own pattern.
/// @return nothing when the result is empty or longer than 127 characters.
std::optional<std::wstring> DeriveSpecification(std::wstring_view pattern, std::span<const NameValue> values);

/// The decimal number that a text begins with: 0 without a digit there (also for "-5"), at most 2147483647.
std::int32_t LeadingNumber(std::wstring_view text);

} // namespace kv
