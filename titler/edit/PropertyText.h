// How a title's animatable properties are shown: names, units, steps.
#pragma once

#include "KvTypes.h"
#include "edit/StepName.h"
#include "project/Animation.h"

#include <QString>

namespace titler {

struct PropertyLook
{
    UINT labelId; ///< the tip's number is one more, that of the name within a sentence two more
    UINT unitId;
    double factor; ///< shown number for a value of 1
    double step;   ///< of the arrows beside the field, as shown
    int decimals;
    double easeSpan; ///< around the value of two equal keys: what the ease dialog offers, as a value
};
const PropertyLook& LookOf(Property property);

/// "Gradient offset".
QString PropertyName(Property property);
/// "gradient offset", within a sentence.
QString PropertyWord(Property property);
/// A step of undo whose text names a property.
StepName PropertyStep(UINT textId, Property property);
/// "75.0 %".
QString ValueText(Property property, double value);

} // namespace titler
