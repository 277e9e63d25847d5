// The vocabulary that needs no toolkit: numbers, geometry, message constants, message boxes and the
// plain records that a control shares with its host.
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

class QWidget;
class QMenu;
class QPoint;
class QSize;
class QRect;

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
/// Also every `unsigned long` of an operation: 32 bits on every platform.
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
/// 0 is false; results are exactly 1 or 0.
using BOOL = int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

/// The handle of a window or control is the widget itself; of a menu, the menu.
using HWND = QWidget*;
using CWnd = QWidget;
using HMENU = QMenu*;

using CString = std::wstring;
using CStringArray = std::vector<std::wstring>;
/// A growable array. The second argument is accepted for the field's declarations and unused.
template <typename T, typename ARG = const T&>
using CArray = std::vector<T>;

/// A point in pixels. The conversions to and from the toolkit's type are defined in KvPlatform.h.
struct CPoint
{
    int x = 0;
    int y = 0;

    constexpr CPoint() = default;
    constexpr CPoint(int px, int py) : x(px), y(py) {}
    CPoint(const QPoint& point);
    operator QPoint() const;

    friend constexpr bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
    friend constexpr bool operator!=(const CPoint& a, const CPoint& b) { return !(a == b); }
};

/// A size in pixels.
struct CSize
{
    int cx = 0;
    int cy = 0;

    constexpr CSize() = default;
    constexpr CSize(int width, int height) : cx(width), cy(height) {}
    CSize(const QSize& size);
    operator QSize() const;

    friend constexpr bool operator==(const CSize& a, const CSize& b) { return a.cx == b.cx && a.cy == b.cy; }
    friend constexpr bool operator!=(const CSize& a, const CSize& b) { return !(a == b); }
};

/// A rectangle in pixels; right and bottom lie outside it.
struct CRect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr CRect() = default;
    constexpr CRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
    CRect(const QRect& rect);
    operator QRect() const;

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr CPoint TopLeft() const { return {left, top}; }
    constexpr CSize Size() const { return {Width(), Height()}; }
    constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    constexpr bool PtInRect(CPoint p) const
    {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }

    friend constexpr bool operator==(const CRect& a, const CRect& b)
    {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
    friend constexpr bool operator!=(const CRect& a, const CRect& b) { return !(a == b); }
};

using POINT = CPoint;
using SIZE = CSize;
using RECT = CRect;

// Messages, in the field's numbers.
inline constexpr UINT WM_CREATE = 0x0001;
inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_SIZE = 0x0005;
inline constexpr unsigned SIZE_RESTORED = 0;
inline constexpr unsigned SIZE_MAXIMIZED = 2;
inline constexpr UINT WM_SETFOCUS = 0x0007;
inline constexpr UINT WM_KILLFOCUS = 0x0008;
inline constexpr UINT WM_ENABLE = 0x000A;
inline constexpr UINT WM_PAINT = 0x000F;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_ERASEBKGND = 0x0014;
inline constexpr UINT WM_SETCURSOR = 0x0020;
inline constexpr UINT WM_NOTIFY = 0x004E;
inline constexpr UINT WM_CONTEXTMENU = 0x007B;
inline constexpr UINT WM_GETDLGCODE = 0x0087;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_CHAR = 0x0102;
inline constexpr UINT WM_SYSKEYDOWN = 0x0104;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_TIMER = 0x0113;
inline constexpr UINT WM_HSCROLL = 0x0114;
inline constexpr UINT WM_VSCROLL = 0x0115;
inline constexpr UINT WM_MOUSEMOVE = 0x0200;
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;
inline constexpr UINT WM_LBUTTONUP = 0x0202;
inline constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;
inline constexpr UINT WM_RBUTTONUP = 0x0205;
inline constexpr UINT WM_MBUTTONDOWN = 0x0207;
inline constexpr UINT WM_MBUTTONUP = 0x0208;
inline constexpr UINT WM_MOUSEWHEEL = 0x020A;
inline constexpr UINT WM_CAPTURECHANGED = 0x0215;
inline constexpr UINT WM_MOUSEHOVER = 0x02A1;
inline constexpr UINT WM_MOUSELEAVE = 0x02A3;
inline constexpr UINT WM_KICKIDLE = 0x036A;

// Window styles. `Create` heeds WS_VISIBLE, WS_DISABLED and WS_TABSTOP and accepts the others.
inline constexpr UINT WS_CHILD = 0x40000000;
inline constexpr UINT WS_VISIBLE = 0x10000000;
inline constexpr UINT WS_DISABLED = 0x08000000;
inline constexpr UINT WS_CLIPSIBLINGS = 0x04000000;
inline constexpr UINT WS_CLIPCHILDREN = 0x02000000;
inline constexpr UINT WS_BORDER = 0x00800000;
inline constexpr UINT WS_TABSTOP = 0x00010000;

// Virtual keys.
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

// Which keys a control wants for itself (the answer to WM_GETDLGCODE).
inline constexpr UINT DLGC_WANTARROWS = 0x0001;
inline constexpr UINT DLGC_WANTTAB = 0x0002;
inline constexpr UINT DLGC_WANTALLKEYS = 0x0004;
inline constexpr UINT DLGC_WANTCHARS = 0x0080;

// Message boxes: buttons, icon and default are in the style, the answer is the button's number.
inline constexpr UINT MB_OK = 0x00;
inline constexpr UINT MB_OKCANCEL = 0x01;
inline constexpr UINT MB_ABORTRETRYIGNORE = 0x02;
inline constexpr UINT MB_YESNOCANCEL = 0x03;
inline constexpr UINT MB_YESNO = 0x04;
inline constexpr UINT MB_RETRYCANCEL = 0x05;
inline constexpr UINT MB_TYPEMASK = 0x0F;
inline constexpr UINT MB_ICONERROR = 0x10;
inline constexpr UINT MB_ICONQUESTION = 0x20;
inline constexpr UINT MB_ICONWARNING = 0x30;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
inline constexpr UINT MB_ICONMASK = 0xF0;
inline constexpr UINT MB_DEFBUTTON2 = 0x100;
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDABORT = 3;
inline constexpr int IDRETRY = 4;
inline constexpr int IDIGNORE = 5;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

/// Shows a message box.
using KvMessageBoxHandler = std::function<int(HWND owner, const std::wstring& text, UINT style)>;

/// Replaces the message box that the library shows; an empty handler brings the built-in one back.
/// The built-in one is the toolkit's, or a line on standard error while no application object exists.
KV_API void KvSetMessageBoxHandler(KvMessageBoxHandler handler);

/// Shows `text` through the one replaceable handler.
/// @param owner the window it belongs to; may be null.
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
    kKvPhaseBegin = 0,
    kKvPhaseContinue = 1,
    kKvPhaseEnd = 2,
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
    kKvEaseLinear = 1,
    kKvEaseSpeedUp = 2,
    kKvEaseSpeedDown = 3,
    kKvEaseDrawn = 4, ///< the user's own curve
    kKvEaseSmooth = 5,
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
    double minimum;     ///< the values that the curve may take
    double maximum;
    std::uint32_t lock; ///< not 0: the curve must rise from start to end
};
static_assert(sizeof(SKvParamEaseData) == 96 && offsetof(SKvParamEaseData, kind) == 0 &&
              offsetof(SKvParamEaseData, inTangentX) == 8 && offsetof(SKvParamEaseData, inTangentY) == 16 &&
              offsetof(SKvParamEaseData, outTangentX) == 24 &&
              offsetof(SKvParamEaseData, outTangentY) == 32 && offsetof(SKvParamEaseData, startX) == 40 &&
              offsetof(SKvParamEaseData, startY) == 48 && offsetof(SKvParamEaseData, endX) == 56 &&
              offsetof(SKvParamEaseData, endY) == 64 && offsetof(SKvParamEaseData, minimum) == 72 &&
              offsetof(SKvParamEaseData, maximum) == 80 && offsetof(SKvParamEaseData, lock) == 88);

/// Where an animated parameter lives: the host implements it, the ease dialog edits the parameter through it.
/// Every operation names the parameter by the object it belongs to and its own name, and returns 1 for
/// success or "yes" and 0 for failure or "no". Never deleted through this interface: it has no virtual
/// destructor.
class IKvDataOperator
{
public:
    /// The parameter is being edited from now on, until `UnregisterParam`.
    virtual int RegisterParam(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    virtual int UnregisterParam(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Begins a transaction, which exactly one of the two that follow ends.
    virtual int BeginEdit(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    virtual int CommitEdit(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// The parameter is as it was before `BeginEdit`.
    virtual int CancelEdit(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Reads the segment that is being edited.
    virtual int GetEaseData(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/, SKvParamEaseData&)
    {
        return 0;
    }
    /// Writes it. A record of kind 1, 2, 3 or 5 with 0 everywhere else asks the host to apply its own preset
    /// of that kind and to keep keys and range.
    virtual int SetEaseData(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/,
                            const SKvParamEaseData&)
    {
        return 0;
    }
    /// Whether there is a segment before or after the one that is being edited.
    virtual int CanGoPrevKey(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    virtual int CanGoNextKey(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    /// Edits that one from now on.
    virtual int GoPrevKey(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
    virtual int GoNextKey(const wchar_t* /*objectId*/, const wchar_t* /*paramName*/) { return 0; }
};

/// A point in time, in local or any other time as the host has it. Each field is 16 bits.
struct SYSTEMTIME
{
    WORD wYear;      ///< in full; 0 where there is no time
    WORD wMonth;     ///< 1 … 12
    WORD wDayOfWeek; ///< 0 is Sunday; nobody here reads it
    WORD wDay;       ///< 1 … 31
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
static_assert(sizeof(SYSTEMTIME) == 16);

/// One message of the application's log.
struct SKvAppLogMsgData
{
    std::int32_t type; ///< 0 … 9: 0 plain, 1 important, 2 warning, 3 error, 4 … 9 as the host likes
    WORD level;
    SYSTEMTIME time;
    wchar_t text[512]; ///< ends with a zero, or takes all 512 characters
};
static_assert(offsetof(SKvAppLogMsgData, level) == 4 && offsetof(SKvAppLogMsgData, time) == 6);
