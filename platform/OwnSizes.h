// What a control is made of keeps the sizes that the control gives it.
#pragma once

#include <QWidget>

namespace kv {

/// For the style sheet of a part: what a host's sheet says of the sizes of its kind does not count, and what
/// the control sets does.
inline constexpr const char* kOwnSizes =
    "min-width: -1px; min-height: -1px; max-width: -1px; max-height: -1px;";

/// The style sheet of a painted part, which has no other use for one.
inline QString OwnSizesSheet()
{
    return QStringLiteral("* { %1 }").arg(QLatin1String(kOwnSizes));
}

/// For a painted part that has no parent yet: under the host's sheet it would have grown. Fonts are not
/// handed on to it any more.
inline void KeepOwnSizes(QWidget& part)
{
    part.setStyleSheet(OwnSizesSheet());
}

} // namespace kv
