// The windowing vocabulary over the toolkit: messages to a parent, dialog item numbers and the small
// interfaces and records that controls share. All of it belongs to the user-interface thread.
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

/// Packs two 16-bit values as a message parameter.
constexpr WPARAM MAKEWPARAM(UINT low, UINT high)
{
    return (static_cast<WPARAM>(high & 0xFFFFu) << 16) | (low & 0xFFFFu);
}
constexpr LPARAM MAKELPARAM(UINT low, UINT high)
{
    return static_cast<LPARAM>(MAKEWPARAM(low, high));
}
constexpr WORD LOWORD(std::uintptr_t value)
{
    return static_cast<WORD>(value & 0xFFFFu);
}
constexpr WORD HIWORD(std::uintptr_t value)
{
    return static_cast<WORD>((value >> 16) & 0xFFFFu);
}

/// Wide text (UTF-16 or UTF-32 by the platform) and the toolkit's text into one another. Nothing is lost:
/// characters beyond U+FFFF and lone surrogates come back as they were.
KV_API QString KvToQString(std::wstring_view text);
KV_API std::wstring KvFromQString(QStringView text);

/// One message on its way to a window. It is accepted when somebody answered.
class KV_API KvMessageEvent : public QEvent
{
public:
    KvMessageEvent(UINT messageNumber, WPARAM w, LPARAM l);
    ~KvMessageEvent() override;

    /// The event type of every KvMessageEvent, registered once for the process.
    static QEvent::Type EventType();

    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    LRESULT result = 0;
};

/// Delivers a message before it returns.
/// @return the receiver's answer; 0 when nobody answers or `to` is null.
KV_API LRESULT KvSendMessage(HWND to, UINT message, WPARAM wParam, LPARAM lParam);

/// Hears the messages that reach a window which is not a CKvWnd. It may be deleted, and may delete the
/// window, inside its handler.
class KV_API KvMessageSink : public QObject
{
public:
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
    DWORD background;
    DWORD textColour;
    DWORD disabledTextColour;
    QFont font;
};

/// What a host may tell any control. Never deleted through this interface: it has no virtual destructor.
class IKvGuiWnd
{
public:
    /// The control keeps the pointer, never the ownership; null returns it to the theme.
    virtual void SetGuiBasicSettings(SKvGuiBasicSettings*) {}
    /// Tells a tool window its manager.
    virtual void SetToolWndManager(void* /*manager*/) {}
};

/// A command's state in an idle update.
struct CCmdUI
{
    UINT m_nID = 0;
    virtual void Enable(BOOL) {}
};

/// A message as a pre-translation step sees it.
struct MSG
{
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

/// Gives a widget its dialog item number; works on any widget.
KV_API void KvSetDlgItemId(HWND window, UINT id);
/// @return the number; 0 until it is set, and for null.
KV_API UINT KvGetDlgItemId(HWND window);
/// @return the direct child of `parent` with that number; null when there is none, and for 0.
KV_API HWND KvGetDlgItem(HWND parent, UINT id);
