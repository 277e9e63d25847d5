#include "resources/Tables.h"

namespace kv {

std::span<const TextEntry> BuiltInStrings()
{
    static constexpr TextEntry strings[] = {
        {0, 7016, L"Rule don't allow set empty."},
        {0, 7018, L"The following characters are not allowed : \r\n%s"},
        {0, 7020, L"%.1f KHz, %d bit, %s"},
        {0, 7021, L"The rule contains invalid label %s"},
        {0, 7022, L"The rule contains duplicate labels %s"},
        {0, 7023, L"Unknown"},
        {0, 7024, L"VideoAudio"},
        {0, 7025, L"Audio"},
        {0, 10023, L"1.0(Pixel Ratio)"},
        {0, 12024, L"Upper First"},
        {0, 12025, L"Lower First"},
        {0, 12026, L"Progressive"},
        {0, 12027, L"ProgressiveSegmented"},
        {0, 12072, L"Mono"},
        {0, 12073, L"Stereo"},
        {0, 12074, L"%d ch"},
        {0, 12075, L"%d KHz, %d bit, %s"},
    };
    return strings;
}

} // namespace kv
