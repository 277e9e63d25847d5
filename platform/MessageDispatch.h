// The way of a message through a window's handlers, the same for every base class.
#pragma once

#include "KvPlatform.h"

#include <optional>

namespace kv {

/// Hands a message to the window that it reached.
/// @param event the window's event.
/// @param onWndMsg the window's `OnWndMsg`, which may delete the window.
/// @return whether the message was handled; nullopt when the event is no message.
template <typename OnWndMsg>
std::optional<bool> DispatchMessage(QEvent& event, OnWndMsg onWndMsg)
{
    if (event.type() != KvMessageEvent::EventType())
        return std::nullopt;
    auto& message = static_cast<KvMessageEvent&>(event);
    LRESULT result = 0;
    const bool handled = onWndMsg(message.message, message.wParam, message.lParam, &result) != 0;
    message.result = handled ? result : 0; // a refusal is no answer, whatever the handler wrote
    message.setAccepted(handled);
    return handled;
}

/// The part of `OnWndMsg` that is for children's messages.
/// @param onNotify,onCommand the window's `OnNotify` and `OnCommand`.
/// @return non-zero when one of them handled it.
template <typename OnNotify, typename OnCommand>
BOOL DispatchToHandlers(UINT message, OnNotify onNotify, OnCommand onCommand)
{
    switch (message) {
    case WM_NOTIFY:
        return onNotify();
    case WM_COMMAND:
        return onCommand();
    default:
        return 0;
    }
}

} // namespace kv
