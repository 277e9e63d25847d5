// The program shows itself in motion: a stop dragged, a colour changed, an ease shaped, and the title played.
#pragma once

#include <QSize>
#include <QString>

namespace titler {

/// Needs a QApplication on the offscreen platform. Writes "0001.png" and so on, frames of equal length with
/// the pointer in them, to be joined into one animated picture.
/// @param folder is made where it is not there. @param report what was written.
/// @return an empty text, or a sentence for the user about the step that failed.
QString RunFilm(const QString& folder, QSize window, QString& report);

} // namespace titler
