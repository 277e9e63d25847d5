// The program as a user sees it, for the pictures of the documentation.
#pragma once

#include "KvDialog.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>

namespace titler {

/// Puts a dialog into a window's lower right corner, above the status line, so that its picture has all of
/// it.
inline void MoveInto(QWidget& dialog, const QWidget& window)
{
    constexpr QPoint margin(8, 40);
    dialog.move(window.mapToGlobal(window.rect().bottomRight()) - margin -
                QPoint(dialog.width(), dialog.height()));
}

/// A window with the library's dialogs that stand over it, with a line around each.
inline QPixmap PictureOf(QWidget& window)
{
    QPixmap picture = window.grab();
    QPainter painter(&picture);
    for (QWidget* dialog : QApplication::topLevelWidgets())
        if (qobject_cast<CKvDialog*>(dialog) != nullptr && dialog->isVisible()) {
            const QRect place(window.mapFromGlobal(dialog->pos()), dialog->size());
            painter.drawPixmap(place.topLeft(), dialog->grab());
            painter.setPen(dialog->palette().color(QPalette::Mid)); // where a desktop puts a frame
            painter.drawRect(place.adjusted(-1, -1, 0, 0));
        }
    return picture;
}

} // namespace titler
