// Characters that a user keeps at hand: those used last, or those pinned.
#pragma once

#include "text/CharMapLayout.h"

#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// Each character once, in their order; as many as a row of the grid has cells.
class CharShelf
{
public:
    static constexpr std::size_t kMost = kCharColumns;

    const std::u16string& Characters() const { return m_characters; }
    bool Has(char16_t code) const { return m_characters.find(code) != std::u16string::npos; }
    bool IsFull() const { return m_characters.size() >= kMost; }
    /// Puts a character first; the last one goes when there is no room.
    void PutFirst(char16_t code);
    /// Adds a character at the end. @return false, and nothing happens, when it is there or there is no room.
    bool Append(char16_t code);
    bool Remove(char16_t code);
    /// Replaces them. What a grid never shows is left out.
    void Set(std::wstring_view characters);
    std::wstring Text() const { return {m_characters.begin(), m_characters.end()}; }

private:
    std::u16string m_characters;
};

} // namespace kv
