#include "resources/Tables.h"

namespace kv {

// No control has a dialog template yet; an overlay may still bring dialog texts of a host's own.
std::span<const TextEntry> BuiltInDialogTexts()
{
    return {};
}

} // namespace kv
