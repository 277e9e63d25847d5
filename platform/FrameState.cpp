#include "platform/FrameState.h"

#include "KvMenu.h"
#include "KvWnd.h"

#include <QCoreApplication>
#include <QMenu>
#include <QPointer>

namespace kv {

int FrameShowState(const QWidget& frame)
{
    if (frame.isMinimized())
        return kShowMinimised;
    return IsFrameZoomed(frame) ? kShowMaximised : kShowNormal;
}

bool IsFrameZoomed(const QWidget& frame)
{
    return !frame.isMinimized() && (frame.isMaximized() || frame.isFullScreen());
}

bool HasMaximiseBox(const QWidget& frame)
{
    return frame.windowFlags().testFlag(Qt::WindowMaximizeButtonHint);
}

bool HasResizeBorder(const QWidget& frame)
{
    return qobject_cast<const CKvFrameWnd*>(&frame) && FrameShowState(frame) == kShowNormal &&
           frame.minimumSize() != frame.maximumSize();
}

void ShowFrame(QWidget& frame, int showCommand)
{
    switch (showCommand) {
    case kShowNormal:
        frame.showNormal();
        break;
    case kShowMinimised:
        frame.showMinimized();
        break;
    case kShowMaximised:
        frame.showMaximized();
        break;
    default:
        break;
    }
}

bool RequestFrameState(QWidget& frame, int showCommand)
{
    if (auto* window = qobject_cast<CKvFrameWnd*>(&frame))
        return window->RequestShowState(showCommand) != 0;
    ShowFrame(frame, showCommand);
    return true;
}

void CloseFrame(QWidget& frame)
{
    const QPointer<QWidget> alive(&frame);
    KvMessageEvent message(WM_CLOSE, 0, 0);
    QCoreApplication::sendEvent(&frame, &message);
    if (alive && !message.isAccepted())
        alive->close();
}

namespace {

QAction* FindEntry(const QMenu& menu, UINT command)
{
    for (QAction* action : menu.actions()) {
        if (KvGetMenuCommand(action) == command)
            return action;
    }
    return nullptr;
}

void RemoveMaximiseEntries(QMenu& menu)
{
    for (const UINT command : {kCommandRestore, kCommandMinimise, kCommandMaximise})
        delete FindEntry(menu, command);
    const QList<QAction*> actions = menu.actions();
    const qsizetype close = actions.indexOf(FindEntry(menu, kCommandClose));
    if (close > 0 && actions[close - 1]->isSeparator())
        delete actions[close - 1];
}

} // namespace

void EnableFrameEntries(CKvMenu& menu, const QWidget& frame)
{
    const bool zoomed = IsFrameZoomed(frame);
    menu.EnableMenuItem(kCommandRestore, zoomed ? 1 : 0);
    menu.EnableMenuItem(kCommandMaximise, zoomed ? 0 : 1);
}

void FitFrameEntries(CKvMenu& menu, const QWidget& frame)
{
    if (!menu.GetHandle())
        return;
    if (!HasMaximiseBox(frame)) {
        RemoveMaximiseEntries(*menu.GetHandle());
        return;
    }
    EnableFrameEntries(menu, frame);
}

bool DoFrameCommand(QWidget& frame, UINT command)
{
    switch (command) {
    case kCommandRestore:
        RequestFrameState(frame, kShowNormal);
        return true;
    case kCommandMaximise:
        RequestFrameState(frame, kShowMaximised);
        return true;
    case kCommandMinimise:
        RequestFrameState(frame, kShowMinimised);
        return true;
    case kCommandClose:
        CloseFrame(frame);
        return true;
    default:
        return false;
    }
}

} // namespace kv
