// The program as a user sees it, for the pictures of the documentation.
#pragma once

#include "KvDialog.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>

namespace titler {

/// A window with the library's dialogs that stand over it.
inline QPixmap PictureOf(QWidget& window)
{
    QPixmap picture = window.grab();
    QPainter painter(&picture);
    for (QWidget* dialog : QApplication::topLevelWidgets())
        if (qobject_cast<CKvDialog*>(dialog) != nullptr && dialog->isVisible())
            painter.drawPixmap(window.mapFromGlobal(dialog->pos()), dialog->grab());
    return picture;
}

} // namespace titler
