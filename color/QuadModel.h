// The four corners of a gradient, the selected one among them, and what rearranges them.
#pragma once

#include "KvTypes.h"
#include "color/ArrowKey.h"
#include "color/QuadGradient.h"

#include <cstdint>

namespace kv {

/// Corners are numbered as in QuadColours; an edit of a corner that is not there does nothing. The selection
/// stays at its place when colours move.
class QuadModel
{
public:
    static constexpr int kCorners = 4;

    const QuadColours& Corners() const { return m_corners; }
    /// @return true when a colour changed.
    bool SetCorners(const QuadColours& corners);
    bool SetCorner(int corner, std::uint32_t colour);

    /// -1 = none.
    int Selected() const { return m_selected; }
    /// @return true when another corner, or none, is selected now.
    bool Select(int corner);
    /// @return 0 when no corner is selected.
    std::uint32_t SelectedColour() const;
    bool SetSelectedColour(std::uint32_t colour) { return SetCorner(m_selected, colour); }
    /// The corner that an arrow key leads to: the selected one at an edge, the first when none is selected.
    int Neighbour(ArrowKey arrow) const;

    bool Exchange(int first, int second);
    bool ExchangeLeftAndRight();
    bool ExchangeTopAndBottom();
    /// Each colour goes to the next corner around.
    bool TurnClockwise();
    bool TurnCounterclockwise();

private:
    static constexpr bool IsCorner(int corner) { return corner >= 0 && corner < kCorners; }

    QuadColours m_corners{0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0xFFFF00FFu};
    int m_selected = 0;
};

} // namespace kv
