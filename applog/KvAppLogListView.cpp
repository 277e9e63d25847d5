// What the log list shows: drawing, filter, badge.
#include "applog/AppLogStyle.h"
#include "applog/KvAppLogListImpl.h"
#include "core/Text.h"
#include "core/TextTables.h"
#include "platform/SkinColours.h"
#include "platform/SkinPictures.h"

#include <QFontMetrics>
#include <QTextLayout>

#include <algorithm>

namespace {

constexpr int kTextMargin = 4; ///< the base list's, left and right of a cell's text
constexpr int kIconMargin = 3;
constexpr int kDateMargin = 2;
constexpr int kDatePoints = 18;
constexpr int kBadgeMargin = 8;

constexpr std::uint32_t kHeaderTexts[] = {15041, 15042, 15043, 15044};
constexpr std::uint32_t kTextNew = 20202;
constexpr std::uint32_t kTextGoToEnd = 20203;

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

/// As the base list shows it: a mark for each line break.
std::wstring OneLine(std::wstring_view text)
{
    std::wstring line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isBreak = text[i] == L'\r' || text[i] == L'\n';
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n')
            ++i;
        line += isBreak ? L'\u21B5' : text[i];
    }
    return line;
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
    for (int column = 0; column < GetColumnCount(); ++column)
        SetHeaderText(column, kv::LoadText(kHeaderTexts[column]).c_str());
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
    const CString typeText = CKvReportListCtrl::GetItemText(line, kv::kAppLogType);
    if (column == kv::kAppLogType) {
        m_impl->DrawIcon(*graphics, line, kv::AppLogTypeOf(typeText));
    } else if (column == kv::kAppLogLevel) {
        // The column is narrow: its digits take all of it.
        const QRect cell = GetCellRect(line, column);
        DrawCellText(graphics, cell.adjusted(-kTextMargin, 0, kTextMargin, 0), line, column, font());
    } else if (column == kv::kAppLogTime) {
        const CRect cell = GetCellRect(line, column);
        DrawCellText(graphics, cell, line, column, TimeFont(font(), cell.Width() - 2 * kTextMargin));
    } else if (column == kv::kAppLogContent && IsDate(typeText)) {
        m_impl->DrawDate(*graphics, line);
    } else if (column != kv::kAppLogContent || !m_impl->DrawFound(*graphics, line)) {
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
    kv::DrawSkinPicture(painter, icon, target);
}

void CKvAppLogListCtrl::Impl::DrawDate(QPainter& painter, int line)
{
    const QRect cell = list.GetCellRect(line, kv::kAppLogContent);
    const QRect room = cell.adjusted(kDateMargin, kDateMargin, -kDateMargin, -kDateMargin);
    list.DrawCellText(&painter, room.adjusted(-kTextMargin, 0, kTextMargin, 0), line, kv::kAppLogContent,
                      DateFont(list.font()));
}

// Draws a line's content with what was found in it on a ground of its own. @return false when it was not.
bool CKvAppLogListCtrl::Impl::DrawFound(QPainter& painter, int line)
{
    if (!IsMatch(line))
        return false;
    const std::wstring text = OneLine(list.CKvReportListCtrl::GetItemText(line, kv::kAppLogContent));
    const QRectF room =
        QRectF(QRect(list.GetCellRect(line, kv::kAppLogContent))).adjusted(kTextMargin, 0, -kTextMargin, 0);
    const QString whole = KvToQString(text);
    const QString shown =
        QFontMetrics(list.font()).elidedText(whole, Qt::ElideRight, static_cast<int>(room.width()));
    const int cut = static_cast<int>(shown == whole ? whole.size() : shown.size() - 1);

    QTextCharFormat found;
    found.setBackground(kv::SkinColour(L"keApplogFoundBKColor", 0xFFFFB347u));
    found.setForeground(kv::SkinColour(L"keApplogFoundTextColor", 0xFF1F1F22u));
    QList<QTextLayout::FormatRange> formats;
    for (const kv::AppLogMatcher::Match& match : needle.All(text)) {
        // What is cut off is found at the ellipsis.
        const std::wstring_view view = text;
        const auto begin = static_cast<int>(KvToQString(view.substr(0, match.begin)).size());
        const auto end = static_cast<int>(KvToQString(view.substr(0, match.begin + match.length)).size());
        formats.push_back({std::min(begin, cut), std::max(1, end - std::min(begin, cut)), found});
    }
    const int state = !list.isEnabled()           ? kKvReportDisabled
                      : list.IsItemSelected(line) ? kKvReportSelected
                                                  : kKvReportNormal;
    DWORD colour = list.GetListTextColor();
    if (!list._GetItemTextColor(line, kv::kAppLogContent, state, colour) && state == kKvReportSelected)
        colour = kv::SkinColour(L"keReportListSelectedTextColor", 0xFFFFFFFFu).rgba();
    QTextLayout layout(shown, list.font());
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine row = layout.createLine();
    row.setLineWidth(room.width() + kTextMargin);
    layout.endLayout();
    painter.setPen(QColor::fromRgba(colour));
    layout.draw(&painter, {room.left(), room.center().y() - row.height() / 2});
    return true;
}

int CKvAppLogListCtrl::_GetColumnTextStyle(int line, int column)
{
    return column == kv::kAppLogLevel ? kKvReportCentre
                                      : CKvReportListCtrl::_GetColumnTextStyle(line, column);
}

BOOL CKvAppLogListCtrl::_GetItemTextColor(int line, int column, int state, DWORD& colour)
{
    if (column != kv::kAppLogContent || !IsDate(CKvReportListCtrl::GetItemText(line, kv::kAppLogType)))
        return CKvReportListCtrl::_GetItemTextColor(line, column, state, colour);
    colour = GetListTextColor();
    return 1;
}

QString CKvAppLogListCtrl::ToolTipAt(CPoint point, CRect& area) const
{
    const CRect cells = GetCellsRect();
    if (point.y < cells.top) { // a header that is cut
        int left = cells.left - GetScrollOffset().x;
        for (int column = 0; column < GetColumnCount(); ++column) {
            const int right = left + GetColumnWidth(column);
            const QString text = KvToQString(GetHeaderText(column));
            if (point.x >= left && point.x < right) {
                area = {left, 0, right, cells.top};
                return fontMetrics().horizontalAdvance(text) > right - left - 2 * kTextMargin ? text
                                                                                              : QString();
            }
            left = right;
        }
        return {};
    }
    int line = -1;
    int column = -1;
    if (!HitTest(point, line, column))
        return {};
    const CString typeText = CKvReportListCtrl::GetItemText(line, kv::kAppLogType);
    if (column == kv::kAppLogType || column == kv::kAppLogLevel)
        return {}; // always whole
    if (column != kv::kAppLogContent || !IsDate(typeText))
        return CKvReportListCtrl::ToolTipAt(point, area);
    area = GetCellRect(line, column);
    const QString text = KvToQString(CKvReportListCtrl::GetItemText(line, column));
    const bool isCut =
        QFontMetrics(DateFont(font())).horizontalAdvance(text) > area.Width() - 2 * kDateMargin;
    return isCut ? text : QString();
}

void CKvAppLogListCtrl::Impl::ApplyFilter()
{
    const bool isOff = typeMask == (1u << kv::kAppLogTypes) - 1 && textFilter.IsEmpty();
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
    Recount();
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
    overlayAsked = false;
    if (IsFindOpen())
        findBar->ShowCount(needle.IsEmpty() ? -1 : matchPlace, matchCount);
    if (list.IsEndInView())
        missed = 0;
    if (missed == 0) {
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
    badge->setText(KvToQString(kv::FillText(kv::LoadText(kTextNew), {kv::NumberText(std::int64_t{missed})})));
    badge->setToolTip(KvToQString(kv::LoadText(kTextGoToEnd)));
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

void CKvAppLogListCtrl::OnPaint(Graphics& graphics)
{
    CKvReportListCtrl::OnPaint(graphics);
    if (m_impl->missed > 0 && IsEndInView())
        m_impl->AskOverlay(); // the user has come to the end
}

void CKvAppLogListCtrl::OnSize(int width, int height)
{
    CKvReportListCtrl::OnSize(width, height);
    m_impl->PlaceFindBar();
    m_impl->AskOverlay();
}
