/// @file
/// The windowing vocabulary over the toolkit: messages to a parent, dialog item numbers and the small
/// interfaces and records that controls share. All of it belongs to the user-interface thread.
#pragma once

#include "KvTypes.h"

#include <QEvent>
#include <QFont>
#include <QObject>
#include <QPainter>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// What a control draws with.
using Graphics = QPainter;

inline CPoint::CPoint(const QPoint& point) : x(point.x()), y(point.y()) {}
inline CPoint::operator QPoint() const
{
    return {x, y};
}
inline CSize::CSize(const QSize& size) : cx(size.width()), cy(size.height()) {}
inline CSize::operator QSize() const
{
    return {cx, cy};
}
inline CRect::CRect(const QRect& rect)
    : left(rect.x())
    , top(rect.y())
    , right(rect.x() + rect.width())
    , bottom(rect.y() + rect.height())
{
}
inline CRect::operator QRect() const
{
    return {left, top, Width(), Height()};
}

///@{
/// Packs two 16-bit values as a message parameter. @param low, high of which 16 bits each count.
/// @return high × 65,536 + low.
constexpr WPARAM MAKEWPARAM(UINT low, UINT high)
{
    return (static_cast<WPARAM>(high & 0xFFFFu) << 16) | (low & 0xFFFFu);
}
constexpr LPARAM MAKELPARAM(UINT low, UINT high)
{
    return static_cast<LPARAM>(MAKEWPARAM(low, high));
}
///@}
/// @param value a message parameter. @return its bits 0 … 15.
constexpr WORD LOWORD(std::uintptr_t value)
{
    return static_cast<WORD>(value & 0xFFFFu);
}
/// @param value a message parameter. @return its bits 16 … 31.
constexpr WORD HIWORD(std::uintptr_t value)
{
    return static_cast<WORD>((value >> 16) & 0xFFFFu);
}

///@{
/// Wide text (UTF-16 or UTF-32 by the platform) and the toolkit's text into one another. Nothing is lost:
/// characters beyond U+FFFF and lone surrogates come back as they were. @param text the text.
/// @return the same text.
KV_API QString KvToQString(std::wstring_view text);
KV_API std::wstring KvFromQString(QStringView text);
///@}

/// One message on its way to a window. It is accepted when somebody answered.
class KV_API KvMessageEvent : public QEvent
{
public:
    /// @param messageNumber WM_… @param w, l its parameters, as the message has them.
    KvMessageEvent(UINT messageNumber, WPARAM w, LPARAM l);
    ~KvMessageEvent() override;

    /// @return the event type of every KvMessageEvent, registered once for the process.
    static QEvent::Type EventType();

    UINT message;       ///< WM_…
    WPARAM wParam;      ///< as the message has it
    LPARAM lParam;      ///< as the message has it
    LRESULT result = 0; ///< the answer; the receiver writes it
};

/// Delivers a message before it returns.
/// @param to its receiver; may be null. @param message WM_… @param wParam, lParam as the message has them.
/// @return the receiver's answer; 0 when nobody answers or `to` is null.
KV_API LRESULT KvSendMessage(HWND to, UINT message, WPARAM wParam, LPARAM lParam);

/// Hears the messages that reach a window which is not a CKvWnd. It may be deleted, and may delete the
/// window, inside its handler.
class KV_API KvMessageSink : public QObject
{
public:
    /// Answers a message, or lets it go on by nullopt.
    using Handler = std::function<std::optional<LRESULT>(UINT message, WPARAM wParam, LPARAM lParam)>;

    /// @param window whose messages are heard; the sink becomes its child. Null hears nothing.
    /// @param handler a value means handled (also when it is 0), nullopt lets the message go on.
    KvMessageSink(QWidget* window, Handler handler);
    ~KvMessageSink() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Handler m_handler;
};

/// Colours (0xAARRGGBB) and font that a host gives a control instead of the theme's.
struct SKvGuiBasicSettings
{
    DWORD background;         ///< of the whole control
    DWORD textColour;         ///< of texts
    DWORD disabledTextColour; ///< of texts while the control is disabled
    QFont font;               ///< of all texts
};

KV_INTERFACES_BEGIN

/// What a host may tell any control. Never deleted through this interface: it has no virtual destructor.
class IKvGuiWnd
{
public:
    /// @param settings colours and font; the control keeps the pointer, never the ownership. Null returns it
    /// to the theme.
    virtual void SetGuiBasicSettings(SKvGuiBasicSettings* /*settings*/) {}
    /// Tells a tool window its manager.
    /// @param manager the bar's IKvRibbonTitleBarMgr or IKvRibbonMenuBarMgr, whichever bar it is.
    virtual void SetToolWndManager(void* /*manager*/) {}
};

/// A command's state in an idle update.
struct CCmdUI
{
    UINT m_nID = 0; ///< the command's number
    /// @param enable 0: the command cannot be used now.
    virtual void Enable(BOOL /*enable*/) {}
};

KV_INTERFACES_END

/// A message as a pre-translation step sees it.
struct MSG
{
    HWND hwnd;     ///< whom it is for
    UINT message;  ///< WM_…
    WPARAM wParam; ///< as the message has it
    LPARAM lParam; ///< as the message has it
};

/// Gives a window its dialog item number. @param window any widget; null is ignored.
/// @param id 0 takes it away.
KV_API void KvSetDlgItemId(HWND window, UINT id);
/// @param window any widget; may be null. @return its number; 0 until it is set, and for null.
KV_API UINT KvGetDlgItemId(HWND window);
/// @param parent may be null. @param id a number.
/// @return the direct child of `parent` that has it; null when there is none, and for 0.
KV_API HWND KvGetDlgItem(HWND parent, UINT id);
