#include "color/SwatchTexts.h"

#include "KvPlatform.h"
#include "color/FixedAlphas.h"
#include "color/GradientColour.h"
#include "core/Text.h"
#include "core/TextTables.h"

namespace kv {

QString ChannelsText(std::uint32_t colour)
{
    const auto number = [](std::uint32_t value) { return NumberText(std::int64_t{value}); };
    const QString hex = QString::number(colour, 16).rightJustified(8, u'0').toUpper();
    return KvToQString(FillText(LoadText(kTextChannels),
                                {number(RedOf(colour)), number(GreenOf(colour)), number(BlueOf(colour)),
                                 number(AlphaOf(colour)), KvFromQString(hex)}));
}

QString AlphaText(int index)
{
    const std::int64_t alpha = kFixedAlphas[static_cast<std::size_t>(index)];
    return KvToQString(FillText(LoadText(kTextAlphaCell), {NumberText(alpha)}));
}

} // namespace kv
