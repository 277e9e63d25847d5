#include "chrome/CaptionLayout.h"

#include "platform/FrameEdges.h"

#include <algorithm>

namespace kv {

namespace {

constexpr int kBandTop = 4;
constexpr int kBandBottom = 25;
constexpr int kToolTop = 27;
constexpr int kButtonsFromRight = 4;
constexpr int kTitleFromLeft = 4;
constexpr int kEmptyButtonWidth = 120;
constexpr int kItemsBehindTitle = 30;
constexpr int kItemsAboveBand = 4;
constexpr int kItemGap = 10;
constexpr int kStaticTitleAboveBand = 2;
constexpr int kStaticTitleBeforeButtons = 50;
constexpr int kFlagAboveBand = 2;
constexpr int kTitleFromFlag = 8;
constexpr int kLeastTitleRoom = 120; // in less a name cannot be told from others
constexpr int kAdvancedGap = 2;

int IndexOfRectAt(CPoint point, const std::vector<CRect>& rects)
{
    const auto found =
        std::find_if(rects.begin(), rects.end(), [point](const CRect& rect) { return rect.PtInRect(point); });
    return found == rects.end() ? -1 : static_cast<int>(found - rects.begin());
}

} // namespace

int CaptionGrowth(int textHeight)
{
    return std::max(0, textHeight - (kBandBottom - kItemsAboveBand));
}

CRect CaptionBand(const CRect& client, int growth)
{
    return {client.left, client.top + kBandTop, client.right, client.top + kBandBottom + growth};
}

CRect ToolWindowArea(const CRect& client, const CaptionForm& form, int growth)
{
    return {client.left, client.top + kToolTop + growth, client.right, client.bottom - form.toolBottom};
}

int WholeCaptionWidth(int itemsRight, int titleWidth, int buttonsWidth, const CaptionForm& form)
{
    return itemsRight + form.titleGap + titleWidth + kStaticTitleBeforeButtons + buttonsWidth +
           kButtonsFromRight;
}

std::array<CRect, 2> SeparatorLines(const CRect& client, int growth)
{
    const int middle = client.top + kBandBottom + growth + 1;
    return {CRect{client.left, middle - 1, client.right, middle},
            CRect{client.left, middle, client.right, middle + 1}};
}

std::array<int, 4> WindowButtonLefts(const CRect& band, const std::array<int, 4>& widths)
{
    std::array<int, 4> lefts{};
    int left = band.right - kButtonsFromRight;
    for (std::size_t i = 0; i < lefts.size(); ++i)
        lefts[i] = left -= widths[i];
    return lefts;
}

CRect ApplicationTitleRect(const CRect& band, int textWidth)
{
    const int left = band.left + kTitleFromLeft;
    return {left, band.top, left + textWidth, band.bottom};
}

CRect ApplicationButtonRect(const CRect& titleRect, const CaptionForm& form)
{
    return {titleRect.left, titleRect.top - form.buttonTop, titleRect.right + form.buttonRight,
            titleRect.bottom + form.buttonBottom};
}

CRect EmptyButtonRect(const CRect& band)
{
    return {band.left, band.top, band.left + kEmptyButtonWidth, band.bottom};
}

CRect ItemRow(const CRect& band, const CRect& titleRect)
{
    return {titleRect.right + kItemsBehindTitle, band.top - kItemsAboveBand, band.right,
            band.bottom - kItemsAboveBand};
}

std::vector<CRect> ItemRects(const CRect& row, const std::vector<CSize>& texts)
{
    std::vector<CRect> rects;
    rects.reserve(texts.size());
    int left = row.left;
    for (const CSize& text : texts) {
        rects.push_back({left, row.bottom - text.cy, left + text.cx, row.bottom});
        left += text.cx + kItemGap;
    }
    return rects;
}

CRect StaticTitleRect(const CRect& band, const int* itemsRight, int menuButtonLeft, const CaptionForm& form)
{
    return {(itemsRight ? *itemsRight : band.left) + form.titleGap, band.top - kStaticTitleAboveBand,
            menuButtonLeft - kStaticTitleBeforeButtons, band.bottom - kStaticTitleAboveBand};
}

CRect SwitchFlagRect(const CRect& band, const CSize& picture)
{
    if (picture.cx <= 0 || picture.cy <= 0)
        return {};
    const int left = (band.left + band.right) / 2 - picture.cx / 2;
    const int top = band.top - kFlagAboveBand;
    return {left, top, left + picture.cx, top + picture.cy};
}

CRect LevelWithItems(const CRect& band, const CRect& room, int textHeight)
{
    const int bottom = band.bottom - kItemsAboveBand;
    return {room.left, bottom - textHeight, room.right, bottom};
}

CRect TitleTextRoom(const CRect& title, const CRect& flag)
{
    if (flag.IsRectEmpty() || flag.right <= title.left || flag.left >= title.right)
        return title;
    CRect before = title;
    CRect behind = title;
    before.right = flag.left - kTitleFromFlag;
    behind.left = flag.right + kTitleFromFlag;
    return before.Width() >= std::min<int>(kLeastTitleRoom, behind.Width()) ? before : behind;
}

AdvancedLayout AdvancedToolRects(const CRect& area, const CSize* const sizes[2], const CSize& separator)
{
    AdvancedLayout layout;
    int right = area.right;
    for (const std::size_t i : {std::size_t{1}, std::size_t{0}}) {
        if (!sizes[i])
            continue;
        layout.windows[i] = {right - sizes[i]->cx, area.top, right, area.top + sizes[i]->cy};
        right = layout.windows[i].left;
        layout.separators[i] = {right - separator.cx, area.top, right, area.top + separator.cy};
        right = layout.separators[i].left - kAdvancedGap;
    }
    return layout;
}

CaptionHit HitTestCaption(CPoint point, const CaptionParts& parts)
{
    for (const auto& [number, rect] : parts.buttons) {
        if (rect.PtInRect(point))
            return {CaptionPart::Button, static_cast<int>(number)};
    }
    if (const int item = IndexOfRectAt(point, parts.items); item >= 0)
        return {CaptionPart::Item, item};
    if (parts.flag.PtInRect(point))
        return {CaptionPart::Flag, -1};
    if (const unsigned edges = parts.resizable ? FrameEdgesAt(point, parts.frame) : kNoEdge; edges != kNoEdge)
        return {CaptionPart::Edge, static_cast<int>(edges)};
    return {parts.band.PtInRect(point) ? CaptionPart::Caption : CaptionPart::Client, -1};
}

} // namespace kv
