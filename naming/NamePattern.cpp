#include "naming/NamePattern.h"

#include "core/Wildcard.h"

#include <algorithm>
#include <limits>

namespace kv {
namespace {

constexpr std::size_t kMaxPattern = kKvNamingTextSize - 1;
// A bound against hostile growth: each value that holds labels itself can multiply a text's length. A longer
// text derives nothing, even where later values would have made it short again.
constexpr std::size_t kMaxSubstituted = 1u << 16;

constexpr std::wstring_view kFileLabel = L"<File>";

TokenKind KindOfLabel(std::wstring_view label)
{
    if (label == kFileLabel)
        return TokenKind::File;
    if (label == L"<Number>")
        return TokenKind::Number;
    return label == L"<Ext>" ? TokenKind::Ext : TokenKind::Literal;
}

// The next label at or after `from`; a token of length 0 at the text's end when there is none. A "<" replaces
// one that is still open.
PatternToken NextLabel(std::wstring_view text, std::size_t from)
{
    std::size_t open = std::wstring_view::npos;
    for (std::size_t i = from; i < text.size(); ++i) {
        if (text[i] == L'<')
            open = i;
        if (text[i] != L'>' || open == std::wstring_view::npos)
            continue;
        const std::size_t length = i + 1 - open;
        const TokenKind kind = KindOfLabel(text.substr(open, length));
        if (kind != TokenKind::Literal)
            return {kind, open, length};
        open = std::wstring_view::npos;
    }
    return {TokenKind::Literal, text.size(), 0};
}

std::vector<PatternToken> Tokenise(std::wstring_view text)
{
    std::vector<PatternToken> tokens;
    for (std::size_t at = 0; at < text.size();) {
        const PatternToken label = NextLabel(text, at);
        if (label.begin > at)
            tokens.push_back({TokenKind::Literal, at, label.begin - at});
        if (label.length > 0)
            tokens.push_back(label);
        at = label.begin + label.length;
    }
    return tokens;
}

std::wstring ToSpecification(std::wstring_view text)
{
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const PatternToken label = NextLabel(text, at);
        result.append(text, at, label.begin - at);
        result += WildcardPiece(label.kind);
        at = label.begin + label.length;
    }
    return result;
}

std::wstring ReplaceFileLabels(std::wstring_view text, std::wstring_view value)
{
    std::wstring result;
    result.reserve(text.size() + value.size());
    std::size_t at = 0;
    for (std::size_t label = text.find(kFileLabel); label != std::wstring_view::npos;
         label = text.find(kFileLabel, at)) {
        result.append(text, at, label - at);
        result += value;
        at = label + kFileLabel.size();
        if (result.size() > kMaxSubstituted)
            return result;
    }
    result.append(text, at);
    return result;
}

constexpr bool IsDigit(wchar_t character)
{
    return static_cast<std::uint32_t>(character) - U'0' < 10;
}

// Where a <File> value that starts at `from` ends: what follows it in the pattern decides.
std::size_t EndOfFileValue(std::wstring_view part, std::size_t from, TokenKind next)
{
    std::size_t end = part.size();
    if (next == TokenKind::Number)
        end = part.find_first_of(L"0123456789", from);
    else if (next == TokenKind::Ext)
        end = part.find(L'.', from);
    return std::min(end, part.size());
}

// Reads a part of a name with the labels that stand together in the pattern.
bool ReadPart(std::wstring_view part, std::span<const PatternToken> labels, NameValues& values)
{
    if (labels.empty())
        return part.empty();
    if (part.empty())
        return false;
    if (labels.size() == 1) {
        values.Add(labels.front().kind, part);
        return true;
    }
    std::size_t cursor = 0;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const TokenKind kind = labels[i].kind;
        std::size_t end = part.size();
        if (kind == TokenKind::File) {
            end = EndOfFileValue(part, cursor, i + 1 < labels.size() ? labels[i + 1].kind : TokenKind::File);
        } else if (kind == TokenKind::Number) {
            end = cursor;
            while (end < part.size() && IsDigit(part[end]))
                ++end;
        } else if (cursor + 1 >= part.size() || part[cursor] != L'.') {
            return false;
        }
        if (end == cursor)
            return false;
        values.Add(kind, part.substr(cursor, end - cursor));
        // An extension reaches to the end but is not passed over: a label after it reads it again.
        if (kind != TokenKind::Ext)
            cursor = end;
    }
    return true;
}

// A name that was read consists of the literal runs and parts that the label's wildcards fit, with two
// exceptions: an <Ext> alone in its part takes any text, and several in one part share the same text.
bool SpecificationAddsToReading(std::span<const PatternToken> tokens)
{
    std::size_t labels = 0;
    std::size_t extensions = 0;
    const auto adds = [&] { return extensions > 1 || (extensions == 1 && labels == 1); };
    for (const PatternToken& token : tokens) {
        if (token.kind == TokenKind::Literal) {
            if (adds())
                return true;
            labels = extensions = 0;
            continue;
        }
        ++labels;
        extensions += token.kind == TokenKind::Ext ? 1 : 0;
    }
    return adds();
}

} // namespace

std::wstring_view WildcardPiece(TokenKind kind)
{
    switch (kind) {
    case TokenKind::File:
    case TokenKind::Number:
        return L"*";
    case TokenKind::Ext:
        return L".*";
    default:
        return {};
    }
}

std::optional<std::wstring_view> NameValues::First(TokenKind kind) const
{
    const auto found =
        std::find_if(begin(), end(), [kind](const NameValue& value) { return value.kind == kind; });
    return found == end() ? std::nullopt : std::optional(found->text);
}

NamePattern::NamePattern(std::wstring_view text)
    : m_text(text)
    , m_tokens(Tokenise(text))
    , m_specification(ToSpecification(text))
    , m_hasNumber(std::any_of(m_tokens.begin(), m_tokens.end(),
                              [](const PatternToken& token) { return token.kind == TokenKind::Number; }))
    , m_usable(text.size() <= kMaxPattern)
    , m_specificationAddsToReading(SpecificationAddsToReading(m_tokens))
{
}

// Names are short and their separators frequent: one branch for each place, hardly ever taken, beats the
// library's search, which stops at each separator.
std::size_t NamePattern::FindLiteral(std::wstring_view name, std::size_t from,
                                     const PatternToken& literal) const
{
    const std::wstring_view text = TokenText(literal);
    const bool digitMustFollow = &literal != &m_tokens.back() && (&literal + 1)->kind == TokenKind::Number;
    const std::size_t length = text.size() + (digitMustFollow ? 1 : 0);
    for (std::size_t at = from; at + length <= name.size(); ++at) {
        const auto ends =
            (name[at] ^ text.front()) | (name[at + text.size() - 1] ^ text.back()); // 0: both fit
        if (ends != 0 || (digitMustFollow && !IsDigit(name[at + text.size()])))
            continue;
        if (name.substr(at, text.size()) == text)
            return at;
    }
    return std::wstring_view::npos;
}

bool NamePattern::Walk(std::wstring_view name, NameValues& values) const
{
    const std::span<const PatternToken> tokens = m_tokens;
    std::size_t cursor = 0;
    std::size_t firstLabel = 0;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != TokenKind::Literal)
            continue;
        const std::size_t at = FindLiteral(name, cursor, tokens[i]);
        if (at == std::wstring_view::npos)
            return false;
        if (!ReadPart(name.substr(cursor, at - cursor), tokens.subspan(firstLabel, i - firstLabel), values))
            return false;
        cursor = at + tokens[i].length;
        firstLabel = i + 1;
    }
    return ReadPart(name.substr(cursor), tokens.subspan(firstLabel), values);
}

bool NamePattern::Read(std::wstring_view name, NameValues& values) const
{
    values.Clear();
    if (m_usable && Walk(name, values))
        return true;
    values.Clear();
    return false;
}

bool NamePattern::Fit(std::wstring_view name, NameValues& values) const
{
    // Reading is much the faster of the two tests and nearly always implies the other.
    if (!Read(name, values))
        return false;
    if (!m_specificationAddsToReading || FitsWildcard(name, m_specification))
        return true;
    values.Clear();
    return false;
}

std::optional<std::int32_t> NamePattern::ReadNumber(std::wstring_view name) const
{
    NameValues values;
    if (!m_hasNumber || !Read(name, values))
        return std::nullopt;
    return LeadingNumber(values.First(TokenKind::Number).value_or(std::wstring_view()));
}

std::optional<std::wstring> DeriveSpecification(std::wstring_view pattern, std::span<const NameValue> values)
{
    std::wstring text(pattern);
    for (const NameValue& value : values) {
        if (value.kind == TokenKind::File)
            text = ReplaceFileLabels(text, value.text);
        if (text.size() > kMaxSubstituted)
            return std::nullopt;
    }
    std::wstring result = ToSpecification(text);
    if (result.empty() || result.size() > kMaxPattern)
        return std::nullopt;
    return result;
}

std::int32_t LeadingNumber(std::wstring_view text)
{
    constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (std::size_t i = 0; i < text.size() && IsDigit(text[i]); ++i)
        number = std::min(number * 10 + (text[i] - L'0'), limit);
    return static_cast<std::int32_t>(number);
}

} // namespace kv
