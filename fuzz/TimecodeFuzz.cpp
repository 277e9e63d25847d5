// Rate and drop frame, an offset, a cell's value, and a text. What is read must be shown, and read again.
#include "KvTimecode.h"
#include "Require.h"
#include "text/TimecodeEdit.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t headSize = 6;
    if (size < headSize)
        return 0;
    // One beyond the table at times.
    const kv::TimecodeFormat format{static_cast<EKvFrameRate>(data[0] % 9), (data[0] & 0x10) != 0,
                                    data[1] * 0x1010101u};
    const std::uint32_t present =
        data[2] | std::uint32_t{data[3]} << 8 | std::uint32_t{data[4]} << 16 | std::uint32_t{data[5]} << 24;
    std::wstring text;
    for (std::size_t i = headSize; i < size; ++i)
        text += static_cast<wchar_t>(data[i] == 0 ? 0x661 : data[i]); // a digit of another script

    DWORD frame = 0;
    std::wstring shown;
    if (KvTimecode::FromText(text, format.rate, format.dropFrame, frame)) {
        const DWORD read = frame;
        Require(KvTimecode::ToText(frame, format.rate, format.dropFrame, shown) && shown.size() == 11);
        Require(KvTimecode::FromText(shown, format.rate, format.dropFrame, frame) && frame == read);
    }
    const kv::TimecodeEntry entry = kv::ReadTimecodeEntry(text, present, format);
    Require(entry.refusal == 0 || entry.frame == present);
    const kv::TimecodeEntry again =
        kv::ReadTimecodeEntry(kv::TimecodeText(entry.frame, format), entry.frame, format);
    Require(again.frame == entry.frame && again.refusal == 0);
    kv::IsWholeTimecode(text);
    return 0;
}
