// What the log list shows: drawing, filter, badge.
#include "applog/AppLogStyle.h"
#include "applog/KvAppLogListImpl.h"
#include "core/Text.h"
#include "core/TextTables.h"
#include "platform/SkinColours.h"
#include "platform/SkinPictures.h"

#include <QFontMetrics>

#include <algorithm>

namespace {

constexpr int kIconMargin = 3;
constexpr qreal kDisabledOpacity = 0.4;
constexpr int kDateMargin = 2;
constexpr int kDatePoints = 18;
constexpr int kBadgeMargin = 8;

constexpr std::uint32_t kTextNew = 20202;
constexpr std::uint32_t kTextGoToEnd = 20203;
constexpr std::uint32_t kTextDateLine = 20213;
constexpr std::uint32_t kTextSpacer = 20214;
constexpr std::uint32_t kTextLog = 20219;
constexpr std::uint32_t kTypeNames[] = {20215, 20216, 20217, 20218}; ///< the others have none

QFont DateFont(const QFont& listFont)
{
    QFont font(listFont);
    font.setPointSize(kDatePoints);
    font.setBold(true);
    return font;
}

// The list's font, narrower where a time does not fit its column: its end tells lines apart.
QFont TimeFont(const QFont& listFont, int width)
{
    constexpr int kNarrowest = 80; // percent
    QFont font(listFont);
    const int needed = QFontMetrics(font).horizontalAdvance(QStringLiteral("0000/00/00-00:00:00.000"));
    if (needed > width && needed > 0)
        font.setStretch(std::max(kNarrowest, 100 * width / needed));
    return font;
}

bool IsDate(std::wstring_view typeText)
{
    return typeText == kv::kAppLogDateMark;
}

} // namespace

void CKvAppLogListCtrl::Impl::LoadSkin()
{
    for (std::size_t type = 1; type < icons.size(); ++type)
        icons[type] = KvGuiRes::LoadImageW((L"Applogtype_" + std::to_wstring(type)).c_str());
}

void CKvAppLogListCtrl::OnSkinChanged()
{
    const Impl::Operation operation(*m_impl);
    CKvReportListCtrl::OnSkinChanged();
    for (std::size_t i = 0; i < std::size(kAppLogHeaderTexts); ++i)
        SetHeaderText(static_cast<int>(i), kv::LoadText(kAppLogHeaderTexts[i]).c_str());
    m_impl->LoadSkin();
    Impl::LoadTheme();
    m_impl->ColourLines();
    if (m_impl->badge)
        m_impl->badge->setStyleSheet(kv::AppLogStyleSheet());
    if (m_impl->findBar)
        m_impl->findBar->LoadSkin();
    m_impl->UpdateOverlay();
}

void CKvAppLogListCtrl::DrawItem(Graphics* graphics, int line, int column)
{
    if (!graphics)
        return;
    const std::wstring_view typeText = ViewItemText(line, kv::kAppLogType);
    if (column == kv::kAppLogType) {
        m_impl->DrawIcon(*graphics, line, kv::AppLogTypeOf(typeText));
    } else if (column == kv::kAppLogLevel) {
        // The column is narrow: its digits take all of it.
        const QRect cell = GetCellRect(line, column);
        DrawCellText(graphics, cell.adjusted(-kKvReportTextMargin, 0, kKvReportTextMargin, 0), line, column,
                     font());
    } else if (column == kv::kAppLogTime) {
        const CRect cell = GetCellRect(line, column);
        DrawCellText(graphics, cell, line, column, TimeFont(font(), cell.Width() - 2 * kKvReportTextMargin));
    } else if (column == kv::kAppLogContent && IsDate(typeText)) {
        m_impl->DrawDate(*graphics, line);
    } else if (column == kv::kAppLogContent) {
        DrawCellText(graphics, GetCellRect(line, column), line, column, font(), m_impl->FoundMarks(line));
    } else {
        CKvReportListCtrl::DrawItem(graphics, line, column);
    }
}

void CKvAppLogListCtrl::Impl::DrawIcon(QPainter& painter, int line, int type) const
{
    if (type < 1)
        return;
    const QRect cell = list.GetCellRect(line, kv::kAppLogType);
    const KvSkinImage& icon = icons[static_cast<std::size_t>(type)];
    const QRectF room = cell.adjusted(kIconMargin, kIconMargin, -kIconMargin, -kIconMargin);
    if (icon.IsNull() || room.isEmpty())
        return;
    // As large as the room lets it, in its own shape.
    QRectF target({}, QSizeF(icon.Size()).scaled(room.size(), Qt::KeepAspectRatio));
    target.moveCenter(room.center());
    painter.setOpacity(list.isEnabled() ? 1 : kDisabledOpacity);
    kv::DrawSkinPicture(painter, icon, target);
    painter.setOpacity(1);
}

void CKvAppLogListCtrl::Impl::DrawDate(QPainter& painter, int line)
{
    const QRect cell = list.GetCellRect(line, kv::kAppLogContent);
    const QRect room = cell.adjusted(kDateMargin, kDateMargin, -kDateMargin, -kDateMargin);
    list.DrawCellText(&painter, room.adjusted(-kKvReportTextMargin, 0, kKvReportTextMargin, 0), line,
                      kv::kAppLogContent, DateFont(list.font()));
}

// What is looked for, in a line that matches.
std::vector<KvReportMark> CKvAppLogListCtrl::Impl::FoundMarks(int line) const
{
    std::vector<KvReportMark> marks;
    if (!IsMatch(line))
        return marks;
    const DWORD back = kv::SkinColour(L"keApplogFoundBKColor", 0xFFFFB347u).rgba();
    const DWORD text = kv::SkinColour(L"keApplogFoundTextColor", 0xFF1F1F22u).rgba();
    for (const auto& [begin, length] : needle.All(list.ViewItemText(line, kv::kAppLogContent)))
        marks.push_back({begin, length, back, text});
    return marks;
}

int CKvAppLogListCtrl::_GetColumnTextStyle(int line, int column)
{
    return column == kv::kAppLogLevel ? kKvReportCentre
                                      : CKvReportListCtrl::_GetColumnTextStyle(line, column);
}

BOOL CKvAppLogListCtrl::_GetItemTextColor(int line, int column, int state, DWORD& colour)
{
    if (column != kv::kAppLogContent || !IsDate(ViewItemText(line, kv::kAppLogType)))
        return CKvReportListCtrl::_GetItemTextColor(line, column, state, colour);
    colour = GetListTextColor();
    return 1;
}

UINT CKvAppLogListCtrl::_GetNameText() const
{
    return kTextLog;
}

CString CKvAppLogListCtrl::_GetCellName(int line, int column) const
{
    const std::wstring_view typeText = ViewItemText(line, kv::kAppLogType);
    if (column != kv::kAppLogType)
        return CKvReportListCtrl::_GetCellName(line, column);
    if (IsDate(typeText))
        return kv::LoadText(kTextDateLine);
    const int type = kv::AppLogTypeOf(typeText);
    if (type < 0)
        return kv::LoadText(kTextSpacer);
    if (static_cast<std::size_t>(type) < std::size(kTypeNames))
        return kv::LoadText(kTypeNames[type]);
    return CString(typeText);
}

QString CKvAppLogListCtrl::ToolTipAt(CPoint point, CRect& area) const
{
    const Impl::Operation operation(*m_impl);
    int line = -1;
    int column = -1;
    if (!HitTest(point, line, column) || column < 0)
        return CKvReportListCtrl::ToolTipAt(point, area);
    QFont drawn = font();
    const CRect cell = GetCellRect(line, column);
    int room = cell.Width();
    if (column == kv::kAppLogType) {
        return {}; // always whole
    } else if (column == kv::kAppLogTime) {
        room -= 2 * kKvReportTextMargin;
        drawn = TimeFont(drawn, room);
    } else if (column == kv::kAppLogContent && IsDate(ViewItemText(line, kv::kAppLogType))) {
        room -= 2 * kDateMargin;
        drawn = DateFont(drawn);
    } else if (column != kv::kAppLogLevel) {
        return CKvReportListCtrl::ToolTipAt(point, area);
    }
    area = cell;
    const QString text = KvToQString(CString(ViewItemText(line, column)));
    return QFontMetrics(drawn).horizontalAdvance(text) > room ? text : QString();
}

void CKvAppLogListCtrl::Impl::ApplyFilter()
{
    const bool isOff = typeMask == kv::kAppLogAllTypes && textFilter.IsEmpty();
    if (isOff) {
        list.SetRowFilter({});
    } else {
        list.SetRowFilter([mask = typeMask, text = textFilter](const KvReportRow& row) {
            const std::wstring_view typeText = row.Text(kv::kAppLogType);
            const int type = kv::AppLogTypeOf(typeText);
            if (type < 0)
                return IsDate(typeText);
            return (mask >> type & 1u) != 0 && (text.IsEmpty() || text.IsIn(row.Text(kv::kAppLogContent)));
        });
    }
    isCounted = false;
    isMissedCounted = false;
    AskOverlay();
}

// The badge and the count follow the lines once a frame.
void CKvAppLogListCtrl::Impl::AskOverlay()
{
    if (overlayAsked)
        return;
    overlayAsked = true;
    QMetaObject::invokeMethod(
        &list, [this] { UpdateOverlay(); }, Qt::QueuedConnection);
}

void CKvAppLogListCtrl::Impl::UpdateOverlay()
{
    const Quiet still(*this);
    overlayAsked = false;
    if (IsFindOpen() && !isCounted)
        CountLines();
    if (IsFindOpen())
        findBar->ShowCount(needle.IsEmpty() ? -1 : matchPlace, matchCount);
    if (IsAtEnd())
        missed.clear();
    CountMissed();
    ShowBadge();
}

void CKvAppLogListCtrl::Impl::CountMissed()
{
    if (missed.empty())
        missedShown = 0;
    else if (!isMissedCounted)
        missedShown = static_cast<int>(std::count_if(missed.begin(), missed.end(), [this](std::uint64_t id) {
            return list.IsRowShown(list.FindRow(id)) != 0;
        }));
    isMissedCounted = true;
}

void CKvAppLogListCtrl::Impl::ShowBadge()
{
    if (missedShown == 0) {
        if (badge)
            badge->hide();
        return;
    }
    if (!badge) {
        badge = new QPushButton(&list);
        badge->setObjectName(QStringLiteral("newMessages"));
        badge->setFocusPolicy(Qt::NoFocus); // End does the same
        badge->setCursor(Qt::ArrowCursor);
        badge->setStyleSheet(kv::AppLogStyleSheet());
        connect(badge, &QPushButton::clicked, &list, [this] { GoToEnd(); });
    }
    badge->setText(KvToQString(kv::FillText(kv::LoadText(kTextNew), {kv::NumberText(missedShown)})));
    badge->setToolTip(KvToQString(kv::LoadText(kTextGoToEnd)));
    badge->setFont(list.font()); // which is not handed on below a sheet
    badge->adjustSize();
    const QRect cells = list.GetCellsRect();
    badge->move(cells.right() - badge->width() - kBadgeMargin,
                cells.bottom() - badge->height() - kBadgeMargin);
    badge->show();
    badge->raise();
}

void CKvAppLogListCtrl::Impl::GoToEnd()
{
    const Operation operation(*this);
    list.EnsureVisible(list.NextShownRow(list.GetItemCount(), -1));
    UpdateOverlay();
}

// Also where the view is lower than the last line and begins with it.
bool CKvAppLogListCtrl::Impl::IsAtEnd() const
{
    const CRect last = list.GetCellRect(list.NextShownRow(list.GetItemCount(), -1), kv::kAppLogContent);
    return list.IsEndInView() != 0 || (!last.IsRectEmpty() && last.top <= list.GetCellsRect().top);
}

void CKvAppLogListCtrl::Impl::KeepEnd(const std::function<void()>& change)
{
    const FrameHold hold(list);
    const bool follows = followMode == kKvAppLogFollowAtEnd && IsAtEnd();
    change();
    if (follows)
        list.EnsureVisible(list.NextShownRow(list.GetItemCount(), -1));
}

void CKvAppLogListCtrl::OnPaint(Graphics& graphics)
{
    const Impl::Quiet still(*m_impl); // the lines that are being painted stay
    CKvReportListCtrl::OnPaint(graphics);
    if (!m_impl->missed.empty() && m_impl->IsAtEnd())
        m_impl->AskOverlay(); // the user has come to the end
}

void CKvAppLogListCtrl::changeEvent(QEvent* event)
{
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) {
        CKvReportListCtrl::changeEvent(event);
        return;
    }
    const Impl::Quiet still(*m_impl);
    m_impl->KeepEnd([&] { CKvReportListCtrl::changeEvent(event); });
    m_impl->PlaceFindBar();
    m_impl->AskOverlay();
}

void CKvAppLogListCtrl::OnSize(int width, int height)
{
    const Impl::Quiet still(*m_impl);
    m_impl->KeepEnd([&] { CKvReportListCtrl::OnSize(width, height); });
    m_impl->PlaceFindBar();
    m_impl->AskOverlay();
}
