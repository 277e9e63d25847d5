#include "KvTimecode.h"

#include "text/TimecodeLabel.h"

#include <iterator>

namespace kv {
namespace {

constexpr bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

constexpr bool IsSeparator(wchar_t c)
{
    return c == L':' || c == L';';
}

} // namespace

TimecodeCount CountOfTimecode(EKvFrameRate rate, bool dropFrame)
{
    constexpr TimecodeCount counts[] = {{24, 0}, {24, 0}, {25, 0}, {30, 2},
                                        {30, 0}, {50, 0}, {60, 4}, {60, 0}};
    // One below 0 is above the table's end, too.
    const auto index = static_cast<std::uint32_t>(rate);
    if (index >= std::size(counts))
        return {};
    return {counts[index].nominal, dropFrame ? counts[index].dropped : 0};
}

std::wstring_view TrimTimecode(std::wstring_view text)
{
    constexpr std::wstring_view space = L" \t\r\n\u00A0";
    const std::size_t first = text.find_first_not_of(space);
    return first == text.npos ? std::wstring_view{}
                              : text.substr(first, text.find_last_not_of(space) - first + 1);
}

std::optional<TimecodeFields> FieldsOfTimecode(std::wstring_view trimmed)
{
    const bool pairs = trimmed.find_first_of(L":;") == trimmed.npos;
    TimecodeFields fields{};
    std::size_t left = trimmed.size(); // what lies before it is still to be read
    for (std::size_t field = fields.size(); field-- > 0 && left > 0;) {
        if (!IsDigit(trimmed[--left]))
            return std::nullopt;
        fields[field] = static_cast<std::uint32_t>(trimmed[left] - L'0');
        if (left > 0 && IsDigit(trimmed[left - 1]))
            fields[field] += 10 * static_cast<std::uint32_t>(trimmed[--left] - L'0');
        if (left == 0)
            return fields;
        // A separator stands between two fields only, never in front of the first.
        if (!pairs && (!IsSeparator(trimmed[--left]) || left == 0))
            return std::nullopt;
    }
    return std::nullopt; // empty, or more than four fields
}

TimecodeFrame FrameOfTimecode(std::wstring_view text, TimecodeCount count)
{
    const std::optional<TimecodeFields> fields = FieldsOfTimecode(TrimTimecode(text));
    if (!fields)
        return {0, TimecodeFault::NoTimecode};
    const auto [hours, minutes, seconds, frames] = *fields;
    if (hours > 23 || minutes > 59 || seconds > 59 || frames >= count.nominal)
        return {0, TimecodeFault::Impossible};
    if (seconds == 0 && frames < count.dropped && minutes % 10 != 0)
        return {0, TimecodeFault::LeftOut};
    const std::uint32_t allMinutes = hours * 60 + minutes;
    const std::uint32_t label = (allMinutes * 60 + seconds) * count.nominal + frames;
    return {label - count.dropped * (allMinutes - allMinutes / 10), TimecodeFault::None};
}

} // namespace kv

bool KvTimecode::ToText(DWORD frame, EKvFrameRate rate, bool dropFrame, std::wstring& text)
{
    const kv::TimecodeCount count = kv::CountOfTimecode(rate, dropFrame);
    text.clear();
    if (frame == 0xFFFFFFFF || count.nominal == 0)
        return false;
    const std::uint32_t tenMinutes = count.FramesOfTenMinutes();
    const std::uint32_t inDay = frame % count.FramesOfDay();
    const std::uint32_t inTen = inDay % tenMinutes;
    // The first of ten minutes keeps its numbers: it is longer by those that the others leave out.
    const std::uint32_t minutes =
        inTen < count.dropped ? 0 : (inTen - count.dropped) / (60 * count.nominal - count.dropped);
    const std::uint32_t label = inDay + count.dropped * (9 * (inDay / tenMinutes) + minutes);
    const std::uint32_t seconds = label / count.nominal;
    const auto append = [&text](std::uint32_t number) {
        text += static_cast<wchar_t>(L'0' + number / 10);
        text += static_cast<wchar_t>(L'0' + number % 10);
    };
    append(seconds / 3600);
    text += L':';
    append(seconds / 60 % 60);
    text += L':';
    append(seconds % 60);
    text += count.dropped > 0 ? L';' : L':';
    append(label % count.nominal);
    return true;
}

bool KvTimecode::FromText(const std::wstring& text, EKvFrameRate rate, bool dropFrame, DWORD& frame)
{
    const kv::TimecodeCount count = kv::CountOfTimecode(rate, dropFrame);
    if (count.nominal == 0)
        return false;
    const kv::TimecodeFrame named = kv::FrameOfTimecode(text, count);
    if (named.fault != kv::TimecodeFault::None)
        return false;
    frame = named.frame;
    return true;
}
