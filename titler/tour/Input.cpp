#include "tour/Input.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

QT_BEGIN_NAMESPACE
// What the toolkit's test library calls for it: true when the key was a shortcut.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* o, ulong timestamp, int k, Qt::KeyboardModifiers mods,
                                               const QString& text, bool autorep, ushort count);
QT_END_NAMESPACE

namespace titler {
namespace {

void Send(QWidget& widget, int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    if (qt_sendShortcutOverrideEvent(&widget, 0, key, modifiers, text, false, 1))
        return;
    const QPointer<QWidget> target(&widget); // a key may close what it is pressed in
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        if (target != nullptr)
            QCoreApplication::sendEvent(target, &event);
    }
}

// Also where what was done before has closed the widget.
void SendMouse(const QPointer<QWidget>& target, QEvent::Type type, QPoint place)
{
    if (target == nullptr)
        return;
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, target->mapToGlobal(place), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

} // namespace

void SendKey(QWidget& widget, int key, Qt::KeyboardModifiers modifiers)
{
    Send(widget, key, modifiers, {});
}

// A key has the number of its capital letter.
void SendText(QWidget& widget, const QString& text)
{
    const QPointer<QWidget> target(&widget);
    for (const QChar letter : text)
        if (target != nullptr)
            Send(*target, letter.toUpper().unicode(), letter.isUpper() ? Qt::ShiftModifier : Qt::NoModifier,
                 letter);
}

void SendClick(QWidget& widget, QPoint place)
{
    QWidget* focus = &widget;
    while (focus != nullptr && (focus->focusPolicy() & Qt::ClickFocus) != Qt::ClickFocus)
        focus = focus->isWindow() ? nullptr : focus->parentWidget();
    if (focus != nullptr)
        focus->setFocus(Qt::MouseFocusReason);
    const QPointer<QWidget> target(&widget);
    SendMouse(target, QEvent::MouseButtonPress, place);
    SendMouse(target, QEvent::MouseButtonRelease, place);
}

void SendPress(QWidget& widget, QPoint place)
{
    SendMouse(&widget, QEvent::MouseButtonPress, place);
}

void SendMove(QWidget& widget, QPoint place)
{
    SendMouse(&widget, QEvent::MouseMove, place);
}

void SendRelease(QWidget& widget, QPoint place)
{
    SendMouse(&widget, QEvent::MouseButtonRelease, place);
}

void SendDrag(QWidget& widget, QPoint from, QPoint to)
{
    const QPointer<QWidget> target(&widget);
    SendMouse(target, QEvent::MouseButtonPress, from);
    SendMouse(target, QEvent::MouseMove, (from + to) / 2);
    SendMouse(target, QEvent::MouseMove, to);
    SendMouse(target, QEvent::MouseButtonRelease, to);
}

} // namespace titler
