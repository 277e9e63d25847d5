// The tool windows of a ribbon title bar, and how its tabs are drawn.
#include "chrome/TitleBarStrip.h"
#include "platform/DevicePixels.h"
#include "platform/SkinColours.h"

#include <QPainter>
#include <QPainterPath>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace kv {
namespace {

constexpr double kOuterPen = 1.8;
constexpr int kOuterSide = 1; // of the outer frame beside the tab
constexpr int kOuterTop = 2;
constexpr int kOuterBottom = 4;

// Left, top and right edge; the centre separator is the bottom.
void DrawTabFrame(Graphics& graphics, const CRect& tab)
{
    const QColor dark = SkinColour(L"keRibbonTitleBarTabFrameDarkColor", 0xFF1C1C1Fu);
    const DevicePixels pixels(graphics);
    graphics.fillRect(pixels.Column(tab.left, tab.top, tab.bottom + 1), dark);
    graphics.fillRect(pixels.Row(tab.left, tab.right + 1, tab.top), dark);
    graphics.fillRect(pixels.Column(tab.right, tab.top, tab.bottom + 1), dark);

    // Through pixel centres.
    const double left = tab.left - kOuterSide + 0.5;
    const double right = tab.right + kOuterSide + 0.5;
    const double top = tab.top - kOuterTop + 0.5;
    const double bottom = tab.bottom + kOuterBottom + 0.5;
    QPainterPath path(QPointF(left, bottom));
    path.lineTo(left, top);
    path.lineTo(right, top);
    path.lineTo(right, bottom);
    QPen pen(CaptionFrameColour(), kOuterPen);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    graphics.save();
    graphics.setRenderHint(QPainter::Antialiasing);
    graphics.strokePath(path, pen);
    graphics.restore();
}

} // namespace

// --- Tool windows ---

template <typename Visit>
void TitleBarStrip::ForEachHandle(Visit visit) const
{
    const auto visitBar = [&](const SKvTitleBarData& bar) {
        for (const SKvRibbonItem& item : bar.items) {
            if (item.tool.handle)
                visit(*item.tool.handle);
        }
        for (const ToolWindow& tool : bar.advanced) {
            if (tool.handle)
                visit(*tool.handle);
        }
    };
    for (int i = 0; i < m_bars.Count(); ++i)
        visitBar(m_bars.At(i));
    if (const SKvTitleBarData* begun = m_bars.UnderConstruction())
        visitBar(*begun);
}

void TitleBarStrip::Adopt(const ToolWindow& tool, bool place)
{
    HWND const handle = tool.handle;
    if (!handle)
        return;
    if (m_watched.insert(handle).second)
        QObject::connect(handle, &QObject::destroyed, m_watcher.get(), [this, handle] { Forget(handle); });
    const QPointer<QWidget> lives(handle);
    const QPointer<QWidget> self(&m_titleBar);
    if (place && tool.window)
        handle->setGeometry(ToolPlace(*handle));
    if (self && lives && !IsSeen(handle))
        handle->hide();
    if (self && lives && tool.window)
        tool.window->SetToolWndManager(static_cast<IKvRibbonTitleBarMgr*>(&m_titleBar));
}

QRect TitleBarStrip::ToolPlace(const QWidget& window) const
{
    const CRect area = ToolArea();
    return {area.left, area.top, window.width(), area.Height()};
}

void TitleBarStrip::Leave(const SKvTitleBarData& bar)
{
    for (const SKvRibbonItem& item : bar.items)
        m_leaving.emplace_back(item.tool.handle);
    for (const ToolWindow& tool : bar.advanced)
        m_leaving.emplace_back(tool.handle);
}

void TitleBarStrip::Forget(HWND handle)
{
    m_watched.erase(handle);
    bool known = false;
    for (int i = 0; i < m_bars.Count(); ++i)
        known = m_bars.At(i).Forget(handle) || known;
    if (SKvTitleBarData* begun = m_bars.UnderConstruction())
        begun->Forget(handle);
    if (known)
        LayoutIfCreated();
}

std::vector<HWND> TitleBarStrip::Seen() const
{
    std::vector<HWND> seen;
    if (const SKvTitleBarData* bar = m_bars.Active()) {
        const int selected = bar->SelectedItem();
        if (selected >= 0)
            seen.push_back(bar->items[static_cast<std::size_t>(selected)].tool.handle);
        for (const ToolWindow& tool : bar->advanced)
            seen.push_back(tool.handle);
    }
    return seen;
}

bool TitleBarStrip::IsSeen(HWND handle) const
{
    const std::vector<HWND> seen = Seen();
    return std::find(seen.begin(), seen.end(), handle) != seen.end();
}

void TitleBarStrip::ShowToolWindows()
{
    struct Change
    {
        QPointer<QWidget> window;
        bool visible;
    };
    std::vector<Change> changes;
    const std::vector<HWND> seen = Seen();
    for (HWND window : seen) {
        if (window && window->isHidden())
            changes.push_back({window, true});
    }
    const auto hide = [&](QWidget& window) {
        if (!window.isHidden() && std::find(seen.begin(), seen.end(), &window) == seen.end())
            changes.push_back({&window, false});
    };
    ForEachHandle(hide);
    for (const QPointer<QWidget>& window : m_leaving) {
        if (window)
            hide(*window);
    }
    // The windows are the host's: any of them may destroy others or the bar, or select another tab, whose own
    // run then has done everything.
    const unsigned run = ++m_showing;
    const QPointer<QWidget> self(&m_titleBar);
    for (const Change& change : changes) {
        if (change.window)
            change.window->setVisible(change.visible);
        if (!self || run != m_showing)
            return;
    }
    m_leaving.clear();
}

void TitleBarStrip::ShowWindowButtons()
{
    Button(kKvCaptionClose).setVisible(m_buttons != kKvAppBtnNone);
    for (const EKvCaptionButton button : {kKvCaptionMaximise, kKvCaptionMinimise, kKvCaptionMenu})
        Button(button).setVisible(m_buttons != kKvAppBtnNone && m_buttons != kKvAppBtnCloseOnly);
}

void TitleBarStrip::LayoutToolWindows()
{
    if (!std::exchange(m_buttonsShown, true))
        ShowWindowButtons();
    const SKvTitleBarData* bar = m_bars.Active();
    if (!bar)
        return;
    std::vector<std::pair<QPointer<QWidget>, QRect>> places; // a resize event may change the title bar
    for (const SKvRibbonItem& item : bar->items) {
        if (item.tool.window && item.tool.handle)
            places.emplace_back(item.tool.handle, ToolPlace(*item.tool.handle));
    }
    const QPointer<QWidget> self(&m_titleBar);
    for (const auto& [window, place] : places) {
        if (window)
            window->setGeometry(place);
    }
    if (self)
        LayoutAdvanced(ToolArea());
}

// --- Drawing ---

void TitleBarStrip::DrawItemFrame(Graphics& graphics)
{
    const SKvTitleBarData* bar = m_bars.Active();
    const int selected = bar ? bar->SelectedItem() : -1;
    if (selected >= 0)
        DrawTabFrame(graphics, bar->items[static_cast<std::size_t>(selected)].rect);
}

} // namespace kv
