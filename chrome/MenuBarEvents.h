// What a menu bar hears beside its own events: keys of its window, keys and mouse of its popups.
#pragma once

#include "KvTypes.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

class QKeyEvent;
class QMenu;
class QMouseEvent;

namespace kv {

class MenuBarStrip;

class MenuBarEvents : public QObject
{
public:
    explicit MenuBarEvents(MenuBarStrip& strip);

    /// A popup is about to open: the pointer may rest where it rests.
    void NotePointer();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void HearKey(QWidget& receiver, const QKeyEvent& event);
    bool IsPassedOn(QWidget& receiver, const QKeyEvent& event);
    void PressMnemonic(UINT key);

    bool IsOfPopup(const QMenu& menu) const;
    bool HearPopupKey(const QMenu& menu, const QKeyEvent& event);
    bool HearPopupMove(const QMouseEvent& event);
    void HearPopupPress(const QMenu& menu, const QMouseEvent& event);
    int ItemAt(const QPoint& screen) const;

    MenuBarStrip& m_strip;
    int m_answeredKey = 0; ///< by its shortcut override; the press that follows is the same key
    QPoint m_pointer;
    // The event that was heard last, and where.
    const QKeyEvent* m_event = nullptr;
    quint64 m_time = 0;
    QPointer<QWidget> m_receiver;
};

} // namespace kv
