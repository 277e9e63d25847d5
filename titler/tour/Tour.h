// The program shows itself: mouse and keys as a user's, a picture after each step, and whether it did what it
// should.
#pragma once

#include <QSize>
#include <QString>

namespace titler {

/// Needs a QApplication on the offscreen platform. Writes "01-start.png" and so on, and "captions.txt" with a
/// line for each: name, tab, caption.
/// @param folder is made where it is not there. @param report what was written.
/// @return an empty text, or a sentence for the user about the step that failed; there are no pictures of the
/// ones behind it.
QString RunTour(const QString& folder, QSize window, QString& report);

} // namespace titler
