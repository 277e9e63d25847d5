#include "core/Wildcard.h"

#include "core/CaseFoldingTable.h"
#include "core/CodePoints.h"

#include <iterator>

namespace kv {
namespace {

bool SameIgnoringCase(char32_t a, char32_t b)
{
    return a == b || FoldCase(a) == FoldCase(b);
}

} // namespace

char32_t FoldCase(char32_t character)
{
    if (character < 0x80)
        return character >= U'A' && character <= U'Z' ? character + 32 : character;
    const std::size_t block = character >> kCaseFoldingShift;
    if (block >= std::size(kCaseFoldingBlock))
        return character;
    const std::size_t place = character & ((1u << kCaseFoldingShift) - 1);
    const char32_t difference =
        kCaseFoldingDifference[(std::size_t{kCaseFoldingBlock[block]} << kCaseFoldingShift) + place];
    return (character & 0xFFFF0000u) | ((character + difference) & 0xFFFFu);
}

// Only the last "*" ever needs to give way: what the earlier ones took already lets the rest fit best.
bool FitsWildcard(std::wstring_view name, std::wstring_view specification)
{
    constexpr std::size_t kNone = std::wstring_view::npos;
    std::size_t n = 0;
    std::size_t s = 0;
    std::size_t afterStar = kNone; // the place in the specification behind the last "*"
    std::size_t starEnd = 0;       // where that "*" ends in the name
    while (n < name.size()) {
        if (s < specification.size() && specification[s] == L'*') {
            afterStar = ++s;
            starEnd = n;
            continue;
        }
        const CodePoint character = NextCodePoint(name, n);
        if (s < specification.size()) {
            const CodePoint wanted = NextCodePoint(specification, s);
            if (wanted.value == U'?' || SameIgnoringCase(character.value, wanted.value)) {
                n += character.length;
                s += wanted.length;
                continue;
            }
        }
        if (afterStar == kNone)
            return false;
        s = afterStar;
        starEnd += NextCodePoint(name, starEnd).length;
        n = starEnd;
    }
    return specification.find_first_not_of(L'*', s) == kNone;
}

} // namespace kv
