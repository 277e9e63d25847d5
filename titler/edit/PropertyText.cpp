#include "edit/PropertyText.h"

#include "window/Texts.h"

#include <QLocale>

namespace titler {

const PropertyLook& LookOf(Property property)
{
    static constexpr PropertyLook looks[kProperties] = {
        {kTextPropertyX, kTextPercent, 1, 1, 2, 50},
        {kTextPropertyY, kTextPercent, 1, 1, 2, 50},
        {kTextPropertyScale, kTextPercent, 1, 5, 1, 50},
        {kTextPropertyRotation, kTextDegrees, 1, 5, 1, 90},
        {kTextPropertyOpacity, kTextPercent, 1, 5, 1, 100},
        {kTextPropertyOffset, kTextPercent, 100, 1, 1, 0.5},
    };
    return looks[static_cast<std::size_t>(property)];
}

QString PropertyName(Property property)
{
    QString name = PropertyWord(property);
    if (!name.isEmpty())
        name[0] = name[0].toUpper();
    return name;
}

QString PropertyWord(Property property)
{
    return Text(LookOf(property).labelId + 2);
}

StepName PropertyStep(UINT textId, Property property)
{
    return [textId, property] { return Text(textId, {PropertyWord(property)}); };
}

QString ValueText(Property property, double value)
{
    const PropertyLook& look = LookOf(property);
    return QLocale().toString(value * look.factor, 'f', look.decimals) + Text(look.unitId);
}

} // namespace titler
