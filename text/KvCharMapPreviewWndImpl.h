// What stands behind the character grid: the face, the model, and what the user does.
#pragma once

#include "KvCharMapDlg.h"
#include "text/CharFace.h"
#include "text/CharMapAccess.h"
#include "text/CharMapModel.h"
#include "text/CharMapPainter.h"

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
    void NotifySelected(bool scrolled);
    void BeginDrag();
    kv::CharMapLook Look() const;
    /// The index of the character at a client point, or -1.
    int IndexAt(CPoint point) const;
    /// Where the preview stands when it is shown; empty without a selected character in view.
    CRect PreviewRect() const;
    char16_t SelectedCode() const;

    CKvCharMapPreviewWnd& control;
    CString face;
    kv::CharFace font;
    kv::CharMapModel model;
    kv::CharRows rows;
    kv::CharMapAccess access;
    std::optional<CPoint> press; ///< on the selected character, not yet a drag
    bool hidesPreview = false;
};
