// Where the parts of a caption strip stand. Pure; client coordinates in logical pixels.
#pragma once

#include "KvTypes.h"

#include <array>
#include <vector>

namespace kv {

/// What differs between the two bars.
struct CaptionForm
{
    int titleGap;        ///< from the last item to the static title
    int toolBottom;      ///< from the tool-window area to the client's bottom
    bool itemsArePopups; ///< menu entries with mnemonics, else tabs
    bool followsFrame;   ///< button 10002 shows the frame's state, else what was done and told
    bool coloursTips;    ///< the buttons' tool tips wear colours of their own
    // The application button beyond its text box.
    int buttonTop;
    int buttonRight;
    int buttonBottom;
};
inline constexpr CaptionForm kTitleBarForm{100, 0, false, true, true, 2, 20, -2};
inline constexpr CaptionForm kMenuBarForm{150, 5, true, false, false, 4, 10, 0};

/// How much higher the band is where the letters need it, and everything below it stands lower.
int CaptionGrowth(int textHeight);
/// The caption band: L, T + 4, R, T + 25.
CRect CaptionBand(const CRect& client, int growth = 0);
CRect ToolWindowArea(const CRect& client, const CaptionForm& form, int growth = 0);

/// The centre separator: its upper and its lower line, below the band.
std::array<CRect, 2> SeparatorLines(const CRect& client, int growth = 0);
/// How wide a strip is in which everything has its room.
/// @param itemsRight in the band's coordinates. @param buttonsWidth of the window buttons together.
int WholeCaptionWidth(int itemsRight, int titleWidth, int buttonsWidth, const CaptionForm& form);

/// Left edges of the window buttons close, maximise, minimise, menu (this order): from 4 pixels inside the
/// band's right edge leftwards, touching, y 0.
std::array<int, 4> WindowButtonLefts(const CRect& band, const std::array<int, 4>& widths);

/// The application button's text box: 4 pixels inside the band's left edge.
CRect ApplicationTitleRect(const CRect& band, int textWidth);
/// The application button round its text box.
CRect ApplicationButtonRect(const CRect& titleRect, const CaptionForm& form);
/// Where it stands while no application is active: 120 pixels at the band's left edge.
CRect EmptyButtonRect(const CRect& band);
/// The row of items: 30 pixels behind the text box, 4 pixels above the band, its height.
CRect ItemRow(const CRect& band, const CRect& titleRect);
/// The text boxes of the items: bottom-aligned in the row, 10 pixels apart, never clipped.
std::vector<CRect> ItemRects(const CRect& row, const std::vector<CSize>& texts);

/// Between the items and the window buttons, two pixels above the band; empty where there is no room.
/// @param itemsRight right edge of the last item; null without items. @param menuButtonLeft of button 10004.
CRect StaticTitleRect(const CRect& band, const int* itemsRight, int menuButtonLeft, const CaptionForm& form);

/// Where a text stands whose letters are to be level with those of the items.
/// @param room that of the text across. @param textHeight as that of the items.
CRect LevelWithItems(const CRect& band, const CRect& room, int textHeight);

/// The application-switch flag; empty for an empty picture.
CRect SwitchFlagRect(const CRect& band, const CSize& picture);

/// The room of the static title's text: its rectangle up to the flag, or the whole one where the flag would
/// leave less than 120 pixels of it.
CRect TitleTextRoom(const CRect& title, const CRect& flag);

/// The advanced tool windows at the right end of the tool-window area, each behind its separator.
struct AdvancedLayout
{
    CRect windows[2];
    CRect separators[2]; ///< empty where the window is left out
};
/// @param sizes of the windows; null leaves one out with its separator.
AdvancedLayout AdvancedToolRects(const CRect& area, const CSize* const sizes[2], const CSize& separator);

enum class CaptionPart
{
    Client, ///< below the strip
    Button,
    Item,
    Flag,
    Edge, ///< of the frame, for resizing it
    Caption
};

struct CaptionHit
{
    CaptionPart part = CaptionPart::Client;
    int index = -1; ///< of the item, the button's number, or the edges as FrameEdge bits
    friend bool operator==(const CaptionHit&, const CaptionHit&) = default;
};

/// What stands where just now.
struct CaptionParts
{
    CRect band;
    std::vector<CRect> items;
    CRect flag;
    std::vector<std::pair<UINT, CRect>> buttons; ///< visible ones
    CRect frame;                                 ///< of the window, in the bar's coordinates
    bool resizable = false;                      ///< the frame has resize borders (it is not maximised)
};

/// What a point hits: buttons, items and the flag win over the frame's edges, edges over the caption band.
CaptionHit HitTestCaption(CPoint point, const CaptionParts& parts);

} // namespace kv
