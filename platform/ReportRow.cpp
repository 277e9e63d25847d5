#include "platform/ReportRows.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kv {

namespace {

constexpr std::size_t kHeadSize = 4;
constexpr std::size_t kEndSize = sizeof(std::uint32_t);
static_assert(sizeof(ReportCellColours) == 12);

// In steps, so that a text that changes a little stays where it is.
std::size_t BlockSize(std::size_t size)
{
    constexpr std::size_t kStep = 32;
    return (size + kStep - 1) / kStep * kStep;
}

std::unique_ptr<std::byte[]> NewBlock(std::size_t size)
{
    return std::make_unique_for_overwrite<std::byte[]>(BlockSize(size));
}

} // namespace

ReportRow::ReportRow(std::span<const std::wstring_view> texts, int rowHeight, bool followsTheFont)
    : height(rowHeight)
    , followsFont(followsTheFont)
{
    Pack(texts, {});
}

ReportRow::Head ReportRow::ReadHead() const
{
    Head head{};
    static_assert(sizeof(Head) == kHeadSize);
    if (m_block)
        std::memcpy(&head, m_block.get(), sizeof(head));
    return head;
}

std::uint32_t ReportRow::End(int column) const
{
    std::uint32_t end = 0;
    if (column >= 0)
        std::memcpy(&end, m_block.get() + kHeadSize + static_cast<std::size_t>(column) * kEndSize, kEndSize);
    return end;
}

std::wstring_view ReportRow::Text(int column) const
{
    const Head head = ReadHead();
    if (column < 0 || column >= head.texts)
        return {};
    const std::size_t offset = kHeadSize + head.texts * kEndSize + head.colours * sizeof(ReportCellColours);
    const auto* texts = reinterpret_cast<const wchar_t*>(m_block.get() + offset);
    const std::uint32_t begin = End(column - 1);
    return {texts + begin, End(column) - begin};
}

void ReportRow::Pack(std::span<const std::wstring_view> texts, std::span<const ReportCellColours> colours)
{
    const std::size_t count = std::min<std::size_t>(texts.size(), 0xFFFF);
    std::size_t length = 0;
    for (const std::wstring_view text : texts.first(count))
        length += text.size();
    const Head head{static_cast<std::uint16_t>(count), static_cast<std::uint16_t>(colours.size())};
    const std::size_t coloursAt = kHeadSize + count * kEndSize;
    const std::size_t textsAt = coloursAt + colours.size_bytes();
    auto block = NewBlock(textsAt + length * sizeof(wchar_t));
    std::memcpy(block.get(), &head, sizeof(head));
    if (!colours.empty())
        std::memcpy(block.get() + coloursAt, colours.data(), colours.size_bytes());
    std::uint32_t end = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!texts[i].empty())
            std::memcpy(block.get() + textsAt + end * sizeof(wchar_t), texts[i].data(),
                        texts[i].size() * sizeof(wchar_t));
        end += static_cast<std::uint32_t>(texts[i].size());
        std::memcpy(block.get() + kHeadSize + i * kEndSize, &end, kEndSize);
    }
    m_block = std::move(block); // last: the texts may be views into the old one
}

std::vector<std::wstring_view> ReportRow::Texts() const
{
    std::vector<std::wstring_view> texts;
    for (int column = 0; column < ReadHead().texts; ++column)
        texts.push_back(Text(column));
    return texts;
}

std::vector<ReportCellColours> ReportRow::AllColours() const
{
    const Head head = ReadHead();
    std::vector<ReportCellColours> colours(head.colours);
    if (!colours.empty())
        std::memcpy(colours.data(), m_block.get() + kHeadSize + head.texts * kEndSize,
                    colours.size() * sizeof(ReportCellColours));
    return colours;
}

void ReportRow::SetText(int column, std::wstring_view text)
{
    if (column < 0 || column >= 0xFFFF)
        return;
    if (column < ReadHead().texts) {
        ReplaceText(column, text);
        return;
    }
    std::vector<std::wstring_view> texts = Texts();
    texts.resize(static_cast<std::size_t>(column) + 1);
    texts[static_cast<std::size_t>(column)] = text;
    Pack(texts, AllColours());
}

// In place where the block has room: a list may get another text in every row at once.
void ReportRow::ReplaceText(int column, std::wstring_view text)
{
    const Head head = ReadHead();
    const std::size_t textsAt = kHeadSize + head.texts * kEndSize + head.colours * sizeof(ReportCellColours);
    const std::size_t begin = textsAt + End(column - 1) * sizeof(wchar_t);
    const std::size_t end = textsAt + End(column) * sizeof(wchar_t);
    const std::size_t size = textsAt + End(head.texts - 1) * sizeof(wchar_t);
    const std::size_t newEnd = begin + text.size() * sizeof(wchar_t);
    std::unique_ptr<std::byte[]> old;
    if (BlockSize(newEnd + size - end) != BlockSize(size)) {
        old = std::exchange(m_block, NewBlock(newEnd + size - end));
        std::memcpy(m_block.get(), old.get(), begin);
    }
    std::memmove(m_block.get() + newEnd, (old ? old : m_block).get() + end, size - end);
    std::copy_n(reinterpret_cast<const std::byte*>(text.data()), newEnd - begin, m_block.get() + begin);
    const std::uint32_t oldLength = End(column) - End(column - 1);
    for (int i = column; i < head.texts; ++i) {
        const std::uint32_t place = End(i) - oldLength + static_cast<std::uint32_t>(text.size());
        std::memcpy(m_block.get() + kHeadSize + static_cast<std::size_t>(i) * kEndSize, &place, kEndSize);
    }
}

ReportCellColours ReportRow::Colours(int column) const
{
    const Head head = ReadHead();
    const std::size_t at = kHeadSize + head.texts * kEndSize;
    for (std::size_t i = 0; i < head.colours; ++i) {
        ReportCellColours colours;
        std::memcpy(&colours, m_block.get() + at + i * sizeof(colours), sizeof(colours));
        if (colours.column == column)
            return colours;
    }
    return {};
}

void ReportRow::SetColours(int column, const std::uint32_t* back, const std::uint32_t* text)
{
    if (column < 0 || column >= 0xFFFF || (!back && !text))
        return;
    std::vector<ReportCellColours> all = AllColours();
    auto cell = std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.column == column; });
    if (cell == all.end()) {
        all.emplace_back().column = static_cast<std::uint16_t>(column);
        cell = all.end() - 1;
    }
    if (back) {
        cell->hasBack = true;
        cell->back = *back;
    }
    if (text) {
        cell->hasText = true;
        cell->text = *text;
    }
    Pack(Texts(), all);
}

void ReportRow::ClearColours(int column)
{
    std::vector<ReportCellColours> all = AllColours();
    if (std::erase_if(all, [&](const auto& one) { return one.column == column; }) > 0)
        Pack(Texts(), all);
}

} // namespace kv
