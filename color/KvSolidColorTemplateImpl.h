// What stands behind the swatch grid: the process's swatches, and what the user does to a grid.
#pragma once

#include "KvSolidColorTemplate.h"
#include "color/SwatchAccess.h"
#include "color/SwatchLayout.h"
#include "color/SwatchPainter.h"
#include "color/SwatchStore.h"

#include <optional>
#include <string>

namespace kv {

/// The commands of the context menu.
enum SwatchMenuCommand : UINT
{
    kSwatchResetAll = 32808,
    kSwatchSaveCurrent = 32809,
};

/// A press of the mouse button that is not yet a pick, nor a drag.
struct SwatchPress
{
    SwatchCell cell;
    CPoint start;
    bool isOver; ///< the pointer is over the cell
};

} // namespace kv

// Functions that notify may delete the control; nothing of it is touched afterwards.
struct CKvSolidColorTemplate::Impl : kv::SwatchUser
{
    explicit Impl(CKvSolidColorTemplate& owner);
    virtual ~Impl();

    /// The swatches that all grids show.
    static kv::SwatchStore& Store();
    static CString& Folder();
    static std::wstring File();
    /// Every grid shows what the store holds now.
    static void SwatchesReplaced();
    static void SwatchChanged(int index);
    /// Stores a colour that the user gave, in the file too.
    static void Keep(int index, DWORD colour);

    kv::SwatchCell CurrentCell() const override;
    std::optional<kv::SwatchCell> HitTest(CPoint point) const;
    /// The colour that the cell shows in an enabled grid.
    DWORD ColourOf(const kv::SwatchCell& cell) const;
    kv::SwatchLook Look() const;
    void DrawCellAtRest(Graphics& graphics, const kv::SwatchCell& cell) const;
    void SetCurrent(const kv::SwatchCell& cell);
    void HoverAt(const std::optional<kv::SwatchCell>& cell);
    void DropOver(const std::optional<kv::SwatchCell>& cell);

    void PickCell(const kv::SwatchCell& cell) override;
    void FocusCell(const kv::SwatchCell& cell) override;
    void RequestStore(int swatch);
    bool Notify(int index, DWORD colour, int store);

    void Press(const kv::SwatchCell& cell, CPoint point);
    void MoveTo(CPoint point);
    /// The press is over, without a pick.
    void DropPress();
    /// Drags the pressed swatch's colour, unless the press is over.
    void BeginDrag();
    bool Walk(UINT key);
    void RunMenuCommand(UINT command, const kv::SwatchCell& cell);
    /// The swatch that takes what is dropped at the point, or none.
    std::optional<kv::SwatchCell> DropCell(const QDropEvent& event) const;

    CKvSolidColorTemplate& control;
    int columns = 3;
    int rows = 8;
    kv::SwatchLayout layout{{}, 3, 8};
    kv::SwatchPainter painter;
    std::optional<kv::SwatchCell> current; ///< none before the user chose one
    std::optional<kv::SwatchCell> hovered;
    std::optional<kv::SwatchCell> dropTarget;
    std::optional<kv::SwatchPress> press;
    kv::SwatchAccess access;
};
