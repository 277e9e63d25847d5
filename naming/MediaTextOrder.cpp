#include "naming/MediaTextOrder.h"

#include "core/CodePoints.h"
#include "core/Wildcard.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <span>
#include <type_traits>

namespace kv {
namespace {

constexpr std::size_t kKeyBytes = 8;

// A text's place in the order as far as eight of its bytes tell; shorter ones end in zeros.
struct SortItem
{
    std::uint64_t key;
    std::uint32_t index;
};

// Items that are equal up to `depth` bytes and still to be sorted.
struct SortRun
{
    std::size_t begin;
    std::size_t end;
    std::size_t depth;
};

// The eight bytes at `depth` as a number that compares as they do.
std::uint64_t KeyAt(std::string_view text, std::size_t depth)
{
    const std::size_t left = text.size() - std::min(depth, text.size());
    std::array<unsigned char, kKeyBytes> bytes{};
    if (left >= kKeyBytes)
        std::memcpy(bytes.data(), text.data() + depth, kKeyBytes);
    else
        std::copy_n(text.end() - static_cast<std::ptrdiff_t>(left), left, bytes.begin());
    std::uint64_t key = 0;
    for (const unsigned char byte : bytes)
        key = (key << 8) | byte;
    return key;
}

// No text holds a NUL, so a zero in the last place says that all of them have ended.
bool HasEnded(std::uint64_t key)
{
    return (key & 0xFF) == 0;
}

struct ByKey
{
    bool operator()(const SortItem& a, const SortItem& b) const { return a.key < b.key; }
};

// Loads the keys of a run, behind the bytes that all of its texts have in common.
void LoadKeys(const MediaTexts& texts, std::vector<SortItem>& items, SortRun& run)
{
    const std::span<SortItem> part = std::span(items).subspan(run.begin, run.end - run.begin);
    const auto load = [&] {
        std::uint64_t different = 0;
        for (SortItem& item : part) {
            item.key = KeyAt(texts[item.index], run.depth);
            different |= item.key ^ part.front().key;
        }
        return static_cast<std::size_t>(std::countl_zero(different)) / 8;
    };
    const std::size_t common = load();
    if (common > 0 && common < kKeyBytes) {
        run.depth += common;
        load();
    }
}

void PushEqualRuns(const std::vector<SortItem>& items, const SortRun& run, std::vector<SortRun>& runs)
{
    for (std::size_t first = run.begin; first < run.end;) {
        std::size_t last = first + 1;
        while (last < run.end && items[last].key == items[first].key)
            ++last;
        if (last - first > 1 && !HasEnded(items[first].key))
            runs.push_back({first, last, run.depth + kKeyBytes});
        first = last;
    }
}

// Nearly all names are ASCII, and the plain loops for those become vector code.
template <typename Character>
bool IsAscii(std::basic_string_view<Character> text)
{
    using Unit = std::make_unsigned_t<Character>;
    Unit all = 0;
    for (const Character character : text)
        all = static_cast<Unit>(all | static_cast<Unit>(character));
    return all < 0x80;
}

template <typename To, typename From, typename Transform>
void AppendEach(std::basic_string<To>& out, std::basic_string_view<From> text, Transform transform)
{
    const std::size_t before = out.size();
    out.resize(before + text.size());
    std::transform(text.begin(), text.end(), out.begin() + static_cast<std::ptrdiff_t>(before), transform);
}

template <typename Transform>
void AppendEncoded(std::string& out, std::wstring_view text, Transform transform)
{
    for (std::size_t at = 0; at < text.size();) {
        const CodePoint next = NextCodePoint(text, at);
        AppendUtf8(out, transform(next.value));
        at += next.length;
    }
}

void Append(std::string& out, std::wstring_view text)
{
    if (IsAscii(text))
        AppendEach(out, text, [](wchar_t character) { return static_cast<char>(character); });
    else
        AppendEncoded(out, text, [](char32_t character) { return character; });
}

} // namespace

void AppendFolded(std::string& out, std::wstring_view text)
{
    if (!IsAscii(text)) {
        AppendEncoded(out, text, FoldCase);
        return;
    }
    AppendEach(out, text, [](wchar_t character) {
        const bool isUpper = character >= L'A' && character <= L'Z';
        return static_cast<char>(character + (isUpper ? L'a' - L'A' : 0));
    });
}

void AppendDecoded(std::wstring& out, std::string_view bytes)
{
    if (IsAscii(bytes)) {
        AppendEach(out, bytes, [](char byte) { return static_cast<wchar_t>(byte); });
        return;
    }
    for (std::size_t at = 0; at < bytes.size();) {
        const auto byte = [&] { return static_cast<unsigned char>(bytes[at++]); };
        const char32_t lead = byte();
        const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        char32_t character = more == 0 ? lead : lead & (0x3Fu >> more);
        for (int i = 0; i < more; ++i)
            character = (character << 6) | (byte() & 0x3Fu);
        AppendWide(out, character);
    }
}

void MediaTexts::Reserve(std::size_t count, std::size_t bytes)
{
    m_ends.reserve(count);
    m_bytes.reserve(bytes);
}

void MediaTexts::Add(std::wstring_view text)
{
    Append(m_bytes, text);
    m_ends.push_back(m_bytes.size());
}

void MediaTexts::AddFolded(std::wstring_view text)
{
    AppendFolded(m_bytes, text);
    m_ends.push_back(m_bytes.size());
}

void MediaTexts::AddBytes(std::string_view bytes)
{
    m_bytes += bytes;
    m_ends.push_back(m_bytes.size());
}

std::vector<std::uint32_t> SortedOrder(const MediaTexts& texts)
{
    std::vector<SortItem> items(texts.Count());
    for (std::size_t i = 0; i < items.size(); ++i)
        items[i].index = static_cast<std::uint32_t>(i);

    std::vector<SortRun> runs;
    if (items.size() > 1)
        runs.push_back({0, items.size(), 0});
    while (!runs.empty()) {
        SortRun run = runs.back();
        runs.pop_back();
        const auto begin = items.begin() + static_cast<std::ptrdiff_t>(run.begin);
        const auto end = items.begin() + static_cast<std::ptrdiff_t>(run.end);
        LoadKeys(texts, items, run);
        if (!std::is_sorted(begin, end, ByKey()))
            std::sort(begin, end, ByKey());
        PushEqualRuns(items, run, runs);
    }

    std::vector<std::uint32_t> order(items.size());
    std::transform(items.begin(), items.end(), order.begin(),
                   [](const SortItem& item) { return item.index; });
    return order;
}

} // namespace kv
