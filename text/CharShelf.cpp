#include "text/CharShelf.h"

#include "core/CodePoints.h"

namespace kv {

void CharShelf::PutFirst(char16_t code)
{
    Remove(code);
    m_characters.insert(m_characters.begin(), code);
    if (m_characters.size() > kMost)
        m_characters.pop_back();
}

bool CharShelf::Append(char16_t code)
{
    if (Has(code) || IsFull())
        return false;
    m_characters += code;
    return true;
}

bool CharShelf::Remove(char16_t code)
{
    return std::erase(m_characters, code) != 0;
}

void CharShelf::Set(std::wstring_view characters)
{
    m_characters.clear();
    for (std::size_t at = 0; at < characters.size();) {
        const CodePoint next = NextCodePoint(characters, at);
        at += next.length;
        if (next.valid && next.value < 0xFFFF)
            Append(static_cast<char16_t>(next.value));
    }
}

} // namespace kv
