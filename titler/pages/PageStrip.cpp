#include "pages/PageStrip.h"

#include "KvScroll.h"
#include "edit/Document.h"
#include "edit/PageSteps.h"
#include "pages/LentPicture.h"
#include "project/Pages.h"
#include "window/Commands.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Skin.h"
#include "window/Texts.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>

#include <algorithm>
#include <cmath>

namespace titler {
namespace {

constexpr UINT kStripId = 1002;
constexpr QSize kSize(640, 98);
constexpr int kScrollPace = 160;  // milliseconds for a page
constexpr int kScrollBorder = 28; // where a drag scrolls the strip
constexpr double kGap = 5;        // between thumbnails
constexpr double kMarkWidth = 3;
constexpr double kFrameWidth = 2; // of the current page
constexpr int kVeil = 150;        // over the page that is dragged; alpha
constexpr int kNameLength = 64;

SIZE ShapeOf(const Project& project)
{
    const QSize size = DisplaySize(project.video).toSize();
    return {size.width(), size.height()};
}

// The first line that says something.
QString FirstLine(const QString& text)
{
    for (const QString& line : text.split(u'\n'))
        if (const QString shown = line.simplified(); !shown.isEmpty())
            return shown;
    return {};
}

// A key of the window's commands: the next page and the one before, and playback.
bool IsWindows(UINT key, Qt::KeyboardModifiers modifiers)
{
    const bool withControl = modifiers.testFlag(Qt::ControlModifier);
    return withControl ? key == VK_PRIOR || key == VK_NEXT : key == VK_SPACE;
}

} // namespace

/// The document's pages as the strip asks for them.
class PageStrip::Data : public Counted<IKvLayoutSelectorData>
{
public:
    explicit Data(PageStrip& strip) : m_strip(strip) {}
    int GetCount() override { return m_strip.Count(); }
    BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage**) override
    {
        if (index < 0 || index >= GetCount())
            return 0;
        const std::wstring text = m_strip.NameOf(index).toStdWString();
        std::copy_n(text.begin(), std::min<std::size_t>(text.size(), kNameLength - 1), name);
        *thumbnail = new LentPicture(m_strip.Picture(index));
        return 1;
    }
    BOOL IsSelected(int index) override { return index == m_strip.m_document.Current().pageIndex ? 1 : 0; }
    // One page is shown at a time, so Ctrl adds none.
    int Select(int index, BOOL) override
    {
        m_strip.Choose(index);
        return 1;
    }

private:
    PageStrip& m_strip; ///< which lets go of the data before it goes
};

PageStrip::PageStrip(Document& document, QWidget& parent)
    : m_document(document)
    , m_thumbs(LoadSkin().checkLight, LoadSkin().checkDark)
{
    Create(CRect(0, 0, kSize.width(), kSize.height()), kStripId, &parent, WS_CHILD | WS_VISIBLE | WS_TABSTOP);
    EnableSelect(1);
    SetFirstNumber(1); // as pages are counted elsewhere
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    InEachLanguage(*this, [this] {
        setAccessibleName(Text(kTextPages));
        setAccessibleDescription(Text(kTextPages + 1));
    });
    m_scrolling.setInterval(kScrollPace);
    m_thumbs.SetInView([this](int index) { return !PlaceOf(index).isEmpty(); });
    connect(&m_scrolling, &QTimer::timeout, this, &PageStrip::DragOn);
    connect(&m_thumbs, &PageThumbs::Changed, this, &PageStrip::NotifyUnitChanged);
    connect(&document, &Document::ProjectOpened, this, [this] { m_thumbs.Forget(); });
    connect(&document, &Document::ProjectChanged, this, &PageStrip::OnProjectChanged);
    m_thumbs.SetPages(document.Current());
    m_shape = ShapeOf(document.Current());
    const Ref<IKvLayoutSelectorData> pages(new Data(*this));
    SetData(m_shape, pages.get());
    OnProjectChanged();
}

PageStrip::~PageStrip()
{
    m_document.disconnect(this);
    SetData({}, nullptr);
}

QRect PageStrip::PlaceOf(int page) const
{
    CRect rect;
    return _GetThumbRect(page, &rect) != 0 ? QRect(rect) : QRect();
}

int PageStrip::Count() const
{
    return PageCount(m_document.Current());
}

void PageStrip::Choose(int index)
{
    CommitFields(*window());
    m_document.ChoosePage(index);
}

QImage PageStrip::Picture(int index)
{
    // All have the same size; a page has no place while its shadow alone reaches into view.
    for (const int near : {index, index + 1, index - 1}) {
        if (const QRect rect = PlaceOf(near); !rect.isEmpty()) {
            const double ratio = devicePixelRatioF();
            m_size = QSize(static_cast<int>(std::lround(rect.width() * ratio)),
                           static_cast<int>(std::lround(rect.height() * ratio)));
            break;
        }
    }
    return m_thumbs.Get(index, m_size);
}

QString PageStrip::NameOf(int index) const
{
    const QString name = FirstLine(PageAt(m_document.Current(), index).title.text);
    return name.isEmpty() ? Text(kTextPageNumber, {QString::number(index + 1)}) : name;
}

void PageStrip::OnProjectChanged()
{
    EndDrag(); // it was about the pages before
    const Project& project = m_document.Current();
    const QList<int> changed = m_thumbs.SetPages(project);
    const int count = PageCount(project);
    const bool isOtherPage = std::exchange(m_current, project.pageIndex) != project.pageIndex;
    const bool isOtherCount = std::exchange(m_count, count) != count;
    if (const SIZE shape = ShapeOf(project); shape.cx != m_shape.cx || shape.cy != m_shape.cy) {
        m_shape = shape;
        IKvLayoutSelectorData* held = nullptr;
        GetData(&held);
        const Ref<IKvLayoutSelectorData> pages(held);
        SetData(shape, held);
    } else if (isOtherCount || changed.size() > 1) {
        UpdateScroll();
    } else if (!changed.isEmpty()) {
        NotifyUnitChanged(changed.first());
    }
    if (!isOtherPage && !isOtherCount)
        return;
    SetFocusIndex(m_current); // repaints
    EnsureVisible(m_current);
}

// --- Taking a page to another place ---

void PageStrip::OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    const QPointer<PageStrip> alive(this);
    const int index = _FindThumbRect(point);
    // All of a thumbnail takes the page along, also the part of it from which the strip would be dragged.
    const bool isPage = index >= 0;
    CKvLayoutSelector::OnLButtonDown(modifiers, isPage ? CPoint(point.x, PlaceOf(index).top()) : point);
    if (alive && isPage && !HasCapture() && index == m_current)
        m_press = Press{index, point};
}

void PageStrip::OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point)
{
    const bool isFar = m_press && (QPoint(point) - QPoint(m_press->at)).manhattanLength() >=
                                      QApplication::startDragDistance();
    if (IsDragging() || isFar)
        DragTo(point);
    else
        CKvLayoutSelector::OnMouseMove(modifiers, point);
}

void PageStrip::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        EndDrag(); // the release was somebody else's
    CKvLayoutSelector::mouseMoveEvent(event);
}

void PageStrip::DragTo(CPoint point)
{
    if (!IsDragging()) {
        SetCapture();
        setCursor(Qt::ClosedHandCursor);
    }
    m_pointer = point;
    m_gap = GapAt(point);
    update();
    const bool isAtEnd = point.x < kScrollBorder || point.x >= width() - kScrollBorder;
    if (!isAtEnd)
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start();
}

void PageStrip::DragOn()
{
    LRESULT result = 0;
    const UINT code = m_pointer.x < kScrollBorder ? SB_LINEUP : SB_LINEDOWN;
    OnWndMsg(WM_HSCROLL, MAKEWPARAM(code, 0), 0, &result);
    DragTo(m_pointer);
}

void PageStrip::EndDrag()
{
    m_press.reset();
    if (!IsDragging())
        return;
    m_gap.reset();
    m_scrolling.stop();
    ReleaseCapture();
    unsetCursor();
    update();
}

void PageStrip::OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (!IsDragging()) {
        m_press.reset();
        CKvLayoutSelector::OnLButtonUp(modifiers, point);
        return;
    }
    const int place = DropPlace();
    EndDrag();
    MovePage(m_document, place);
}

void PageStrip::OnCaptureChanged()
{
    EndDrag();
    CKvLayoutSelector::OnCaptureChanged();
}

int PageStrip::GapAt(CPoint point) const
{
    int gap = 0;
    for (int index = 0; index < Count(); ++index) {
        const QRect rect = PlaceOf(index);
        if (rect.isEmpty() ? gap > 0 : point.x < rect.center().x())
            return gap > 0 ? gap : index;
        if (!rect.isEmpty())
            gap = index + 1;
    }
    return gap;
}

int PageStrip::DropPlace() const
{
    return *m_gap > m_current ? *m_gap - 1 : *m_gap;
}

void PageStrip::OnPaint(Graphics& graphics)
{
    CKvLayoutSelector::OnPaint(graphics);
    DrawCurrent(graphics);
    if (IsDragging())
        DrawDrag(graphics);
}

// The strip's own frame of a selected page is a hairline. The accent is for the focus.
void PageStrip::DrawCurrent(Graphics& graphics) const
{
    const QRectF place = PlaceOf(m_current);
    if (place.isEmpty())
        return;
    QPainterPath frame;
    frame.addRect(place);
    frame.addRect(place.adjusted(kFrameWidth, kFrameWidth, -kFrameWidth, -kFrameWidth));
    const Skin skin = LoadSkin();
    graphics.fillPath(frame, hasFocus() ? skin.accent : skin.dimText);
}

// The page as one that is taken away, and a line where it would stand.
void PageStrip::DrawDrag(Graphics& graphics) const
{
    const Skin skin = LoadSkin();
    QColor veil = skin.window;
    veil.setAlpha(kVeil);
    graphics.fillRect(PlaceOf(m_current), veil);
    if (DropPlace() == m_current)
        return;
    const QRect next = PlaceOf(*m_gap);
    const QRect last = PlaceOf(*m_gap - 1);
    const double middle = next.isEmpty() ? last.right() + 1 + kGap / 2 : next.left() - kGap / 2;
    const double ratio = devicePixelRatioF();
    const double left = std::max(1.0, std::round((middle - kMarkWidth / 2) * ratio) / ratio);
    const QRect side = next.isEmpty() ? last : next;
    graphics.fillRect(QRectF(left, side.top(), kMarkWidth, side.height()), skin.accent);
}

// --- Keys and menu ---

BOOL PageStrip::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (IsDragging()) {
        if (key == VK_ESCAPE)
            EndDrag();
        return 1;
    }
    return IsWindows(key, modifiers) ? CKvWnd::OnKeyDown(key, modifiers)
                                     : CKvLayoutSelector::OnKeyDown(key, modifiers);
}

bool PageStrip::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    return IsDragging()
               ? key == VK_ESCAPE
               : !IsWindows(key, modifiers) && CKvLayoutSelector::WantsShortcut(key, modifiers, character);
}

void PageStrip::OnContextMenu(CPoint point)
{
    if (IsDragging())
        return;
    setFocus(Qt::MouseFocusReason);
    if (const int index = _FindThumbRect(point); index >= 0)
        Choose(index); // what the commands are about
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    AddToMenu(*menu, m_menu);
    menu->popup(mapToGlobal(QPoint(point)));
}

CPoint PageStrip::ContextMenuPoint() const
{
    const QRect rect = PlaceOf(m_current);
    return rect.isEmpty() ? CKvLayoutSelector::ContextMenuPoint() : CPoint(rect.center());
}

QString PageStrip::ToolTipAt(CPoint point, CRect& area) const
{
    const int index = _FindThumbRect(point);
    if (index < 0 || IsDragging())
        return {};
    area = PlaceOf(index);
    const QString text = PageAt(m_document.Current(), index).title.text.trimmed();
    return Text(text.isEmpty() ? kTextEmptyPageTip : kTextPageTip,
                {QString::number(index + 1), QString::number(Count()), text});
}

QSize PageStrip::sizeHint() const
{
    return kSize;
}

} // namespace titler
