// Many short texts in one buffer.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// Texts end to end in one buffer, so that a million of them cost two allocations. Texts hold no NUL.
/// Byte order is code-point order: characters are encoded as UTF-8 is, lone surrogates too.
class MediaTexts
{
public:
    void Reserve(std::size_t count, std::size_t bytes);
    void Add(std::wstring_view text);
    /// Appends bytes in this encoding as they stand, or the case-folded form of what they stand for.
    void AddBytes(std::string_view bytes);
    void AddFolded(std::string_view bytes);

    std::size_t Count() const { return m_ends.size(); }
    std::size_t Bytes() const { return m_bytes.size(); }
    std::string_view operator[](std::size_t index) const
    {
        const std::size_t begin = index == 0 ? 0 : m_ends[index - 1];
        return std::string_view(m_bytes).substr(begin, m_ends[index] - begin);
    }

private:
    std::string m_bytes;
    std::vector<std::size_t> m_ends;
};

/// Appends a text in the encoding of MediaTexts.
void AppendEncoded(std::string& out, std::wstring_view text);

/// Appends the text that bytes in the encoding of MediaTexts stand for.
void AppendDecoded(std::wstring& out, std::string_view bytes);

/// Appends the case-folded form of a text, or of the text that bytes stand for, in the encoding of
/// MediaTexts.
void AppendFolded(std::string& out, std::wstring_view text);
void AppendFolded(std::string& out, std::string_view bytes);

} // namespace kv
