#include "platform/KvReportListImpl.h"

#include "platform/OwnSizes.h"
#include "platform/SkinColours.h"

#include <QStyle>

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr int kTextRoom = 4; // above and below a line of text together
constexpr int kBarStep = 24; // pixels of a click on a scroll bar's arrow

} // namespace

void CKvReportListCtrl::Impl::LoadTheme()
{
    theme.Load();
    verticalColours.Load();
    horizontalColours.Load();
    if (editor)
        StyleEditor();
}

void CKvReportListCtrl::Impl::Theme::Load()
{
    back = kv::SkinColour(L"keReportListBKColor", 0xFF1F1F22u);
    text = kv::TextColour();
    disabledText = kv::DisabledTextColour();
    selectedBack = kv::SkinColour(L"keReportListSelectedBKColor", 0xFF4A5568u);
    selectedText = kv::SkinColour(L"keReportListSelectedTextColor", 0xFFFFFFFFu);
    header = kv::SkinColour(L"keReportListHeaderBKColor", 0xFF323236u);
    grid = kv::SkinColour(L"keReportListGridColor", 0xFF333337u);
}

CKvReportListCtrl::Impl::Impl(CKvReportListCtrl& control)
    : kv::AccessibleParts(control, QAccessible::Table)
    , list(control)
    , verticalBar(new QScrollBar(Qt::Vertical, &control))
    , horizontalBar(new QScrollBar(Qt::Horizontal, &control))
{
    LoadTheme();
    for (QScrollBar* bar : {verticalBar, horizontalBar}) {
        kv::KeepOwnSizes(*bar);
        bar->hide();
        bar->setFocusPolicy(Qt::NoFocus);
    }
    QObject::connect(verticalBar, &QScrollBar::valueChanged, &list, [this](int value) {
        ScrollByBar(scrollX, kv::ReportBarScale(layout.MaxScrollY()).ToOffset(value));
    });
    QObject::connect(horizontalBar, &QScrollBar::valueChanged, &list,
                     [this](int value) { ScrollByBar(value, scrollY); });
}

QRect CKvReportListCtrl::Impl::RowRect(int line) const
{
    const std::int64_t y = layout.cells.top + rows.TopOf(line) - scrollY;
    // Far outside of the view the exact place does not count, but must not wrap around.
    const auto top = static_cast<int>(std::clamp<std::int64_t>(y, -100'000'000, 100'000'000));
    return {layout.cells.left, top, layout.cells.Width(), ShownHeight(line)};
}

QRect CKvReportListCtrl::Impl::CellRect(int line, int column) const
{
    return CellRect(RowRect(line), column);
}

QRect CKvReportListCtrl::Impl::CellRect(const QRect& row, int column) const
{
    return {layout.cells.left + layout.Left(column) - scrollX, row.top(),
            layout.Right(column) - layout.Left(column), row.height()};
}

kv::ReportLayout CKvReportListCtrl::Impl::LaidOut() const
{
    kv::ReportExtent extent;
    extent.client = {list.width(), std::max(0, list.height() - footer)};
    extent.header = hasHeader;
    extent.headerHeight = TextHeight();
    extent.bar = barExtent;
    extent.rowsHeight = rows.Height();
    if (IsEditorInLine())
        extent.editorRight = layout.Left(editColumn) + editor->NaturalSize().width() + kReportCaretMargin;
    extent.editorBottom = EditorBottom();
    return kv::LayOutReport(extent, columns);
}

std::int64_t CKvReportListCtrl::Impl::EditorBottom() const
{
    return IsEditorInLine() ? rows.TopOf(editLine) + editor->height() : 0;
}

// Of the header, and of a row unless somebody says otherwise.
int CKvReportListCtrl::Impl::TextHeight() const
{
    return std::max(kv::kReportHeaderHeight, QFontMetrics(list.font()).height() + kTextRoom);
}

void CKvReportListCtrl::Impl::FontChanged()
{
    const int height = TextHeight();
    if (!isHeightHosts && std::exchange(defaultHeight, height) != height)
        rows.SetFontHeight(height);
    LayOut();
    RequestWholeFrame();
}

void CKvReportListCtrl::Impl::LayOut()
{
    // As the bars themselves are styled.
    barExtent = verticalBar->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, verticalBar);
    const kv::ReportLayout before = std::exchange(layout, LaidOut());
    if (FitEditor())
        layout = LaidOut();
    ScrollTo(scrollX, scrollY);
    if (layout.cells == before.cells && layout.edges == before.edges)
        RequestFrame();
    else
        RequestWholeFrame();
}

// Often once a row of very many: lays out anew only where more than the height of the whole has changed.
void CKvReportListCtrl::Impl::RowsResized()
{
    const std::int64_t height = std::max(rows.Height(), EditorBottom());
    const bool isEditorAsItWas = !editor || (IsLine(editLine) && ShownHeight(editLine) == editHeight);
    // Whether a bar is needed depends on the height only through these comparisons.
    const auto needs = [this](std::int64_t content) {
        const int room = list.height() - footer - layout.cells.top;
        return (content > room ? 1 : 0) + (content > room - barExtent ? 1 : 0);
    };
    const bool hasSameBars =
        height == layout.contentHeight || (layout.contentHeight > 0 && !layout.verticalBar.IsRectEmpty() &&
                                           needs(height) == needs(layout.contentHeight));
    if (!isEditorAsItWas || !hasSameBars) {
        LayOut();
        return;
    }
    layout.contentHeight = height;
    ScrollTo(scrollX, scrollY);
    RequestFrame();
}

void CKvReportListCtrl::Impl::ScrollTo(int x, std::int64_t y)
{
    x = std::clamp(x, 0, layout.MaxScrollX());
    y = std::clamp<std::int64_t>(y, 0, layout.MaxScrollY());
    if (x == scrollX && y == scrollY)
        return;
    if (x != scrollX)
        screen.Forget();
    scrollX = x;
    scrollY = y;
    RequestFrame();
}

void CKvReportListCtrl::Impl::Show(int line)
{
    if (!IsLine(line) || !rows.Row(line).shown)
        return;
    ScrollTo(scrollX, OffsetOf(line));
}

// The offset that brings the line into view; it is shown.
std::int64_t CKvReportListCtrl::Impl::OffsetOf(int line) const
{
    const std::int64_t top = rows.TopOf(line);
    return kv::OffsetToShow(scrollY, layout.cells.Height(), top, top + rows.Row(line).height);
}

// @return whether the list moved.
bool CKvReportListCtrl::Impl::ScrollsTo(int x, std::int64_t y)
{
    const int xBefore = scrollX;
    const std::int64_t yBefore = scrollY;
    ScrollTo(x, y);
    return scrollX != xBefore || scrollY != yBefore;
}

bool CKvReportListCtrl::Impl::ScrollByUser(int x, std::int64_t y)
{
    if (!ScrollsTo(x, y))
        return false;
    list._OnUserScroll();
    return true;
}

// Told later: the bar is not done yet, and who hears of it may delete the list.
void CKvReportListCtrl::Impl::ScrollByBar(int x, std::int64_t y)
{
    if (isSyncing || !ScrollsTo(x, y))
        return;
    QMetaObject::invokeMethod(
        &list, [this] { list._OnUserScroll(); }, Qt::QueuedConnection);
}

void CKvReportListCtrl::Impl::RequestFrame()
{
    if (suspended > 0) {
        frameDue = true;
        return;
    }
    if (frameAsked)
        return;
    frameAsked = true;
    QMetaObject::invokeMethod(
        &list, [this] { Frame(); }, Qt::QueuedConnection);
}

void CKvReportListCtrl::Impl::RequestWholeFrame()
{
    screen.Forget();
    RequestFrame();
}

void CKvReportListCtrl::Impl::RequestSelectionFrame()
{
    isSelectionDue = true;
    RequestFrame();
}

void CKvReportListCtrl::Impl::Frame()
{
    frameAsked = false;
    if (suspended > 0) {
        frameDue = true;
        return;
    }
    SyncBars();
    PlaceEditor();
    UpdateScreen();
    const bool areOthersShown = std::exchange(shownTold, rows.ShownCount()) != rows.ShownCount();
    if (std::exchange(rowsChanged, false) || areOthersShown)
        PartsChanged();
    UpdateFocus();
    if (std::exchange(isSelectionDue, false))
        SelectionChanged();
}

void CKvReportListCtrl::Impl::SyncBars()
{
    isSyncing = true;
    const auto sync = [](QScrollBar* bar, const CRect& rect, std::int64_t most, std::int64_t value,
                         int page) {
        const kv::ReportBarScale scale(most);
        if (!rect.IsRectEmpty() && bar->geometry() != QRect(rect))
            bar->setGeometry(rect);
        bar->setRange(0, scale.Range());
        bar->setPageStep(scale.Length(page));
        bar->setSingleStep(scale.Length(kBarStep));
        bar->setValue(scale.ToBar(value));
        bar->setVisible(!rect.IsRectEmpty());
    };
    sync(verticalBar, layout.verticalBar, layout.MaxScrollY(), scrollY, layout.cells.Height());
    sync(horizontalBar, layout.horizontalBar, layout.MaxScrollX(), scrollX, layout.cells.Width());
    isSyncing = false;
}

// In the next frame.
void CKvReportListCtrl::Impl::RepaintRow(int line)
{
    if (!IsLine(line))
        return;
    screen.Touch(rows.Row(line).id);
    RequestFrame();
}

// Of all kinds but a changed text.
void CKvReportListCtrl::Impl::Notify(int kind, const CArray<int, int>& lines)
{
    rowsChanged = true;
    const QPointer<CKvReportListCtrl> self(&list);
    list._OnNotifyItemModify(kind, lines, -1);
    if (self)
        TellChanged(kind, lines);
}

// One array serves all texts, unless an override changes further ones: a list may get another text in every
// row at once.
void CKvReportListCtrl::Impl::NotifyText(int line, int column)
{
    CArray<int, int> lines = std::exchange(lineOfText, {});
    lines.assign(1, line);
    const QPointer<CKvReportListCtrl> self(&list);
    list._OnNotifyItemModify(kKvReportTextChanged, lines, column);
    if (!self)
        return;
    if (!TellChanged(kKvReportTextChanged, lines))
        return;
    TellText(line, column);
    lineOfText = std::move(lines);
}

kv::ReportRow CKvReportListCtrl::Impl::NewRow(std::span<const std::wstring_view> texts, int height) const
{
    if (height > 0)
        return {texts, std::min(height, kv::kReportMost)};
    return {texts, defaultHeight, !isHeightHosts};
}

std::vector<kv::ReportRow> CKvReportListCtrl::Impl::NewRows(const std::vector<CStringArray>& texts,
                                                            int height) const
{
    std::vector<kv::ReportRow> added;
    added.reserve(texts.size());
    std::vector<std::wstring_view> views;
    for (const CStringArray& row : texts) {
        views.assign(row.begin(), row.end());
        added.push_back(NewRow(views, height));
    }
    return added;
}

bool CKvReportListCtrl::Impl::Inserting(int line, int count)
{
    if (observers.empty())
        return true;
    std::vector<int> lines(static_cast<std::size_t>(count));
    std::iota(lines.begin(), lines.end(), line);
    return TellChanging(kKvReportInserted, lines);
}

void CKvReportListCtrl::Impl::Inserted(int line, int count)
{
    RowsResized();
    CArray<int, int> lines(static_cast<std::size_t>(count));
    std::iota(lines.begin(), lines.end(), line);
    Notify(kKvReportInserted, lines);
}

// After rows went; an editor that was open in one of them goes, too.
void CKvReportListCtrl::Impl::Removed(const CArray<int, int>& lines, int kind)
{
    const bool isEditLost = editor && editLine < 0;
    const int column = editColumn;
    if (isEditLost)
        CloseEditor();
    RowsResized();
    const QPointer<CKvReportListCtrl> self(&list);
    Notify(kind, lines);
    if (isEditLost && self)
        list._CancelEdit(-1, column);
}

void CKvReportListCtrl::Impl::TellSelection()
{
    RequestSelectionFrame();
    Q_EMIT list.SelectionEdited();
}
