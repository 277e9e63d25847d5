#include "Animation.h"

namespace titler {

const PropertyTraits& TraitsOf(Property property)
{
    static constexpr PropertyTraits traits[kProperties] = {
        {"x", -200, 200, 0},          {"y", -200, 200, 0},      {"scale", 0, 1000, 100},
        {"rotation", -3600, 3600, 0}, {"opacity", 0, 100, 100}, {"gradientOffset", -1, 1, 0},
    };
    return traits[static_cast<std::size_t>(property)];
}

Properties StillProperties()
{
    Properties properties;
    for (int i = 0; i < kProperties; ++i)
        properties[static_cast<std::size_t>(i)].value = TraitsOf(static_cast<Property>(i)).still;
    return properties;
}

} // namespace titler
