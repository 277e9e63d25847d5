/// @file
/// The text list: lines of text, edited in place.
#pragma once

#include "KvTextListBase.h"

#include <QStringList>

/// A list with a text a row, without a header. See `CKvTextListBase` for what the user can do.
///
/// Indices count from 0. An array that an operation fills is emptied first; rows ascend in it.
class KV_API CKvTextEditListCtrl : public CKvTextListBase
{
    Q_OBJECT
    /// The texts, one a row. Setting them is silent and not undone.
    Q_PROPERTY(QStringList texts READ Texts WRITE SetTexts NOTIFY TextsEdited)

public:
    /// A list without rows that is not created yet.
    CKvTextEditListCtrl();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvTextEditListCtrl(QWidget* parent);
    ~CKvTextEditListCtrl() override;

    // The rows. Silent, not undone, and no modification.

    /// Appends a row. @param text its text. @return its index; -1 for null.
    int AddString(const wchar_t* text);
    /// Appends a row a text. @param texts the texts. @return the first one's index; -1 when there is none.
    int AddString(const CStringArray& texts);
    /// Inserts a row before `line`. @param line 0 … count, or -1 for the end. @param text its text.
    /// @return its index; -1 out of range or for null.
    int InsertString(int line, const wchar_t* text);
    /// @param line a row. @return 1; 0 out of range.
    int DeleteString(UINT line);
    /// Removes all rows. @param clearModified not 0: also forgets that the user changed anything. @return 1.
    int ResetContent(int clearModified);

    // The texts.

    using CKvTextListBase::GetString;
    /// @param texts receives all texts. @return how many.
    int GetString(CStringArray& texts) const;
    /// @param texts receives the texts of the selected rows. @return how many.
    int GetSelectString(CStringArray& texts) const;
    /// The same; while a cell is open, the text that is selected in it, if any. @param texts receives it.
    /// @return how many.
    int GetTxtFocus(CStringArray& texts) const;
    /// The lines of these texts one by one. A break at a text's end begins no further line.
    /// @param texts receives them. @return how many.
    int GetMultiLinesTxtFocus(CStringArray& texts) const;

    /// The row's own text colours. @param line a row.
    /// @param normal, selected, disabled 0xAARRGGBB: normal, while it is selected, while the list is
    /// disabled; null leaves that colour. @return 1; 0 out of range.
    int SetItemTextColor(int line, const DWORD* normal, const DWORD* selected, const DWORD* disabled);
    /// The same colours, or the theme's. @param line a row. @param normal, selected, disabled may be null.
    /// @return 1; 0 out of range, all unchanged.
    int GetItemTextColor(int line, DWORD* normal, DWORD* selected, DWORD* disabled) const;

    /// @return 1 when the user changed, inserted, removed or moved anything, or something was replaced, since
    /// the list was made or the flag cleared; undo of all of it clears it, too.
    BOOL IsModified() const;
    /// @param modified 0 clears the flag, another value sets it.
    void SetModify(int modified);

Q_SIGNALS:
    /// With each `TextEdited` and `RowsEdited`, and before what a host connected to these.
    void TextsEdited();

protected:
    const char* _GetRowFormat() const override;
    UINT _GetNameText() const override;
    void OnSkinChanged() override;

private:
    QStringList Texts() const;
    void SetTexts(const QStringList& texts);
};
