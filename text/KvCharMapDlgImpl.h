// What stands behind the character map: its items, and what they do to one another.
#pragma once

#include "KvCharMapDlg.h"
#include "KvScroll.h"
#include "text/CharSearchBox.h"
#include "text/CharShelf.h"
#include "text/CharShelfWnd.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

// Functions that notify may delete the dialog; nothing of it is touched afterwards.
struct CKvCharMapDlg::Impl
{
    explicit Impl(CKvCharMapDlg& owner) : dialog(owner) {}

    void MakeItems();
    void LayOut();
    void ApplyTexts();
    /// Gives the items the sizes that their texts need in the dialog's font.
    void Measure();
    /// Deletes what `MakeItems` made.
    void Clear();
    bool IsMade() const { return !grid.isNull(); }

    /// The grid's, of which the rows show characters, too.
    const kv::CharFace& Face() const;
    const kv::CodeTable& Table() const;
    char16_t SelectedCode() const;
    /// The character that keys are about: a row's own where it has the focus, else the selected one.
    char16_t FocusedCode() const;
    /// The face changed: bar, rows, status and search begin anew.
    void FaceChanged();
    void UpdateBar();
    void UpdateRows();
    /// The selection changed: status and buttons.
    void UpdateSelection();
    /// Selects a character for the user, where the face has it.
    void SelectCode(char16_t code);
    /// Selects the first match, or says that there is none. @param after see `kv::FindCharacter`.
    void Search(int after);
    /// In the grid, where the focus is in a row: what is found is selected there.
    void SearchNext();
    void PickSelected();
    void SendPicked(char16_t code);
    void Used(char16_t code);
    void Collect(char16_t code);
    void Copy();
    void CopyCharacter(char16_t code);
    /// Whether that is one of the keys that the dialog has a use for where the focus is.
    bool IsOwnKey(const QKeyEvent& key) const;
    void ToggleFavorite(char16_t code);
    void OpenMenu(QPoint screen);

    CKvCharMapDlg& dialog;
    IKvCmdTarget* target = nullptr;
    SKvGuiBasicSettings* settings = nullptr;
    CString face;
    kv::CharShelf recent;
    kv::CharShelf favorites;

    QPointer<CKvCharMapPreviewWnd> grid;
    QPointer<CKvScrollBar> bar;
    QPointer<QLabel> status;
    QPointer<kv::CharSearchBox> search;
    QPointer<QLabel> recentLabel;
    QPointer<QLabel> favoritesLabel;
    QPointer<QLabel> collectedLabel;
    QPointer<kv::CharShelfWnd> recentRow;
    QPointer<kv::CharShelfWnd> favoritesRow;
    QPointer<QLineEdit> collected;
    QPointer<QPushButton> insert;
    QPointer<QPushButton> favorite;
    QPointer<QPushButton> collect;
    QPointer<QPushButton> copy;
    IKvScrollLineHelper* line = nullptr; ///< in rows
};
