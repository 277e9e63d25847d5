/// @file
/// The find and replace dialog: asks for the texts and leaves the search to an editor.
#pragma once

#include "KvDialog.h"

#include <memory>

KV_INTERFACES_BEGIN

/// The editor that searches. Texts end with a zero and are valid until the operation returns; an operation
/// may delete the dialog. Never deleted through this interface: it has no virtual destructor.
///
/// Results: 2 nothing was found, which the dialog tells the user; 0 done; 1 done, after the search went on at
/// the other end of the texts.
class IKvFindReplaceTxtNotify
{
public:
    /// Goes to the next place. @param text may be empty.
    /// @param matchCase 0: the case of letters does not count.
    /// @return see above.
    virtual int Find(const wchar_t* /*text*/, BOOL /*matchCase*/) { return 0; }
    /// Replaces the place that was found, or all of them. @param text never empty.
    /// @param replacement may be empty.
    /// @param matchCase as above. @param all 0: the one that was found. @return see above.
    virtual int Replace(const wchar_t* /*text*/, const wchar_t* /*replacement*/, BOOL /*matchCase*/,
                        BOOL /*all*/)
    {
        return 0;
    }
};

KV_INTERFACES_END

/// The result of a search that found nothing.
inline constexpr int kKvFindNotFound = 2;

/// The dialog's template.
inline constexpr UINT kKvFindReplaceDialog = 10034;
inline constexpr UINT kKvFindNextButton = 10235;   ///< "Find Next"
inline constexpr UINT kKvMatchCaseCheck = 10240;   ///< "Match case"
inline constexpr UINT kKvFindEdit = 10242;         ///< the text to find
inline constexpr UINT kKvReplaceEdit = 10243;      ///< the text to replace with
inline constexpr UINT kKvReplaceButton = 10244;    ///< "Replace"
inline constexpr UINT kKvReplaceAllButton = 10245; ///< "Replace All"

/// "Find and Replace", modeless. `Create` makes it hidden and `show` shows it, with the find text selected;
/// Escape and the close box hide it. Texts and check box stay, also for another `Create`.
///
/// Enter and F3 find the next place. In either edit Up and Down bring the last ten texts back that an action
/// used. Nothing happens without a notify interface. When a search finds nothing, a message box says so, over
/// the dialog while that is shown and else over the window that `Create` was given.
class KV_API CKvFindReplaceTxtDlg : public CKvDialog
{
    Q_OBJECT

public:
    /// A dialog without a window and without texts.
    CKvFindReplaceTxtDlg();
    ~CKvFindReplaceTxtDlg() override;

    /// Makes the window, hidden. @param parent may be null. @return see `CKvDialog::Create`.
    int Create(CWnd* parent);
    /// @param notify who searches, never owned; null for nobody. It must outlive the dialog or be taken away.
    void SetNotify(IKvFindReplaceTxtNotify* notify);
    /// Sets the find text; silent. @param texts joined with nothing between them; no entries change nothing.
    void SetFindString(CStringArray& texts);
    /// What the find button does, also while the dialog is hidden: for a host's F3.
    void FindNext();

    /// A button was clicked. @param id one of the three; others do nothing.
    void OnBtnFindReplace(UINT id);
    /// A text changed: both edits are repainted.
    void OnEditUpdate();
    /// Enter.
    void OnOK() override;
    /// Hides the dialog.
    void OnCancel() override;
    BOOL OnInitDialog() override;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void OnSkinChanged() override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void _PopupMessageBox(const CString& text);

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
