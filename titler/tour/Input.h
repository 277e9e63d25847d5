// Keys and clicks as a user's, for the program's own window.
#pragma once

#include <Qt>

class QPoint;
class QString;
class QWidget;

namespace titler {

/// Presses and releases a key in a widget. Shortcuts of its window go first, except where the widget has its
/// own use for the key.
void SendKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers);
/// Types it, in ASCII.
void SendText(QWidget& widget, const QString& text);
/// A click of the left button. The widget, else the one around it, takes the focus where a click gives it.
void SendClick(QWidget& widget, QPoint place);
/// The three parts of a drag with the left button.
void SendPress(QWidget& widget, QPoint place);
void SendMove(QWidget& widget, QPoint place);
void SendRelease(QWidget& widget, QPoint place);
/// All of them at once.
void SendDrag(QWidget& widget, QPoint from, QPoint to);

} // namespace titler
