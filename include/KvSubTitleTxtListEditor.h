/// @file
/// The subtitle list: texts with time codes and the template that each is rendered with.
#pragma once

#include "KvTextListBase.h"
#include "KvVideoFormat.h"

/// The columns of a `CKvSubTitleTxtListEditor`.
enum EKvSubTitleColumn : int
{
    kKvSubTitleText = 0,     ///< the text
    kKvSubTitleIn = 1,       ///< in time code
    kKvSubTitleOut = 2,      ///< out time code
    kKvSubTitleTemplate = 3, ///< name of the template
};

/// A list of subtitles: text, in and out time code, template. See `CKvTextListBase` for what the user can do.
///
/// A time code is a frame count; 0xFFFFFFFF stands for none, in every operation. The columns show it as text
/// in the format of `SetTimecodeFormat`, with the offset of `SetTimecodeOffset` added; sums above a day begin
/// again at 00:00:00:00. Offset and format are for display and typing only: the frame counts stay.
///
/// The user types a time code as shown, or shorter from the right (`1:12`, `112`), steps it by `+10` frames
/// or `-1:00` seconds, or empties it. One that cannot be is refused: the cell stays open and a tool tip says
/// why. Pasting a whole time code replaces the cell's.
///
/// One row can be marked as the one that plays; the mark follows its row, and beats the row's own colours.
class KV_API CKvSubTitleTxtListEditor : public CKvTextListBase
{
    Q_OBJECT
    /// Of the time codes; see `SetTimecodeFormat`.
    Q_PROPERTY(FrameRate frameRate READ Rate WRITE SetRate)
    /// Whether they drop frames, where the rate does.
    Q_PROPERTY(bool dropFrame READ IsDropFrame WRITE SetDropFrame)
    /// In frames; see `SetTimecodeOffset`.
    Q_PROPERTY(uint timecodeOffset READ GetTimecodeOffset WRITE SetTimecodeOffset)
    /// Keeps the row that plays in view; see `SetFollowPlayback`.
    Q_PROPERTY(bool followPlayback READ IsFollowingPlayback WRITE SetFollowPlayback)

public:
    /// EKvFrameRate by names for forms.
    enum FrameRate
    {
        Rate23_976 = kKvFrameRate23_976, ///< 24000/1001
        Rate24 = kKvFrameRate24,         ///< 24
        Rate25 = kKvFrameRate25,         ///< 25
        Rate29_97 = kKvFrameRate29_97,   ///< 30000/1001
        Rate30 = kKvFrameRate30,         ///< 30
        Rate50 = kKvFrameRate50,         ///< 50
        Rate59_94 = kKvFrameRate59_94,   ///< 60000/1001
        Rate60 = kKvFrameRate60,         ///< 60
    };
    Q_ENUM(FrameRate)

    /// A list without rows that is not created yet.
    CKvSubTitleTxtListEditor();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvSubTitleTxtListEditor(QWidget* parent);
    ~CKvSubTitleTxtListEditor() override;

    /// @return "KVSUBTITLEEDITOR", also the widget's object name.
    CString GetWindowClass() const;

    // The rows. Silent, and not undone.

    /// Inserts a row. @param line 0 … count, or -1 for the end. @param text its text. @param in, out its time
    /// codes. @param templateName null is empty.
    /// @return its index; -1 out of range.
    int InserItem(int line, const CString& text, DWORD in, DWORD out, const wchar_t* templateName);
    /// Changes a row. @param line which one. @param text, templateName null leaves them. @param in, out null
    /// empties the time code.
    /// @return 1; 0 out of range.
    int ModifyItem(int line, const wchar_t* text, const DWORD* in, const DWORD* out,
                   const wchar_t* templateName);
    /// @param line a row. @return 1; 0 out of range.
    int DeleteItem(int line);
    /// Removes all rows. @return 1.
    int EmptyAll();
    /// Empties every time code. @return 1.
    int EmptyAllTimeCode();
    /// Gives every row the same template. @param templateName null is none. @return 1.
    int UpdateAllTemplateName(const wchar_t* templateName);

    /// @param line a row. @param value a frame count, or none.
    /// @param isIn not 0 sets the in time code, else the out one.
    /// @return 1; 0 out of range.
    int SetTimeCode(int line, DWORD value, int isIn);
    /// @param line a row. @param in, out receive its time codes. @return 1; 0 out of range, both unchanged.
    int GetTimeCode(int line, DWORD& in, DWORD& out) const;

    // How time codes are shown.

    /// @param rate 25 frames a second at first. @param dropFrame off at first; ignored where the rate has
    /// none.
    /// @return 1; 0, with nothing changed, for a rate outside of the table.
    int SetTimecodeFormat(EKvFrameRate rate, BOOL dropFrame);
    /// @param offset in frames; 0 at first.
    void SetTimecodeOffset(DWORD offset);
    /// @return it in frames.
    DWORD GetTimecodeOffset() const;

    // The row that plays.

    /// @param line -1, or a row out of range: none.
    void SetPlayIndex(int line);
    /// @return -1 for none, also when the row is gone.
    int GetPlayIndex() const;
    /// The row to play at a frame. @param frame a frame count, without the offset. @return of several the one
    /// that starts latest, of those that start together the lowest one in the list. A row plays from its in
    /// time code to before its out one; without an out time code to the next in time code of any row, without
    /// an in one never. -1 when none plays. Takes logarithmic time once rows and time codes stay.
    int FindPlayIndex(DWORD frame) const;
    /// Keeps the row that plays in view, also when the rows are sorted or the list gets another size, until
    /// the user scrolls; setting it again resumes. Waits while a cell is open or the mouse drags.
    /// @param follow 0 is off, as at first.
    void SetFollowPlayback(BOOL follow);

Q_SIGNALS:
    /// The user changed a time code, also by undo. After the change, once. @param row the row.
    /// @param in whether it was the in time code, else the out one.
    void TimeCodeEdited(int row, bool in);

protected:
    const char* _GetRowFormat() const override;
    UINT _GetNameText() const override;
    UINT _GetEditStepText(int column) const override;
    CString _GetCellValue(int line, int column) const override;
    void _SetCellValue(int line, int column, const CString& value) override;
    CString _ReadCellValue(int line, int column, const CString& text) const override;
    void _TellCellEdited(int line, int column) override;
    void _UpdateRowTexts(int line) override;
    CString _GetSortKey(int line, int column) const override;

    void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column) override;
    BOOL _GetItemBKColor(int line, int column, int state, DWORD& colour) override;
    BOOL _GetItemTextColor(int line, int column, int state, DWORD& colour) override;
    CString _GetItemDescription(int line) const override;
    void DrawItem(Graphics* graphics, int line, int column) override;
    BOOL _PasteReplacesCell(int line, int column, const CString& pasted) override;
    BOOL _ValidateEdit(int line, int column, const CString& text, CString& why) override;
    void _OnUserScroll() override;
    void _OnEditClosed() override;
    void OnSize(int width, int height) override;
    void OnSkinChanged() override;

private:
    FrameRate Rate() const;
    void SetRate(FrameRate rate);
    bool IsDropFrame() const;
    void SetDropFrame(bool dropFrame);
    bool IsFollowingPlayback() const;

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
