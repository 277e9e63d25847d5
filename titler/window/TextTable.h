// titler's own texts, in English.
#pragma once

#include "KvGuiRes.h"

#include <span>

namespace titler {

std::span<const KvStringEntry> OwnTexts();

} // namespace titler
