// What stands behind the character grid: the face, the model, and what the user does.
#pragma once

#include "KvCharMapDlg.h"
#include "text/CharFace.h"
#include "text/CharMapAccess.h"
#include "text/CharMapModel.h"
#include "text/CharMapPainter.h"

#include <functional>
#include <optional>

// Functions that notify may delete the control; nothing of it is touched afterwards.
struct CKvCharMapPreviewWnd::Impl : kv::CharMapUser
{
    explicit Impl(CKvCharMapPreviewWnd& owner) : control(owner), access(owner, model, *this) {}
    virtual ~Impl() = default;

    void PickCharacter(int index) override;
    void FocusCharacter(int index) override;
    /// The user selects a character, and the parent hears of it.
    void SelectByUser(int index);
    /// The user picks the selected one.
    void Pick();
    /// @return false when the control is gone afterwards.
    bool Send(UINT code);
    void NotifySelected(bool isOther, bool scrolled);
    /// After the selection or the view has changed: the pointer may be where the preview stands now.
    void PlacePreview();
    void BeginDrag();
    kv::CharMapLook Look() const;
    /// The index of the character at a client point, or -1.
    int IndexAt(CPoint point) const;
    /// Where the preview stands when it is shown; empty without a selected character in view.
    CRect PreviewRect() const;
    char16_t SelectedCode() const;

    CKvCharMapPreviewWnd& control;
    CString face;
    CString shown; ///< the face whose table and glyphs these are
    kv::CharFace font;
    kv::CharMapModel model;
    kv::CharRows rows;
    kv::CharMapAccess access;
    std::optional<CPoint> press; ///< on the selected character, not yet a drag
    bool hidesPreview = false;
    // The dialog around the grid; may be empty.
    std::function<void()> viewChanged;           ///< the characters that are shown, or the selection
    std::function<void()> faceChanged;           ///< the table, and with it all else
    std::function<void(char16_t)> characterUsed; ///< copied or dragged out
};
