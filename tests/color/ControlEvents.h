// What a user does to a control, as events.
#pragma once

#include "KvPlatform.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>
#include <map>

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

/// Drags something over a point and drops it. @return whether the drop was taken.
inline bool Drop(QWidget& control, QPointF at, const QMimeData& data)
{
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&control, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    drop.ignore();
    QApplication::sendEvent(&control, &drop);
    return drop.isAccepted();
}

inline bool DropText(QWidget& control, QPointF at, const QString& text)
{
    QMimeData data;
    data.setText(text);
    return Drop(control, at, data);
}

/// A control in a window. What the user does to it, and what its parent hears of it, is written as text.
///
/// Steps: P, D, M, N and U with a point are press, second press of a double click, move, move without the
/// button and release; K with a key; X with a menu command and a point, Y with one by the menu key; H hides
/// the control, V its parent, E disables it.
template <typename Control>
class ControlTest : public testing::Test
{
protected:
    /// What stands behind a step's letter.
    struct Step
    {
        QString text;
        QString command; ///< before a point, with blanks
        QPoint at;
    };
    using Actions = std::map<char, std::function<void()>>;

    /// Puts a new control, shown and with the focus, in the place of the one before.
    void Renew(QSize size, DWORD id)
    {
        delete control;
        control = new Control;
        control->setGeometry({{}, size});
        control->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &parent, id);
        parent.resize(size);
        parent.show();
        QApplication::setActiveWindow(&parent); // the offscreen platform activates no window by itself
        control->setFocus();
    }
    /// A message of the control's.
    virtual void Hear(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    /// Steps of the control's own; they go before those of all.
    virtual Actions OwnActions(const Step&) { return {}; }
    void Say(const std::string& what) { heard += (heard.empty() ? "" : " ") + what; }
    std::string Heard() { return std::exchange(heard, {}); }

    void Mouse(QEvent::Type type, QPointF at, Qt::MouseButtons buttons)
    {
        SendMouse(*control, type, at, buttons);
    }
    void Run(const char* steps)
    {
        for (const QString& step : QString(steps).split(' ')) {
            if (control)
                Do(step.front().toLatin1(), step.mid(1));
        }
    }
    /// Something takes the mouse from the control, which ends a drag from the event loop.
    void Lose(const std::function<void()>& take)
    {
        take();
        QCoreApplication::sendPostedEvents(control);
    }

    QWidget parent;
    KvMessageSink sink{&parent, [this](UINT message, WPARAM wParam, LPARAM lParam) {
                           Hear(message, wParam, lParam);
                           return std::optional<LRESULT>();
                       }};
    QPointer<Control> control;
    std::string heard;

private:
    void Do(char letter, const QString& text)
    {
        const QStringList parts = text.split(u',');
        const QPoint at = parts.size() < 2 ? QPoint() : QPoint(parts.end()[-2].toInt(), parts.back().toInt());
        const Step step{text, QString(parts.front()).replace(u'_', u' '), at};
        const QKeyCombination key = QKeySequence(text)[0];
        const Actions common{
            {'P', [&] { Mouse(QEvent::MouseButtonPress, at, Qt::LeftButton); }},
            {'D', [&] { Mouse(QEvent::MouseButtonDblClick, at, Qt::LeftButton); }},
            {'M', [&] { Mouse(QEvent::MouseMove, at, Qt::LeftButton); }},
            {'N', [&] { Mouse(QEvent::MouseMove, at, {}); }},
            {'U', [&] { Mouse(QEvent::MouseButtonRelease, at, {}); }},
            {'K', [&] { QTest::keyClick(control.data(), key.key(), key.keyboardModifiers()); }},
            {'X', [&] { UseContextMenu(*control, at, step.command); }},
            {'Y', [&] { UseContextMenu(*control, {}, step.command, QContextMenuEvent::Keyboard); }},
            {'H', [&] { Lose([&] { control->hide(); }); }},
            {'V', [&] { Lose([&] { parent.hide(); }); }},
            {'E', [&] { Lose([&] { control->setEnabled(false); }); }},
        };
        const Actions own = OwnActions(step);
        const auto action = own.find(letter);
        (action == own.end() ? common.at(letter) : action->second)();
    }
};
