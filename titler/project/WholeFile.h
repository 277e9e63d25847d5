// Files that are written whole or not at all.
#pragma once

#include <QByteArray>
#include <QString>

namespace titler {

/// Puts `bytes` in the place of a file; a fault leaves what is there. @return an empty text, or the system's
/// reason.
QString WriteWhole(const QString& file, const QByteArray& bytes);

} // namespace titler
