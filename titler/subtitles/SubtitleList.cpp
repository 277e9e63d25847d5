#include "subtitles/SubtitleList.h"

#include "subtitles/SubtitleCheck.h"
#include "window/Texts.h"

#include <QPainter>
#include <QPainterPath>

namespace titler {
namespace {

constexpr int kSign = 14;    // logical pixels, each a square
constexpr int kPlayMark = 3; // at the left edge, where no text stands

struct Sign
{
    unsigned fault;
    UINT textId;
    QRgb colour;
};
constexpr Sign kSigns[] = {{kSubtitleNegative, kTextSubtitleNegative, 0xFFFF7B72},
                           {kSubtitleOverlap, kTextSubtitleOverlap, 0xFFFFA657},
                           {kSubtitleFast, kTextSubtitleFast, 0xFFE3D34B}};

// An arrow back, two that lie over one another, two hooks forwards: told apart without their colours, too.
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
    default:
        for (const double x : {2.0, 7.0})
            shape.addPolygon(QPolygonF({{x, 2}, {x + 5, 7}, {x, 12}, {x, 2}}));
    }
    return shape;
}

} // namespace

QStringList FaultTexts(unsigned faults)
{
    QStringList texts;
    for (const Sign& sign : kSigns)
        if ((faults & sign.fault) != 0)
            texts << Text(sign.textId);
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

void SubtitleList::SetFaults(std::unordered_map<std::uint64_t, unsigned> faults)
{
    if (faults == m_faults)
        return;
    m_faults = std::move(faults);
    UpdateCells();
}

void SubtitleList::GoTo(int row)
{
    SetSelItem(row);
    EnsureVisible(row);
}

// Space plays: the current row is selected already, and Ctrl+Space remains where it is not. Ctrl and the
// arrows sideways step through time; without Ctrl they go from cell to cell.
bool SubtitleList::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    const bool isPlayback = key == VK_SPACE && modifiers == Qt::NoModifier;
    const bool isStep = (key == VK_LEFT || key == VK_RIGHT) && (modifiers & Qt::ControlModifier) != 0;
    return !isPlayback && !isStep && CKvSubTitleTxtListEditor::WantsShortcut(key, modifiers, character);
}

unsigned SubtitleList::FaultsOf(int row) const
{
    const auto found = m_faults.find(GetRowKey(row));
    return found == m_faults.end() ? 0 : found->second;
}

// At the right end of the text.
QRect SubtitleList::SignsRect(int row) const
{
    const QRect cell = GetCellRect(row, kKvSubTitleText);
    const int width = kSign * static_cast<int>(FaultTexts(FaultsOf(row)).size());
    return {cell.right() + 1 - width, cell.top(), width, cell.height()};
}

// Over whatever colour the row has: that it plays or is selected hides no fault.
void SubtitleList::DrawItem(Graphics* graphics, int line, int column)
{
    const unsigned faults = graphics != nullptr && column == kKvSubTitleText ? FaultsOf(line) : 0;
    if (faults == 0) {
        CKvSubTitleTxtListEditor::DrawItem(graphics, line, column);
        return;
    }
    const QRect signs = SignsRect(line);
    QRect text = GetCellRect(line, column);
    QRect mark = text;
    mark.setWidth(kPlayMark);
    text.setRight(signs.left() - 1);
    graphics->save();
    graphics->setClipRect(mark, Qt::IntersectClip);
    CKvSubTitleTxtListEditor::DrawItem(graphics, line, column);
    graphics->restore();
    DrawCellText(graphics, text, line, column, font());

    graphics->save();
    graphics->setRenderHint(QPainter::Antialiasing);
    graphics->translate(signs.left(), signs.top() + (signs.height() - kSign) / 2.0);
    for (const Sign& sign : kSigns) {
        if ((faults & sign.fault) == 0)
            continue;
        graphics->setPen(QPen(QColor(sign.colour), 1.25));
        graphics->setBrush(sign.fault == kSubtitleOverlap ? QBrush(Qt::NoBrush)
                                                          : QBrush(QColor(sign.colour)));
        graphics->drawPath(ShapeOf(sign.fault));
        graphics->translate(kSign, 0);
    }
    graphics->restore();
}

QString SubtitleList::ToolTipAt(CPoint point, CRect& area) const
{
    int line = -1;
    int column = -1;
    if (HitTest(point, line, column) && FaultsOf(line) != 0) {
        const QRect signs = SignsRect(line);
        if (signs.contains(point)) {
            area = signs;
            return FaultTexts(FaultsOf(line)).join(u'\n');
        }
    }
    return CKvSubTitleTxtListEditor::ToolTipAt(point, area);
}

} // namespace titler
