#include "core/ProfileDocument.h"

#include "core/CodePoints.h"
#include "core/ProfileLine.h"
#include "core/Text.h"

#include <algorithm>
#include <deque>
#include <map>
#include <tuple>

namespace kv {

// The text is cut into pieces that each end with a value that can be replaced or with the line of a section
// that keys can be added to; what lies between (comments, line ends, everything unknown) leads the next
// piece. So writing touches one piece, and the pieces put together are the document.
struct ProfileDocument::Impl
{
    using PieceId = std::uint32_t;
    using SectionId = std::uint32_t;

    struct Piece
    {
        std::string_view head;
        std::string_view value;
        std::unique_ptr<std::string> written; ///< stands for `value` once it has been written
        PieceId next = 0;                     ///< 0 behind the last piece

        std::string_view Value() const { return written ? std::string_view(*written) : value; }
    };
    struct Block
    {
        PieceId first; ///< the section's line
        PieceId last;  ///< new keys go behind it
    };
    struct Key
    {
        SectionId section;
        std::string_view name;

        friend bool operator<(const Key& a, const Key& b)
        {
            return std::tie(a.section, a.name) < std::tie(b.section, b.name);
        }
    };

    Impl(std::string decoded, ProfileNames names);
    void AddLine(std::string_view line, std::size_t& begin, std::optional<SectionId>& section);

    bool IsEmpty() const { return pieces[0].next == tail && pieces[tail].head.empty(); }
    PieceId AppendPiece(std::string_view head, std::string_view value);
    PieceId InsertPiece(PieceId after, std::string_view head);
    std::string_view Store(std::string bytes) { return stored.emplace_back(std::move(bytes)); }
    std::string Folded(std::string name) const;
    std::string_view Comparable(std::string_view name);

    std::optional<SectionId> FindSection(std::string_view name) const;
    std::optional<PieceId> FindKey(std::string_view section, std::string_view key) const;
    SectionId AddSection(std::string_view name);
    PieceId AddKey(SectionId section, std::string_view key);
    void Write(PieceId piece, std::string value);
    std::string_view KeyOf(PieceId piece) const;

    const ProfileNames names;
    const std::string text;
    std::deque<std::string> stored; ///< texts that are not in the file
    std::string_view lineEnd;
    std::vector<Piece> pieces;
    PieceId tail = 0; ///< the last piece, behind everything that can be written
    std::vector<Block> blocks;
    // Ordered maps: no choice of names makes them slow.
    std::map<std::string_view, SectionId> sections;
    std::map<Key, PieceId> keys;
    std::size_t entries = 0; ///< key and section lines
    bool truncated = false;  ///< more lines than that stand in the tail, unread
};

// Section 0, with the empty name, is what stands before the first section line.
ProfileDocument::Impl::Impl(std::string decoded, ProfileNames compared)
    : names(compared)
    , text(std::move(decoded))
    , lineEnd(LineEndOf(text))
{
    const std::string_view all = text;
    std::size_t begin = all.starts_with(kUtf8Bom) ? kUtf8Bom.size() : 0;
    AppendPiece(all.substr(0, begin), {});
    blocks.push_back({0, 0});
    sections.emplace(std::string_view(), 0);

    std::optional<SectionId> section = 0;
    for (std::size_t line = begin; line < all.size() && !truncated;) {
        std::size_t end = line;
        while (end < all.size() && !IsLineBreak(all[end]))
            ++end;
        AddLine(all.substr(line, end - line), begin, section);
        line = end + 1;
    }
    tail = AppendPiece(all.substr(begin), {});
}

/// @param begin where the next piece begins. @param section none in a section that came before.
void ProfileDocument::Impl::AddLine(std::string_view line, std::size_t& begin,
                                    std::optional<SectionId>& section)
{
    const ProfileLine parsed = ParseProfileLine(line);
    if (parsed.kind == ProfileLine::Kind::Other)
        return;
    if (entries == kMostEntries) {
        truncated = true;
        return;
    }
    ++entries;
    const std::string_view name = Comparable(parsed.name);
    const auto next = static_cast<PieceId>(pieces.size());
    if (parsed.kind == ProfileLine::Kind::Section) {
        const auto id = static_cast<SectionId>(blocks.size());
        section = sections.emplace(name, id).second ? std::optional(id) : std::nullopt;
        if (!section)
            return;
        blocks.push_back({next, next});
    } else {
        if (!section || !keys.emplace(Key{*section, name}, next).second)
            return;
        blocks[*section].last = next;
    }
    const auto lineBegin = static_cast<std::size_t>(line.data() - text.data());
    const std::string_view head = std::string_view(text).substr(begin, lineBegin + parsed.head - begin);
    AppendPiece(head, line.substr(parsed.head));
    begin = lineBegin + line.size();
}

ProfileDocument::Impl::PieceId ProfileDocument::Impl::AppendPiece(std::string_view head,
                                                                  std::string_view value)
{
    const auto id = static_cast<PieceId>(pieces.size());
    if (id > 0)
        pieces.back().next = id;
    pieces.push_back({head, value, nullptr, 0});
    return id;
}

ProfileDocument::Impl::PieceId ProfileDocument::Impl::InsertPiece(PieceId after, std::string_view head)
{
    const auto id = static_cast<PieceId>(pieces.size());
    pieces.push_back({head, {}, nullptr, pieces[after].next});
    pieces[after].next = id;
    return id;
}

/// A name in the one case that it is compared in.
std::string ProfileDocument::Impl::Folded(std::string name) const
{
    if (names == ProfileNames::AnyCase)
        std::transform(name.begin(), name.end(), name.begin(), [](char byte) {
            return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
        });
    return name;
}

/// A name as look-ups spell it: what is no UTF-8 in the file is U+FFFD there.
std::string_view ProfileDocument::Impl::Comparable(std::string_view name)
{
    const bool isAscii =
        std::all_of(name.begin(), name.end(), [](char byte) { return static_cast<signed char>(byte) >= 0; });
    if (isAscii && names == ProfileNames::Exact)
        return name;
    std::string valid(isAscii ? name : std::string_view());
    for (std::size_t at = valid.size(); at < name.size();) {
        const CodePoint next = NextCodePoint(name, at);
        AppendUtf8(valid, next.value);
        at += next.length;
    }
    valid = Folded(std::move(valid));
    return valid == name ? name : Store(std::move(valid));
}

std::optional<ProfileDocument::Impl::SectionId>
ProfileDocument::Impl::FindSection(std::string_view name) const
{
    const auto found = sections.find(Folded(std::string(name)));
    return found == sections.end() ? std::nullopt : std::optional(found->second);
}

std::optional<ProfileDocument::Impl::PieceId> ProfileDocument::Impl::FindKey(std::string_view section,
                                                                             std::string_view key) const
{
    const auto id = FindSection(section);
    if (!id)
        return std::nullopt;
    const std::string name = Folded(std::string(key));
    const auto found = keys.find(Key{*id, name});
    return found == keys.end() ? std::nullopt : std::optional(found->second);
}

/// Adds a section line at the end of the document, with a blank line before it.
ProfileDocument::Impl::SectionId ProfileDocument::Impl::AddSection(std::string_view name)
{
    std::string head;
    std::string_view before = pieces[tail].head;
    if (!IsEmpty()) {
        if (!EndsLine(before))
            head += lineEnd;
        else
            before.remove_suffix(before.ends_with("\r\n") ? 2 : 1);
        if (!EndsLine(before))
            head += lineEnd;
    }
    const std::size_t nameBegin = head.size() + 1;
    head.append("[").append(name).append("]");
    const std::string_view line = Store(std::move(head));

    const PieceId first = InsertPiece(tail, line);
    tail = InsertPiece(first, lineEnd);
    const auto id = static_cast<SectionId>(blocks.size());
    blocks.push_back({first, first});
    sections.emplace(Comparable(line.substr(nameBegin, name.size())), id);
    ++entries;
    return id;
}

/// Adds a key line behind the last key of a section.
ProfileDocument::Impl::PieceId ProfileDocument::Impl::AddKey(SectionId section, std::string_view key)
{
    Block& block = blocks[section];
    // Only at the very start of a document there is no line to follow.
    const bool follows = block.last != 0;
    std::string head(follows ? lineEnd : std::string_view());
    const std::size_t nameBegin = head.size();
    head.append(key).append("=");
    const std::string_view line = Store(std::move(head));

    const bool empty = IsEmpty();
    const PieceId added = InsertPiece(block.last, line);
    if (empty)
        pieces[tail].head = lineEnd;
    else if (!follows)
        InsertPiece(added, lineEnd);
    block.last = added;
    keys.emplace(Key{section, Comparable(line.substr(nameBegin, key.size()))}, added);
    ++entries;
    return added;
}

void ProfileDocument::Impl::Write(PieceId piece, std::string value)
{
    Piece& target = pieces[piece];
    if (!value.empty() && IsProfileBlank(value.front())) {
        // Behind a `Key =` the value's own blanks would not be read back: take the blank before "=" away.
        const std::string_view key = TrimRight(target.head.substr(0, target.head.rfind('=')));
        if (key.size() + 1 != target.head.size())
            target.head = Store(std::string(key) + "=");
    }
    target.written = std::make_unique<std::string>(std::move(value));
}

std::string_view ProfileDocument::Impl::KeyOf(PieceId piece) const
{
    std::string_view line = pieces[piece].head;
    line = line.substr(line.find_last_of("\r\n") + 1);
    return ParseProfileLine(line).name;
}

ProfileDocument::ProfileDocument() : ProfileDocument(std::string_view()) {}
ProfileDocument::ProfileDocument(std::string_view bytes, ProfileNames names)
    : m_impl(std::make_unique<Impl>(DecodeProfile(bytes), names))
{
}
ProfileDocument::~ProfileDocument() = default;
ProfileDocument::ProfileDocument(ProfileDocument&&) noexcept = default;
ProfileDocument& ProfileDocument::operator=(ProfileDocument&&) noexcept = default;

bool ProfileDocument::HasSection(std::wstring_view section) const
{
    return m_impl->FindSection(ToUtf8(section)).has_value();
}

std::optional<std::wstring> ProfileDocument::Value(std::wstring_view section, std::wstring_view key) const
{
    const auto piece = m_impl->FindKey(ToUtf8(section), ToUtf8(key));
    return piece ? std::optional(FromUtf8(m_impl->pieces[*piece].Value())) : std::nullopt;
}

int ProfileDocument::Integer(std::wstring_view section, std::wstring_view key, int defaultValue) const
{
    const auto value = Value(section, key);
    return value ? LeadingInteger(*value) : defaultValue;
}

std::vector<std::pair<std::wstring, std::wstring>> ProfileDocument::Section(std::wstring_view section) const
{
    std::vector<std::pair<std::wstring, std::wstring>> all;
    const auto id = m_impl->FindSection(ToUtf8(section));
    if (!id)
        return all;
    const Impl::Block block = m_impl->blocks[*id];
    for (Impl::PieceId piece = block.first; piece != block.last;) {
        piece = m_impl->pieces[piece].next;
        all.emplace_back(FromUtf8(m_impl->KeyOf(piece)), FromUtf8(m_impl->pieces[piece].Value()));
    }
    return all;
}

bool ProfileDocument::SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value)
{
    if (m_impl->truncated || !CanBeSection(section) || !CanBeKey(key) || !CanBeValue(value))
        return false;
    const std::string sectionName = ToUtf8(section);
    const std::string keyName = ToUtf8(key);
    auto piece = m_impl->FindKey(sectionName, keyName);
    if (piece && FromUtf8(m_impl->pieces[*piece].Value()) == value)
        return true;
    if (!piece) {
        const auto id = m_impl->FindSection(sectionName);
        if (m_impl->entries + (id ? 1 : 2) > kMostEntries)
            return false;
        piece = m_impl->AddKey(id ? *id : m_impl->AddSection(sectionName), keyName);
    }
    m_impl->Write(*piece, ToUtf8(value));
    return true;
}

bool ProfileDocument::SetInteger(std::wstring_view section, std::wstring_view key, int value)
{
    return SetValue(section, key, NumberText(std::int64_t{value}));
}

std::string ProfileDocument::Bytes() const
{
    std::string bytes;
    for (const Impl::Piece* piece = &m_impl->pieces[0];; piece = &m_impl->pieces[piece->next]) {
        bytes.append(piece->head).append(piece->Value());
        if (piece->next == 0)
            return bytes;
    }
}

} // namespace kv
