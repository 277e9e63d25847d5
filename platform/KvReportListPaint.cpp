// The report list's drawing.
#include "platform/FocusRing.h"
#include "platform/KvReportListImpl.h"

#include <QPaintEvent>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

// One line of text for a cell: a mark stands for each line break, and no more than can ever be seen.
QString OneLine(std::wstring_view text, int width)
{
    const std::size_t most =
        static_cast<std::size_t>(std::max(0, width)) + 16; // a pixel a character at least
    QString line = KvToQString(text.substr(0, std::min(text.size(), most)));
    const auto isControl = [](QChar c) {
        return c < u' ' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
    };
    if (std::none_of(line.cbegin(), line.cend(), isControl))
        return line;
    line.replace(QStringLiteral("\r\n"), QStringLiteral("\u21B5"));
    for (QChar& c : line) {
        if (c == u'\n' || c == u'\r')
            c = QChar(0x21B5);
        else if (isControl(c))
            c = u' ';
    }
    return line;
}

// A line of text, shaped once for its width and its drawing.
class ShapedLine
{
public:
    ShapedLine(const QString& text, const QFont& font) : m_layout(text, font)
    {
        m_layout.setCacheEnabled(true);
        QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute); // from right to left, too
        option.setTextDirection(Qt::LayoutDirectionAuto);      // each text's own, whatever the program's
        m_layout.setTextOption(option);
        Shape(text);
    }
    void Shape(const QString& text)
    {
        m_layout.setText(text);
        m_layout.beginLayout();
        m_line = m_layout.createLine();
        m_line.setLineWidth(kEndless);
        m_layout.endLayout();
    }
    QString Text() const { return m_layout.text(); }
    int Width() const { return static_cast<int>(std::ceil(m_line.naturalTextWidth())); }
    /// @param marked drawn over, as a selection is: the text is shaped as without.
    void Draw(QPainter& painter, const QPoint& base, const QList<QTextLayout::FormatRange>& marked) const
    {
        m_layout.draw(&painter, QPointF(base.x(), base.y() - m_line.ascent()), marked);
    }

private:
    static constexpr qreal kEndless = 1 << 20;
    QTextLayout m_layout;
    QTextLine m_line;
};

// Where the marks are in the line that is shown. A line break of two characters is one there.
QList<QTextLayout::FormatRange> ShownMarks(std::wstring_view text, const QString& shown, bool isCut,
                                           const std::vector<KvReportMark>& marks)
{
    QList<QTextLayout::FormatRange> ranges;
    const auto most = static_cast<int>(shown.size()) - (isCut ? 1 : 0); // the ellipsis
    std::size_t seen = 0;
    int place = 0;
    const auto placeOf = [&](std::size_t at) {
        at = std::min(at, text.size());
        if (at > 0 && at < text.size() && text[at - 1] == L'\r' && text[at] == L'\n')
            ++at;
        if (at > seen) {
            const std::wstring_view part = text.substr(seen, at - seen);
            place += static_cast<int>(OneLine(part, static_cast<int>(part.size())).size());
            seen = at;
        }
        return place;
    };
    for (const KvReportMark& mark : marks) {
        const int begin = std::min(placeOf(mark.begin), most);
        const int end = std::min(placeOf(mark.begin + mark.length), static_cast<int>(shown.size()));
        QTextLayout::FormatRange range{begin, std::max(end - begin, 1), {}};
        range.format.setBackground(QColor::fromRgba(mark.back));
        range.format.setForeground(QColor::fromRgba(mark.text));
        QTextLayout::FormatRange* last = ranges.empty() ? nullptr : &ranges.back();
        if (last && last->start + last->length >= begin && last->format == range.format)
            last->length = begin + range.length - last->start;
        else
            ranges += range;
        if (begin == most)
            break;
    }
    return ranges;
}

// A text from right to left begins at the right.
int StyleOf(const QString& text, int style)
{
    return style == kKvReportLeft && text.isRightToLeft() ? kKvReportRight : style;
}

// The left end of a text's base line in its room; whole pixels.
QPoint TextPlace(const QRect& room, const QFontMetrics& metrics, int width, int style)
{
    const int rest = style == kKvReportCentre  ? (room.width() - width) / 2
                     : style == kKvReportRight ? room.width() - width
                                               : 0;
    return {room.left() + rest, room.top() + (room.height() - metrics.height()) / 2 + metrics.ascent()};
}

} // namespace

int CKvReportListCtrl::Impl::State(int line) const
{
    if (!list.isEnabled())
        return kKvReportDisabled;
    return rows.Row(line).selected ? kKvReportSelected : kKvReportNormal;
}

QColor CKvReportListCtrl::Impl::Colour(int line, int column, bool isBack) const
{
    const int state = State(line);
    DWORD colour = 0;
    if (isBack ? list._GetItemBKColor(line, column, state, colour)
               : list._GetItemTextColor(line, column, state, colour))
        return QColor::fromRgba(colour);
    if (state == kKvReportSelected)
        return isBack ? theme.selectedBack : theme.selectedText;
    if (isBack)
        return rows.Row(line).selected ? theme.grid : theme.back;
    return state == kKvReportDisabled ? theme.disabledText : theme.text;
}

void CKvReportListCtrl::Impl::DrawHeader(QPainter& painter)
{
    const QRect header(0, 0, list.width(), layout.header.bottom);
    if (header.isEmpty() || !dirty.intersects(header))
        return;
    painter.setClipRect(header);
    painter.fillRect(header, theme.header);
    const kv::DevicePixels pixels(painter);
    painter.setPen(list.isEnabled() ? theme.text : theme.disabledText);
    const QFontMetrics metrics(list.font());
    const Qt::LayoutDirection direction = painter.layoutDirection();
    for (int column = 0; column < layout.ColumnCount(); ++column) {
        const int left = layout.Left(column) - scrollX;
        const int width = layout.Right(column) - layout.Left(column);
        const QRect room(left + kKvReportTextMargin, 0, width - 2 * kKvReportTextMargin, header.height());
        const QString text = KvToQString(columns.columns[static_cast<std::size_t>(column)].header);
        painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        // Columns run from left to right in every language, and their headings begin where they do.
        painter.drawText(room, static_cast<int>(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter),
                         metrics.elidedText(text, Qt::ElideRight, room.width()));
        painter.fillRect(pixels.Column(left + width - 1, 4, header.height() - 4), theme.disabledText);
    }
    painter.setLayoutDirection(direction);
}

void CKvReportListCtrl::Impl::DrawRow(QPainter& painter, int line, const QRect& row)
{
    const QRect cells = layout.cells;
    const kv::DevicePixels pixels(painter);
    for (int column = 0; column < layout.ColumnCount(); ++column) {
        const QRect cell = CellRect(row, column);
        if (!cell.intersects(cells))
            continue;
        painter.setClipRect(cell & cells);
        painter.fillRect(cell, Colour(line, column, true));
        drawn = {line, column, cell};
        list.DrawItem(&painter, line, column);
        drawn = {};
        if (!hasGrid)
            continue;
        painter.fillRect(pixels.Column(cell.right(), cell.top(), cell.bottom() + 1), theme.grid);
        painter.fillRect(pixels.Row(cell.left(), cell.right() + 1, cell.bottom()), theme.grid);
    }
    painter.setClipRect(row & cells);
    const int columnsEnd = std::max(cells.left(), layout.edges.back() - scrollX);
    const QRect beside(columnsEnd, row.top(), cells.right() + 1 - columnsEnd, row.height());
    if (!beside.isEmpty()) {
        painter.fillRect(beside, Colour(line, -1, true));
    }
    if (line == current && list.hasFocus()) {
        const bool isCell = IsColumn(currentColumn) && list._CanEditCell(line, currentColumn);
        kv::DrawFocusRing(painter, isCell ? CellRect(row, currentColumn) : row);
    }
}

// From above; the last one may be cut.
std::vector<kv::ReportScreenLine> CKvReportListCtrl::Impl::LinesInView() const
{
    std::vector<kv::ReportScreenLine> lines;
    const int first = TopLine();
    if (first < 0)
        return lines;
    int top = RowRect(first).top();
    rows.VisitShown(first, [&](int line, const kv::ReportRow& row) {
        if (top >= layout.cells.bottom)
            return false;
        lines.push_back({row.id, line, top, row.height, Look(line)});
        top += row.height;
        return true;
    });
    return lines;
}

// What, besides what it holds, makes a line look as it does.
int CKvReportListCtrl::Impl::Look(int line) const
{
    const int ring = line == current && list.hasFocus() ? currentColumn + 1 : 0;
    return 2 * ring + (rows.Row(line).selected ? 1 : 0);
}

// Logical pixels that are whole device pixels: a picture moved by less would be blurred. 0 for none.
int CKvReportListCtrl::Impl::ScreenUnit() const
{
    // The picture of a child that stands over the lines would be moved with them.
    for (const QWidget* child : list.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && child->geometry().intersects(layout.cells))
            return 0;
    }
    const double ratio = list.devicePixelRatioF();
    for (int unit = 1; unit <= 8; ++unit) {
        if (unit * ratio == std::floor(unit * ratio))
            return unit;
    }
    return 0;
}

void CKvReportListCtrl::Impl::UpdateScreen()
{
    const CRect& cells = layout.cells;
    const bool isWhole = !screen.IsKnown();
    const kv::ReportScreenStep step = screen.Show(LinesInView(), cells.top, cells.bottom, ScreenUnit());
    if (isWhole) {
        list.update();
        return;
    }
    if (step.shift != 0)
        list.scroll(0, step.shift, cells);
    for (const auto& [top, bottom] : step.bands)
        list.update(cells.left, top, cells.Width(), bottom - top);
}

void CKvReportListCtrl::OnPaint(Graphics& graphics)
{
    Impl& impl = *m_impl;
    // What is painted ahead of its frame is not what the last frame noted.
    if (impl.frameAsked || impl.frameDue)
        impl.screen.Forget();
    impl.SyncBars();
    graphics.setFont(font());
    impl.DrawHeader(graphics);
    const CRect& cells = impl.layout.cells;
    int end = cells.top;
    for (const kv::ReportScreenLine& line : impl.LinesInView()) {
        const QRect row(cells.left, line.top, cells.Width(), line.height);
        if (impl.dirty.intersects(row))
            impl.DrawRow(graphics, line.line, row);
        end = row.bottom() + 1;
    }
    graphics.setClipping(false);
    const QRect painted(0, 0, cells.right, std::min(end, cells.bottom));
    for (const QRect& rest : QRegion(rect()) - painted - QRect(0, 0, width(), cells.top))
        graphics.fillRect(rest, impl.theme.back);
}

void CKvReportListCtrl::paintEvent(QPaintEvent* event)
{
    m_impl->dirty = event->region();
    CKvWnd::paintEvent(event);
}

void CKvReportListCtrl::DrawItem(Graphics* graphics, int line, int column)
{
    if (graphics)
        DrawCellText(graphics, GetCellRect(line, column), line, column, font());
}

void CKvReportListCtrl::DrawCellText(Graphics* graphics, const CRect& rect, int row, int column,
                                     const QFont& textFont, const std::vector<KvReportMark>& marks)
{
    if (!graphics || !m_impl->IsCell(row, column))
        return;
    const std::wstring_view text = m_impl->rows.Row(row).Text(column);
    const QRect room = QRect(rect).adjusted(kKvReportTextMargin, 0, -kKvReportTextMargin, 0);
    if (text.empty() || room.width() <= 0)
        return;
    if (graphics->font() != textFont)
        graphics->setFont(textFont);
    const QFontMetrics metrics(textFont);
    ShapedLine line(OneLine(text, room.width()), textFont);
    const bool isCut = line.Width() > room.width();
    if (isCut)
        line.Shape(metrics.elidedText(line.Text(), Qt::ElideRight, room.width()));
    graphics->setPen(m_impl->Colour(row, column, false));
    const int style = StyleOf(line.Text(), _GetColumnTextStyle(row, column));
    line.Draw(*graphics, TextPlace(room, metrics, line.Width(), style),
              ShownMarks(text, line.Text(), isCut, marks));
}

QString CKvReportListCtrl::ToolTipAt(CPoint point, CRect& area) const
{
    const kv::ReportLayout& layout = m_impl->layout;
    int line = -1;
    int column = -1;
    QString text;
    if (layout.header.PtInRect(point)) {
        column = layout.ColumnAt(point.x + m_impl->scrollX);
        text = KvToQString(GetHeaderText(column));
    } else if (HitTest(point, line, column)) {
        text = KvToQString(ViewItemText(line, column));
    }
    if (column < 0)
        return {};
    area = line < 0 ? m_impl->CellRect(QRect(layout.header), column) : m_impl->CellRect(line, column);
    const int room = area.Width() - 2 * kKvReportTextMargin;
    const bool isCut =
        text.contains(QLatin1Char('\n')) || QFontMetrics(font()).horizontalAdvance(text) > room;
    return isCut ? text : QString();
}
