// Stops as a person would write them.
#pragma once

#include "KvTypes.h"

#include <cmath>
#include <map>
#include <span>
#include <sstream>
#include <string>

/// A letter for the colour, the position in percent and, behind "/", the mid point where it is not half way;
/// "*" stands before the selected stop.
inline std::string GradientText(std::span<const SKvCGGradientKey> keys, int selected)
{
    const std::map<std::uint32_t, std::string> names{
        {0xFF0000FFu, "B"}, {0xFFFFFF00u, "Y"}, {0xFFFF0000u, "R"}, {0xFFFF00FFu, "M"}};
    std::ostringstream text;
    int index = 0;
    for (const SKvCGGradientKey& key : keys) {
        text << (index == 0 ? "" : " ") << (index == selected ? "*" : "");
        const auto name = names.find(key.colour);
        name == names.end() ? text << std::hex << key.colour << std::dec << ':' : text << name->second;
        text << std::round(key.position * 1000) / 10;
        if (key.midPoint != 0.5f)
            text << '/' << std::round(key.midPoint * 100);
        ++index;
    }
    return text.str();
}
