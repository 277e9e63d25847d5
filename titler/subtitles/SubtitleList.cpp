#include "subtitles/SubtitleList.h"

#include "KvGuiRes.h"
#include "window/Texts.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <iterator>
#include <utility>

namespace titler {
namespace {

constexpr int kSign = 14;    // logical pixels, each a square
constexpr int kPlayMark = 3; // at the left edge, where no text stands
constexpr DWORD kMatchBack = 0xFFFFD54A;
constexpr DWORD kMatchText = 0xFF1A1A1A;

struct Sign
{
    unsigned fault;
    UINT textId;
    const wchar_t* colourKey;
};
constexpr Sign kSigns[] = {{kSubtitleNegative, kTextSubtitleNegative, L"keTitlerNegativeSignColor"},
                           {kSubtitleOverlap, kTextSubtitleOverlap, L"keTitlerOverlapSignColor"},
                           {kSubtitleFast, kTextSubtitleFast, L"keTitlerFastSignColor"},
                           {kSubtitleEmpty, kTextSubtitleEmpty, L"keTitlerEmptySignColor"}};

// An arrow back, two that lie over one another, an empty ring, two hooks forwards: told apart without their
// colours, too.
QPainterPath ShapeOf(unsigned fault)
{
    QPainterPath shape;
    switch (fault) {
    case kSubtitleNegative:
        shape.addPolygon(QPolygonF({{9, 2}, {3, 7}, {9, 12}, {9, 2}}));
        break;
    case kSubtitleOverlap:
        shape.addRect(2, 3, 7, 5);
        shape.addRect(5, 6, 7, 5);
        break;
    case kSubtitleEmpty:
        shape.addEllipse(2.5, 2.5, 9, 9);
        break;
    default:
        for (const double x : {2.0, 7.0})
            shape.addPolygon(QPolygonF({{x, 2}, {x + 5, 7}, {x, 12}, {x, 2}}));
    }
    return shape;
}

int SignCount(const SubtitleFaults& faults)
{
    return static_cast<int>(std::count_if(std::begin(kSigns), std::end(kSigns), [&](const Sign& sign) {
        return (faults.kinds & sign.fault) != 0;
    }));
}

// "0.4", "0.04".
QString ShortNumber(double number)
{
    QString text = QString::number(number, 'f', 2);
    while (text.endsWith(u'0'))
        text.chop(1);
    return text.endsWith(u'.') ? text.chopped(1) : text;
}

} // namespace

QStringList FaultTexts(const SubtitleFaults& faults)
{
    QStringList texts;
    for (const Sign& sign : kSigns) {
        if ((faults.kinds & sign.fault) == 0)
            continue;
        const bool isOverlap = sign.fault == kSubtitleOverlap;
        texts << (isOverlap ? Text(sign.textId, {QString::number(faults.overlapped + 1),
                                                 ShortNumber(faults.overlapSeconds)})
                            : Text(sign.textId));
    }
    return texts;
}

SubtitleTimes SubtitleList::Times(int row) const
{
    SubtitleTimes times;
    GetTimeCode(row, times.in, times.out);
    return times;
}

void SubtitleList::SetTimes(int row, const SubtitleTimes& times)
{
    SetTimeCode(row, times.in, 1);
    SetTimeCode(row, times.out, 0);
}

void SubtitleList::SetFaults(std::unordered_map<std::uint64_t, SubtitleFaults> faults)
{
    if (faults == m_faults)
        return;
    m_faults = std::move(faults);
    UpdateCells();
}

void SubtitleList::ShowMatch(int row, const TextRange& range)
{
    ClearMatch();
    m_matchRow = GetRowKey(row);
    m_match = range;
    UpdateLine(row);
}

void SubtitleList::ClearMatch()
{
    UpdateLine(FindRowKey(std::exchange(m_matchRow, 0)));
}

void SubtitleList::GoTo(int row)
{
    SetSelItem(row);
    EnsureVisible(row);
}

QString SubtitleList::RowFormat() const
{
    return QLatin1String(_GetRowFormat());
}

std::vector<int> SubtitleList::TakeTouchedRows()
{
    std::vector<int> rows = std::exchange(m_touched, {});
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

SubtitleList::RowCopy& SubtitleList::CopyOf(int row)
{
    const auto place = static_cast<std::size_t>(GetRowKey(row) - m_firstCopyKey);
    if (place >= m_copies.size())
        m_copies.resize(static_cast<std::size_t>(GetNextRowId() - m_firstCopyKey));
    return m_copies[place];
}

void SubtitleList::_OnItemsModifying(int kind, const int* lines, int count)
{
    if (kind == kKvReportRemoved)
        m_touched.insert(m_touched.end(), lines, lines + count);
    if (kind == kKvReportAllRemoved) {
        m_copies.clear();
        m_firstCopyKey = GetNextRowId(); // those that come have later ones
    }
    for (int i = 0; i < count && !m_copies.empty(); ++i)
        CopyOf(lines[i]).reset();
    CKvSubTitleTxtListEditor::_OnItemsModifying(kind, lines, count);
}

void SubtitleList::_OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column)
{
    if (kind == kKvReportInserted || kind == kKvReportTextChanged)
        m_touched.insert(m_touched.end(), rows.begin(), rows.end());
    CKvSubTitleTxtListEditor::_OnNotifyItemModify(kind, rows, column);
}

std::optional<std::pair<int, QString>> SubtitleList::Typed() const
{
    const int row = GetEditLine();
    if (row < 0 || GetEditColumn() != kKvSubTitleText)
        return std::nullopt;
    const std::wstring text = GetOpenText();
    if (text == GetItemText(row, kKvSubTitleText))
        return std::nullopt;
    return std::pair(row, QString::fromStdWString(text));
}

void SubtitleList::_UpdateTextWidth()
{
    CKvSubTitleTxtListEditor::_UpdateTextWidth();
    emit CellTyped();
}

void SubtitleList::_OnEditClosed()
{
    CKvSubTitleTxtListEditor::_OnEditClosed();
    emit CellTyped();
}

BOOL SubtitleList::_BeginRowDrag(int line)
{
    emit RowsPickedUp();
    return CKvSubTitleTxtListEditor::_BeginRowDrag(line);
}

BOOL SubtitleList::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    m_modifiers = modifiers;
    return CKvSubTitleTxtListEditor::OnKeyDown(key, modifiers);
}

BOOL SubtitleList::OnChar(UINT character)
{
    return CKvSubTitleTxtListEditor::OnChar(character) != 0 || TypeOver(character) ? 1 : 0;
}

// A character opens the current cell in place of its text. From then on the cell has the keys, also those
// that are commands elsewhere.
bool SubtitleList::TypeOver(UINT character)
{
    constexpr UINT firstText = 0x21; // a blank plays
    constexpr UINT deleteSign = 0x7F;
    const bool isText = character >= firstText && character != deleteSign &&
                        !(m_modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (!isText || GetCurrentItem() < 0 || EditCell(GetCurrentItem(), GetCurrentColumn()) == 0)
        return false;
    const auto typed = static_cast<char32_t>(character);
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString::fromUcs4(&typed, 1));
    if (QWidget* cell = focusWidget(); cell != nullptr && cell != this)
        QCoreApplication::sendEvent(cell, &press);
    return true;
}

// The header has none: it belongs to no row.
void SubtitleList::OnContextMenu(CPoint point)
{
    if (GetCellsRect().PtInRect(point))
        CKvSubTitleTxtListEditor::OnContextMenu(point);
}

// Space plays: the current row is selected already, and Ctrl+Space remains where it is not. Ctrl and the
// arrows sideways step through time; without Ctrl they go from cell to cell.
bool SubtitleList::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    const bool isPlayback = key == VK_SPACE && modifiers == Qt::NoModifier;
    const bool isStep = (key == VK_LEFT || key == VK_RIGHT) && (modifiers & Qt::ControlModifier) != 0;
    return !isPlayback && !isStep && CKvSubTitleTxtListEditor::WantsShortcut(key, modifiers, character);
}

SubtitleFaults SubtitleList::FaultsOf(int row) const
{
    const auto found = m_faults.find(GetRowKey(row));
    return found == m_faults.end() ? SubtitleFaults() : found->second;
}

// At the right end of the text.
QRect SubtitleList::SignsRect(int row) const
{
    const QRect cell = GetCellRect(row, kKvSubTitleText);
    const int width = kSign * SignCount(FaultsOf(row));
    return {cell.right() + 1 - width, cell.top(), width, cell.height()};
}

// In the list's own characters.
std::vector<KvReportMark> SubtitleList::MarksOf(int row) const
{
    if (m_matchRow == 0 || GetRowKey(row) != m_matchRow)
        return {};
    const QString text = QString::fromStdWString(GetItemText(row, kKvSubTitleText));
    const std::size_t begin = text.left(m_match.begin).toStdWString().size();
    const std::size_t end = text.left(m_match.end).toStdWString().size();
    return {{begin, end - begin, kMatchBack, kMatchText}};
}

// Over whatever colour the row has: that it plays or is selected hides no fault.
void SubtitleList::DrawItem(Graphics* graphics, int line, int column)
{
    if (graphics == nullptr || column != kKvSubTitleText) {
        CKvSubTitleTxtListEditor::DrawItem(graphics, line, column);
        return;
    }
    const QRect signs = SignsRect(line);
    const std::vector<KvReportMark> marks = MarksOf(line);
    if (signs.isEmpty() && marks.empty()) {
        CKvSubTitleTxtListEditor::DrawItem(graphics, line, column);
        return;
    }
    QRect text = GetCellRect(line, column);
    QRect mark = text;
    mark.setWidth(kPlayMark);
    text.setRight(signs.left() - 1);
    graphics->save();
    graphics->setClipRect(mark, Qt::IntersectClip);
    CKvSubTitleTxtListEditor::DrawItem(graphics, line, column);
    graphics->restore();
    DrawCellText(graphics, text, line, column, font(), marks);
    DrawSigns(*graphics, line);
}

void SubtitleList::DrawSigns(Graphics& graphics, int row) const
{
    const QRect signs = SignsRect(row);
    const unsigned faults = FaultsOf(row).kinds;
    graphics.save();
    graphics.setRenderHint(QPainter::Antialiasing);
    graphics.translate(signs.left(), signs.top() + (signs.height() - kSign) / 2.0);
    for (const Sign& sign : kSigns) {
        if ((faults & sign.fault) == 0)
            continue;
        const bool isOutline = sign.fault == kSubtitleOverlap || sign.fault == kSubtitleEmpty;
        DWORD colour = 0xFF808080;
        KvGuiRes::LoadColor(sign.colourKey, colour);
        graphics.setPen(QPen(QColor(colour), 1.25));
        graphics.setBrush(isOutline ? QBrush(Qt::NoBrush) : QBrush(QColor(colour)));
        graphics.drawPath(ShapeOf(sign.fault));
        graphics.translate(kSign, 0);
    }
    graphics.restore();
}

// What the signs show to the eye.
CString SubtitleList::_GetItemDescription(int line) const
{
    QStringList parts = FaultTexts(FaultsOf(line));
    if (const CString own = CKvSubTitleTxtListEditor::_GetItemDescription(line); !own.empty())
        parts.prepend(QString::fromStdWString(own));
    return parts.join(u' ').toStdWString();
}

QString SubtitleList::ToolTipAt(CPoint point, CRect& area) const
{
    int line = -1;
    int column = -1;
    if (HitTest(point, line, column) && FaultsOf(line).kinds != 0) {
        const QRect signs = SignsRect(line);
        if (signs.contains(point)) {
            area = signs;
            return FaultTexts(FaultsOf(line)).join(u'\n');
        }
    }
    return CKvSubTitleTxtListEditor::ToolTipAt(point, area);
}

} // namespace titler
