// The window base's private part.
#pragma once

#include "KvWnd.h"
#include "platform/CaptureWatcher.h"

#include <QBasicTimer>

#include <memory>
#include <unordered_map>

struct CKvWnd::Impl
{
    bool created = false;
    bool createsItself = false;  ///< when it is first shown
    bool isCreatingItself = false;
    bool unhandled = false; ///< set by the default handlers: the event goes on to the parent
    Qt::MouseButton lastPressed = Qt::LeftButton; ///< the one that a drag is made with
    std::unordered_map<UINT, QBasicTimer> timers;
    std::unique_ptr<kv::CaptureWatcher> capture;
};
