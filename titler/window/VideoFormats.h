// The video formats that are offered by name.
#pragma once

#include "KvVideoFormat.h"

#include <QString>

#include <span>

namespace titler {

std::span<const SKvVideoResolution> VideoFormats();
QString FormatText(const SKvVideoResolution& format);
bool IsSameFormat(const SKvVideoResolution& a, const SKvVideoResolution& b);

} // namespace titler
