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
        {0, 20010, L"%s %%  #%s"},
        {0, 20011, L"Mid point %s %%"},
        {0, 20012, L"Gradient"},
        {0, 20013, L"Stop %d of %d, %s"},
        {0, 20014, L"Position %s percent"},
        {0, 20015, L"Mid point between stops %d and %d"},
        {0, 20016, L"%s, %s percent opaque"},
        {0, 20017, L"%s percent of the way"},
        {0, 20018, L"%s %%"},
        {0, 20020, L"black"},
        {0, 20021, L"grey"},
        {0, 20022, L"white"},
        {0, 20023, L"red"},
        {0, 20024, L"orange"},
        {0, 20025, L"brown"},
        {0, 20026, L"yellow"},
        {0, 20027, L"green"},
        {0, 20028, L"cyan"},
        {0, 20029, L"blue"},
        {0, 20030, L"purple"},
        {0, 20031, L"magenta"},
        {0, 20032, L"pink"},
    };
    return strings;
}

} // namespace kv
