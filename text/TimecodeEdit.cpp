#include "text/TimecodeEdit.h"

#include "KvTimecode.h"
#include "text/TimecodeLabel.h"

#include <algorithm>

namespace kv {
namespace {

std::uint32_t TextOf(TimecodeFault fault)
{
    switch (fault) {
    case TimecodeFault::NoTimecode:
        return kNoTimecodeText;
    case TimecodeFault::Impossible:
        return kImpossibleTimecodeText;
    case TimecodeFault::LeftOut:
        return kLeftOutTimecodeText;
    case TimecodeFault::None:
        break;
    }
    return 0;
}

// Frames where the text is a number alone, however long.
std::optional<std::int64_t> StepOf(std::wstring_view text, std::int64_t nominal)
{
    const bool isNumber = !text.empty() && std::all_of(text.begin(), text.end(),
                                                       [](wchar_t c) { return c >= L'0' && c <= L'9'; });
    std::int64_t step = 0;
    if (isNumber) {
        for (const wchar_t digit : text) // beyond all time codes it does not count how far
            step = std::min<std::int64_t>(step * 10 + (digit - L'0'), kNoTimecode);
        return step;
    }
    const std::optional<TimecodeFields> fields = FieldsOfTimecode(text);
    if (!fields)
        return std::nullopt;
    const auto [hours, minutes, seconds, frames] = *fields;
    return ((std::int64_t{hours} * 60 + minutes) * 60 + seconds) * nominal + std::int64_t{frames};
}

TimecodeEntry Step(std::wstring_view typed, std::uint32_t present, std::int64_t nominal)
{
    const std::optional<std::int64_t> step = StepOf(TrimTimecode(typed.substr(1)), nominal);
    if (!step)
        return {present, kNoTimecodeText};
    const std::int64_t from = present == kNoTimecode ? 0 : present;
    const std::int64_t to = typed.front() == L'-' ? from - *step : from + *step;
    if (to < 0 || to >= kNoTimecode)
        return {present, kOutOfRangeTimecodeText};
    return {static_cast<std::uint32_t>(to), 0};
}

} // namespace

std::wstring TimecodeText(std::uint32_t frame, const TimecodeFormat& format)
{
    std::wstring text;
    const std::uint32_t day = CountOfTimecode(format.rate, format.dropFrame).FramesOfDay();
    if (frame != kNoTimecode && day > 0) {
        const auto shown = static_cast<DWORD>((std::uint64_t{frame} + format.offset) % day);
        KvTimecode::ToText(shown, format.rate, format.dropFrame, text);
    }
    return text;
}

TimecodeEntry ReadTimecodeEntry(std::wstring_view text, std::uint32_t present, const TimecodeFormat& format)
{
    const std::wstring_view typed = TrimTimecode(text);
    if (typed == TimecodeText(present, format))
        return {present, 0};
    if (typed.empty())
        return {kNoTimecode, 0};
    const TimecodeCount count = CountOfTimecode(format.rate, format.dropFrame);
    if (count.nominal == 0)
        return {present, kNoTimecodeText};
    if (typed.front() == L'+' || typed.front() == L'-')
        return Step(typed, present, count.nominal);
    const TimecodeFrame label = FrameOfTimecode(typed, count);
    if (label.fault != TimecodeFault::None)
        return {present, TextOf(label.fault)};
    const std::uint32_t day = count.FramesOfDay();
    return {(label.frame + day - format.offset % day) % day, 0};
}

bool IsWholeTimecode(std::wstring_view text)
{
    const std::wstring_view trimmed = TrimTimecode(text);
    const auto separators =
        std::count_if(trimmed.begin(), trimmed.end(), [](wchar_t c) { return c == L':' || c == L';'; });
    return FieldsOfTimecode(trimmed) && (separators == 3 || (separators == 0 && trimmed.size() == 8));
}

} // namespace kv
