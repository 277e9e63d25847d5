// Which characters a grid shows, and which of them is selected.
#pragma once

#include "core/WheelNotches.h"
#include "text/CharMapLayout.h"
#include "text/CodeTable.h"

namespace kv {

/// A step of the selection by the keyboard.
enum class CharStep
{
    Left,
    Right,
    Up,
    Down,
    PageUp,
    PageDown,
    First,
    Last
};

class CharMapModel
{
public:
    /// Another table: shown from its beginning, nothing selected.
    void SetTable(CodeTable table);
    const CodeTable& Table() const { return m_table; }
    int Count() const { return static_cast<int>(m_table.size()); }

    /// The index of the first character that is shown, a multiple of 20.
    int First() const { return m_first; }
    /// Takes the nearest row at or above an index that there is. @return whether it is another one than
    /// before.
    bool SetFirst(int first);
    bool ScrollRows(int rows);
    /// Takes a part of a wheel notch: 120 is one, positive is up. Parts add up until the direction turns.
    bool Wheel(int delta);

    /// -1 for none.
    int Selected() const { return m_selected; }
    /// Also brings the character into view. An index that is none selects none. @return whether it was
    /// another.
    bool Select(int index);
    /// Where a step leads from the selection; the first one in view where there is none. A step that leads
    /// nowhere stays. -1 without characters.
    int Stepped(CharStep step) const;
    /// The character in a cell of the page; -1 for an empty one.
    int IndexAt(int cell) const;
    /// The cell in which a character stands; -1 when it is not in view.
    int CellOf(int index) const;

private:
    CodeTable m_table;
    int m_first = 0;
    int m_selected = -1;
    WheelNotches m_wheel;
};

} // namespace kv
