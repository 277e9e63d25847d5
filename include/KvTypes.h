/// @file
/// The vocabulary that needs no toolkit: numbers, geometry, message constants, message boxes and the
/// plain records that a control shares with its host.
#pragma once

#if defined(_WINDOWS_) || defined(_INC_WINDOWS)
#error                                                                                                       \
    "KvTypes.h declares the windowing vocabulary itself: include it in a translation unit without <windows.h>"
#endif

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#if defined(_WIN32) && !defined(KV_CORE_STATIC)
#if defined(KV_BUILDING_LIBRARY)
#define KV_API __declspec(dllexport)
#else
#define KV_API __declspec(dllimport)
#endif
#elif defined(_WIN32)
#define KV_API
#else
/// Marks what the shared library exports; everything else is hidden.
#define KV_API __attribute__((visibility("default")))
#endif

#if defined(__GNUC__)
#define KV_INTERFACES_BEGIN                                                                                  \
    _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wnon-virtual-dtor\"")
#define KV_INTERFACES_END _Pragma("GCC diagnostic pop")
#else
/// Stands before interfaces without virtual destructors, and classes that derive from them: nothing is
/// deleted through these, and the order of their operations is fixed. So a host's -Wnon-virtual-dtor says
/// nothing of these headers; its own classes of that kind may stand between this and the end as well.
#define KV_INTERFACES_BEGIN
/// Stands behind them.
#define KV_INTERFACES_END
#endif

class QWidget;
class QMenu;
class QPoint;
class QSize;
class QRect;

/// 8 bits, 0 … 255.
using BYTE = std::uint8_t;
/// 16 bits, 0 … 65,535.
using WORD = std::uint16_t;
/// Also every `unsigned long` of an operation: 32 bits on every platform.
using DWORD = std::uint32_t;
/// 32 bits; numbers, styles and identifiers.
using UINT = std::uint32_t;
/// 0 is false; results are exactly 1 or 0.
using BOOL = int;
///@{
/// A message's parameters and its answer: as wide as a pointer.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
///@}

/// The handle of a window or control is the widget itself; null for none.
using HWND = QWidget*;
/// A window by the name that the field has for it.
using CWnd = QWidget;
/// The handle of a menu is the menu itself; null for none.
using HMENU = QMenu*;

/// A wide text: UTF-16 or UTF-32, as the platform has wchar_t.
using CString = std::wstring;
/// A growable array of texts.
using CStringArray = std::vector<std::wstring>;
/// A growable array. The second argument is accepted for the field's declarations and unused.
template <typename T, typename ARG = const T&>
using CArray = std::vector<T>;

/// A point in pixels. The conversions to and from the toolkit's type are defined in KvPlatform.h.
struct CPoint
{
    int x = 0; ///< to the right
    int y = 0; ///< downwards

    /// The origin.
    constexpr CPoint() = default;
    /// @param px, py in pixels.
    constexpr CPoint(int px, int py) : x(px), y(py) {}
    /// @param point the toolkit's.
    CPoint(const QPoint& point);
    /// @return the toolkit's point.
    operator QPoint() const;

    ///@{
    /// Compares both coordinates. @param a, b the points. @return the outcome.
    friend constexpr bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
    friend constexpr bool operator!=(const CPoint& a, const CPoint& b) { return !(a == b); }
    ///@}
};

/// A size in pixels.
struct CSize
{
    int cx = 0; ///< width; negative ones are kept
    int cy = 0; ///< height

    /// Nothing by nothing.
    constexpr CSize() = default;
    /// @param width, height in pixels.
    constexpr CSize(int width, int height) : cx(width), cy(height) {}
    /// @param size the toolkit's.
    CSize(const QSize& size);
    /// @return the toolkit's size.
    operator QSize() const;

    ///@{
    /// Compares width and height. @param a, b the sizes. @return the outcome.
    friend constexpr bool operator==(const CSize& a, const CSize& b) { return a.cx == b.cx && a.cy == b.cy; }
    friend constexpr bool operator!=(const CSize& a, const CSize& b) { return !(a == b); }
    ///@}
};

/// A rectangle in pixels; right and bottom lie outside it.
struct CRect
{
    int left = 0;   ///< the first column
    int top = 0;    ///< the first row
    int right = 0;  ///< the column behind the last one
    int bottom = 0; ///< the row behind the last one

    /// Empty, at the origin.
    constexpr CRect() = default;
    /// @param l, t, r, b left, top, right and bottom in pixels.
    constexpr CRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
    /// @param rect the toolkit's.
    CRect(const QRect& rect);
    /// @return the toolkit's rectangle.
    operator QRect() const;

    /// @return right - left; negative for a reversed one.
    constexpr int Width() const { return right - left; }
    /// @return bottom - top; negative for a reversed one.
    constexpr int Height() const { return bottom - top; }
    /// @return the first pixel.
    constexpr CPoint TopLeft() const { return {left, top}; }
    /// @return width and height, as above.
    constexpr CSize Size() const { return {Width(), Height()}; }
    /// @return true when no pixel lies in it, also for a reversed one.
    constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    /// @param p a pixel, in the same coordinates. @return true when it lies in the rectangle.
    constexpr bool PtInRect(CPoint p) const
    {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }

    ///@{
    /// Compares all four edges. @param a, b the rectangles. @return the outcome.
    friend constexpr bool operator==(const CRect& a, const CRect& b)
    {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
    friend constexpr bool operator!=(const CRect& a, const CRect& b) { return !(a == b); }
    ///@}
};

///@{
/// The same by the field's other names.
using POINT = CPoint;
using SIZE = CSize;
using RECT = CRect;
///@}

// Messages, in the field's numbers. `CKvWnd` turns the toolkit's events into handlers without sending them; a
// host meets those that a control sends or answers to.
inline constexpr UINT WM_CREATE = 0x0001;        ///< the window has been made
inline constexpr UINT WM_DESTROY = 0x0002;       ///< the window is about to go
inline constexpr UINT WM_SIZE = 0x0005;          ///< the size changed; wParam SIZE_RESTORED or SIZE_MAXIMIZED
inline constexpr unsigned SIZE_RESTORED = 0;     ///< neither maximised nor minimised
inline constexpr unsigned SIZE_MAXIMIZED = 2;    ///< maximised
inline constexpr UINT WM_SETFOCUS = 0x0007;      ///< the keyboard focus came
inline constexpr UINT WM_KILLFOCUS = 0x0008;     ///< the keyboard focus goes
inline constexpr UINT WM_ENABLE = 0x000A;        ///< enabled (wParam 1) or disabled (0)
inline constexpr UINT WM_PAINT = 0x000F;         ///< draw
inline constexpr UINT WM_CLOSE = 0x0010;         ///< close, please
inline constexpr UINT WM_ERASEBKGND = 0x0014;    ///< draw the background
inline constexpr UINT WM_SETCURSOR = 0x0020;     ///< choose the pointer's shape
inline constexpr UINT WM_NOTIFY = 0x004E;        ///< a control tells; lParam begins with a KvNotifyHeader
inline constexpr UINT WM_CONTEXTMENU = 0x007B;   ///< open the context menu
inline constexpr UINT WM_GETDLGCODE = 0x0087;    ///< which keys a control wants: the answer is DLGC_…
inline constexpr UINT WM_KEYDOWN = 0x0100;       ///< a key went down; wParam its VK_…
inline constexpr UINT WM_CHAR = 0x0102;          ///< a character; wParam its UTF-16 unit
inline constexpr UINT WM_SYSKEYDOWN = 0x0104;    ///< a key went down with Alt
inline constexpr UINT WM_COMMAND = 0x0111;       ///< wParam: number and code; lParam: the sender
inline constexpr UINT WM_TIMER = 0x0113;         ///< a timer; wParam its number
inline constexpr UINT WM_HSCROLL = 0x0114;       ///< a horizontal scroll bar: EKvScrollCode
inline constexpr UINT WM_VSCROLL = 0x0115;       ///< a vertical scroll bar: EKvScrollCode
inline constexpr UINT WM_MOUSEMOVE = 0x0200;     ///< the pointer moved
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;   ///< left button down
inline constexpr UINT WM_LBUTTONUP = 0x0202;     ///< left button up
inline constexpr UINT WM_LBUTTONDBLCLK = 0x0203; ///< second press of the left button
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;   ///< right button down
inline constexpr UINT WM_RBUTTONUP = 0x0205;     ///< right button up
inline constexpr UINT WM_MBUTTONDOWN = 0x0207;   ///< middle button down
inline constexpr UINT WM_MBUTTONUP = 0x0208;     ///< middle button up
inline constexpr UINT WM_MOUSEWHEEL = 0x020A;    ///< the wheel turned, 120 a notch
inline constexpr UINT WM_CAPTURECHANGED = 0x0215; ///< the mouse was taken away in a drag
inline constexpr UINT WM_MOUSEHOVER = 0x02A1;     ///< the pointer rests
inline constexpr UINT WM_MOUSELEAVE = 0x02A3;     ///< the pointer left
inline constexpr UINT WM_KICKIDLE = 0x036A;       ///< nothing to do; lParam counts the calls

// Window styles. `Create` heeds WS_VISIBLE, WS_DISABLED and WS_TABSTOP and accepts the others.
inline constexpr UINT WS_CHILD = 0x40000000;        ///< a child of its parent
inline constexpr UINT WS_VISIBLE = 0x10000000;      ///< shown at once
inline constexpr UINT WS_DISABLED = 0x08000000;     ///< disabled at first
inline constexpr UINT WS_CLIPSIBLINGS = 0x04000000; ///< accepted
inline constexpr UINT WS_CLIPCHILDREN = 0x02000000; ///< accepted
inline constexpr UINT WS_BORDER = 0x00800000;       ///< accepted
inline constexpr UINT WS_TABSTOP = 0x00010000;      ///< Tab reaches it

///@{
/// A key by its place on the keyboard, in the field's numbers: the `key` of `CKvWnd::OnKeyDown`.
inline constexpr UINT VK_BACK = 0x08;
inline constexpr UINT VK_TAB = 0x09;
inline constexpr UINT VK_RETURN = 0x0D;
inline constexpr UINT VK_SHIFT = 0x10;
inline constexpr UINT VK_CONTROL = 0x11;
inline constexpr UINT VK_MENU = 0x12;
inline constexpr UINT VK_ESCAPE = 0x1B;
inline constexpr UINT VK_SPACE = 0x20;
inline constexpr UINT VK_PRIOR = 0x21;
inline constexpr UINT VK_NEXT = 0x22;
inline constexpr UINT VK_END = 0x23;
inline constexpr UINT VK_HOME = 0x24;
inline constexpr UINT VK_LEFT = 0x25;
inline constexpr UINT VK_UP = 0x26;
inline constexpr UINT VK_RIGHT = 0x27;
inline constexpr UINT VK_DOWN = 0x28;
inline constexpr UINT VK_INSERT = 0x2D;
inline constexpr UINT VK_DELETE = 0x2E;
inline constexpr UINT VK_F2 = 0x71;
inline constexpr UINT VK_LCONTROL = 0xA2;
inline constexpr UINT VK_RCONTROL = 0xA3;
///@}

// Which keys a control wants for itself (the answer to WM_GETDLGCODE).
inline constexpr UINT DLGC_WANTARROWS = 0x0001;  ///< arrow keys
inline constexpr UINT DLGC_WANTTAB = 0x0002;     ///< Tab
inline constexpr UINT DLGC_WANTALLKEYS = 0x0004; ///< every key
inline constexpr UINT DLGC_WANTCHARS = 0x0080;   ///< characters

// Message boxes: buttons, icon and default are in the style, the answer is the button's number.
///@{
/// A set of buttons, from left to right.
inline constexpr UINT MB_OK = 0x00;
inline constexpr UINT MB_OKCANCEL = 0x01;
inline constexpr UINT MB_ABORTRETRYIGNORE = 0x02;
inline constexpr UINT MB_YESNOCANCEL = 0x03;
inline constexpr UINT MB_YESNO = 0x04;
inline constexpr UINT MB_RETRYCANCEL = 0x05;
///@}
inline constexpr UINT MB_TYPEMASK = 0x0F; ///< the bits of the button set
///@{
/// The icon beside the text.
inline constexpr UINT MB_ICONERROR = 0x10;
inline constexpr UINT MB_ICONQUESTION = 0x20;
inline constexpr UINT MB_ICONWARNING = 0x30;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
///@}
inline constexpr UINT MB_ICONMASK = 0xF0;    ///< the bits of the icon
inline constexpr UINT MB_DEFBUTTON2 = 0x100; ///< the second button is the default
///@{
/// A button's number: the answer of a message box or a dialog.
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDABORT = 3;
inline constexpr int IDRETRY = 4;
inline constexpr int IDIGNORE = 5;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;
///@}

/// Shows a message box and returns the number of the button: IDOK, IDYES …
using KvMessageBoxHandler = std::function<int(HWND owner, const std::wstring& text, UINT style)>;

/// Replaces the message box that the library shows; an empty handler brings the built-in one back.
/// The built-in one is the toolkit's, or a line on standard error while no application object exists.
/// @param handler called by every message box of the library; empty for the built-in one.
KV_API void KvSetMessageBoxHandler(KvMessageBoxHandler handler);

/// Shows `text` through the one replaceable handler.
/// @param owner the window it belongs to; may be null. @param text in words for the user.
/// @param style one MB_ button set, one MB_ICON… value and, where Enter is not to choose the first button,
///        MB_DEFBUTTON2: the second one is the default and has the focus.
/// @return the number of the button (IDOK, IDYES …); where nobody can answer, IDOK for a box with only
///         that button and else the most cautious one (IDCANCEL, IDNO or IDABORT).
KV_API int KvMessageBox(HWND owner, const std::wstring& text, UINT style = MB_OK);

/// The first member of every notification record that a control sends with WM_NOTIFY.
struct KvNotifyHeader
{
    HWND hwndFrom = nullptr;   ///< the control that speaks
    std::uintptr_t idFrom = 0; ///< the control's number, or an event kind where the control says so
    std::uint32_t code = 0;    ///< what kind of notification it is
};

/// Code of the notifications of every control that edits colours (-41).
inline constexpr std::uint32_t kKvColorNotifyCode = 0xFFFFFFD7u;

/// What the phase of a colour notification says. A drag sends a run of one begin, any number of continues and
/// one end; a one-shot edit sends all three at once.
enum EKvColorPhase : std::int32_t
{
    kKvPhaseBegin = 0,    ///< the first change; the value is the new one
    kKvPhaseContinue = 1, ///< a further change
    kKvPhaseEnd = 2,      ///< the user let go, or took the edit back
};

/// Sent to the parent with WM_NOTIFY by the controls that edit colours; wParam is the control's dialog item
/// number, lParam this record's address. It and what it points to are valid until the handler returns.
struct KvColorNotifyRecord
{
    KvNotifyHeader hdr;    ///< hwndFrom: the control; idFrom: as the control says; code: kKvColorNotifyCode
    std::int32_t phase;    ///< an EKvColorPhase; 0 for events that come alone
    void* data;            ///< what begins with the colour concerned, 0xAARRGGBB, or null
    std::int32_t dataSize; ///< 4, the size of the colour, when `data` is set, else 0
};
static_assert(sizeof(void*) != 8 ||
              (offsetof(KvColorNotifyRecord, phase) == 24 && offsetof(KvColorNotifyRecord, data) == 32 &&
               offsetof(KvColorNotifyRecord, dataSize) == 40 && sizeof(KvColorNotifyRecord) == 48));

/// One stop of a gradient.
struct SKvCGGradientKey
{
    std::uint32_t colour; ///< 0xAARRGGBB, alpha in the top byte, not premultiplied
    float position;       ///< place along the bar, 0.0 = left end, 1.0 = right end
    /// Where, between the previous stop and this one, the two colours mix half and half, as a fraction of
    /// that segment (0.5 = half way). The first stop's value is unused.
    float midPoint;
};
static_assert(sizeof(SKvCGGradientKey) == 12);

/// How an ease came to be.
enum EKvEaseKind : std::uint32_t
{
    kKvEaseLinear = 1,    ///< straight: the value changes evenly
    kKvEaseSpeedUp = 2,   ///< begins slowly
    kKvEaseSpeedDown = 3, ///< ends slowly
    kKvEaseDrawn = 4,     ///< the user's own curve
    kKvEaseSmooth = 5,    ///< begins and ends slowly
};

/// The ease of one segment between two keys of an animated parameter, as a host stores it.
struct SKvParamEaseData
{
    std::uint32_t kind; ///< EKvEaseKind
    double inTangentX;  ///< end key's tangent, a fraction of the segment's width, leftwards from the end key
    double inTangentY;  ///< value offset from the end key
    double outTangentX; ///< start key's tangent, a fraction of the segment's width, rightwards
    double outTangentY; ///< value offset from the start key
    double startX;      ///< time of the start key
    double startY;      ///< its value
    double endX;        ///< time of the end key
    double endY;        ///< its value
    double minimum;     ///< the least value that the curve may take
    double maximum;     ///< the greatest one
    std::uint32_t lock; ///< not 0: the curve must rise from start to end
};
static_assert(sizeof(SKvParamEaseData) == 96 && offsetof(SKvParamEaseData, kind) == 0 &&
              offsetof(SKvParamEaseData, inTangentX) == 8 && offsetof(SKvParamEaseData, inTangentY) == 16 &&
              offsetof(SKvParamEaseData, outTangentX) == 24 &&
              offsetof(SKvParamEaseData, outTangentY) == 32 && offsetof(SKvParamEaseData, startX) == 40 &&
              offsetof(SKvParamEaseData, startY) == 48 && offsetof(SKvParamEaseData, endX) == 56 &&
              offsetof(SKvParamEaseData, endY) == 64 && offsetof(SKvParamEaseData, minimum) == 72 &&
              offsetof(SKvParamEaseData, maximum) == 80 && offsetof(SKvParamEaseData, lock) == 88);

KV_INTERFACES_BEGIN

/// Where an animated parameter lives: the host implements it, the ease dialog edits the parameter through it.
/// Every operation names the parameter by the object it belongs to and its own name, and returns 1 for
/// success or "yes" and 0 for failure or "no". Never deleted through this interface: it has no virtual
/// destructor.
class IKvDataOperator
{
public:
    /// The parameter is being edited from now on, until `UnregisterParam`.
    /// @param objectId, paramName the parameter. @return 1 or 0.
    virtual int RegisterParam(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// The parameter is edited no more. @param objectId, paramName the parameter. @return 1 or 0.
    virtual int UnregisterParam(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Begins a transaction, which exactly one of the two that follow ends.
    /// @param objectId, paramName the parameter. @return 1 or 0.
    virtual int BeginEdit(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Ends the transaction and keeps what was written. @param objectId, paramName the parameter.
    /// @return 1 or 0.
    virtual int CommitEdit(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// The parameter is as it was before `BeginEdit`. @param objectId, paramName the parameter.
    /// @return 1 or 0.
    virtual int CancelEdit(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Reads the segment that is being edited. @param objectId, paramName the parameter.
    /// @param ease receives the segment. @return 1; 0, with `ease` as it was, when there is none.
    virtual int GetEaseData(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/,
                            SKvParamEaseData& /*ease*/)
    {
        return 0;
    }
    /// Writes it. A record of kind 1, 2, 3 or 5 with 0 everywhere else asks the host to apply its own preset
    /// of that kind and to keep keys and range. @param objectId, paramName the parameter.
    /// @param ease the segment. @return 1; 0 when nothing was written.
    virtual int SetEaseData(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/,
                            const SKvParamEaseData& /*ease*/)
    {
        return 0;
    }
    /// Whether there is a segment before the one that is being edited.
    /// @param objectId, paramName the parameter. @return 1 or 0.
    virtual int CanGoPrevKey(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Whether there is one behind it. @param objectId, paramName the parameter. @return 1 or 0.
    virtual int CanGoNextKey(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Edits the segment before from now on. @param objectId, paramName the parameter. @return 1 or 0.
    virtual int GoPrevKey(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Edits the one behind from now on. @param objectId, paramName the parameter. @return 1 or 0.
    virtual int GoNextKey(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
};

KV_INTERFACES_END

/// A point in time, in local or any other time as the host has it. Each field is 16 bits.
struct SYSTEMTIME
{
    WORD wYear;         ///< in full; 0 where there is no time
    WORD wMonth;        ///< 1 … 12
    WORD wDayOfWeek;    ///< 0 is Sunday; nobody here reads it
    WORD wDay;          ///< 1 … 31
    WORD wHour;         ///< 0 … 23
    WORD wMinute;       ///< 0 … 59
    WORD wSecond;       ///< 0 … 59
    WORD wMilliseconds; ///< 0 … 999
};
static_assert(sizeof(SYSTEMTIME) == 16);

/// One message of the application's log.
struct SKvAppLogMsgData
{
    std::int32_t type; ///< 0 … 9: 0 plain, 1 important, 2 warning, 3 error, 4 … 9 as the host likes
    WORD level;        ///< how grave it is, as the host counts; shown as a number
    SYSTEMTIME time;   ///< when it arose
    wchar_t text[512]; ///< ends with a zero, or takes all 512 characters
};
static_assert(offsetof(SKvAppLogMsgData, level) == 4 && offsetof(SKvAppLogMsgData, time) == 6);
