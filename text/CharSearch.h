// Finds a character by its name, its code or itself.
#pragma once

#include "text/CodeTable.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

/// The names of characters, laid out for searching.
class CharNameIndex
{
public:
    /// Adds a character's name: capital ASCII letters, digits, blanks and hyphens, as Unicode names are. In
    /// ascending order of the codes.
    void Add(char16_t code, std::string_view name);

    bool IsEmpty() const { return m_codes.empty(); }
    /// Calls `visit(code)` for every character, in ascending order, in whose name each word begins a word,
    /// until it returns true. @param words as `NameWords` gives them; without any nothing is visited.
    /// @return whether it did.
    bool Find(const std::vector<std::string>& words, const std::function<bool(char16_t)>& visit) const;

private:
    std::size_t NextWith(const std::string& word, std::size_t record) const;
    bool HasAll(std::size_t record, const std::vector<std::string>& words) const;
    std::string_view Name(std::size_t record) const;

    std::vector<char16_t> m_codes;
    std::vector<std::uint32_t> m_begins; ///< of each name in the text
    std::string m_text;                  ///< each name's words, a blank before every one, and a line feed
};

/// The words of a query as names spell them, each after a blank, the longest first.
std::vector<std::string> NameWords(std::wstring_view query);

/// Finds the first character of a table, from `after` + 1 on and from the beginning again, that a query
/// names: the character itself, a code (`U+E9`, `0xE9`, or `E9` where the table has that one), or words of
/// the name in any order, which may be cut short. The character itself or its code comes before names. Blanks
/// around the query do not count, unless it is a single one.
/// @param after an index of the table, or -1 for the first of all. @return its index; -1 without a match.
int FindCharacter(std::wstring_view query, const CodeTable& table, const CharNameIndex& names,
                  int after = -1);

} // namespace kv
