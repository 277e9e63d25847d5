#include "resources/Tables.h"

namespace kv {

// No control has a fixed tool tip yet; an overlay may still bring tips of a host's own.
std::span<const TextEntry> BuiltInTips()
{
    return {};
}

} // namespace kv
