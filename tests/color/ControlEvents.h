// What a user does to a control, as events.
#pragma once

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

inline void SendMouse(QWidget& control, QEvent::Type type, QPointF at, Qt::MouseButtons buttons)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, control.mapToGlobal(at), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(&control, &event);
}

/// Opens the context menu at a point and chooses a command, or closes it. @return the disabled items.
inline QStringList UseContextMenu(QWidget& control, QPoint at, const QString& choice = {},
                                  QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse)
{
    QStringList disabled;
    const auto name = [](const QAction* action) { return action->text().section('\t', 0, 0).remove('&'); };
    QTimer::singleShot(0, &control, [&disabled, &choice, name] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QAction* chosen = nullptr;
        for (QAction* action : menu->actions()) {
            if (!action->isEnabled())
                disabled << name(action);
            if (!action->isSeparator() && name(action) == choice)
                chosen = action;
        }
        menu->setActiveAction(chosen);
        if (chosen)
            QTest::keyClick(menu, Qt::Key_Return);
        else
            menu->close();
    });
    QContextMenuEvent event(reason, at, control.mapToGlobal(at));
    QApplication::sendEvent(&control, &event);
    return disabled;
}

/// Drags text over a point and drops it. @return whether the drop was taken.
inline bool DropText(QWidget& control, QPoint at, const QString& text)
{
    QMimeData data;
    data.setText(text);
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&control, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    drop.ignore();
    QApplication::sendEvent(&control, &drop);
    return drop.isAccepted();
}
