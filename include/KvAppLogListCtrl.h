/// @file
/// The list of the application's log: a line a message, in colours by type, with a date line at each new day.
#pragma once

#include "KvReportListCtrl.h"

#include <memory>

/// The code of the WM_NOTIFY that tells the parent that the user has cleared the log. Its lParam points to a
/// `KvNotifyHeader` whose `idFrom` is the control's number.
inline constexpr std::uint32_t kKvAppLogCleared = 1;

/// The follow modes.
enum EKvAppLogFollow : int
{
    kKvAppLogFollowAlways = 0, ///< every new message is selected and shown
    kKvAppLogFollowAtEnd = 1,  ///< only while the last line is in view; else a badge counts the new ones
};

/// A list of log messages in four columns: type (a picture), level, time, content.
///
/// Lines are of three kinds, told apart by the text in column 0: a message has its type there (one digit), a
/// date line "#", a spacer nothing. They are 24, 48 and 12 logical pixels high, a
/// message higher where its letters need it.
///
/// The list keeps at most a chosen number of lines, all kinds counted. A message that fills it lets it fall
/// back to the newest quarter (one line at least), so that trimming happens rarely.
///
/// Messages come from the user-interface thread, or from any by `PostAppLogMsg`. Every operation of this
/// class and every public query of the lines and the selection first takes in what was posted before it, but
/// not in the middle of painting. Operations are silent: only what the user does is told.
///
/// A filter hides lines and nothing else: lines keep their indices, heights and selection, and trimming,
/// counts and "all" mean all lines; "selected" means the selected ones that are shown.
///
/// Keyboard, beside the base list's: Ctrl+C copies the selected lines, Ctrl+Shift+C without their times,
/// Ctrl+F opens the find bar (Enter or F3 the next match, Shift+Enter or Shift+F3 the one before, Escape
/// closes). Context menu: how many lines are kept, save, copy, clear.
class KV_API CKvAppLogListCtrl : public CKvReportListCtrl
{
    Q_OBJECT
    /// How many lines are kept, up to 65,535; see `SetMaxLogLineCounts`.
    Q_PROPERTY(int maximumLines READ GetMaxLogLineCounts WRITE SetMaximumLines NOTIFY MaximumLinesEdited)
    /// Whether new messages are shown.
    Q_PROPERTY(FollowMode followMode READ Follow WRITE SetFollowMode)
    /// Bit n shows the messages of type n.
    Q_PROPERTY(uint typeFilter READ GetTypeFilter WRITE SetTypeFilter)

public:
    /// EKvAppLogFollow by names for forms.
    enum FollowMode
    {
        FollowAlways = kKvAppLogFollowAlways, ///< every new message
        FollowAtEnd = kKvAppLogFollowAtEnd,   ///< only while the last line is in view
    };
    Q_ENUM(FollowMode)

    /// Looks the theme's colours up, unless a host has called `SetColor` on any list.
    CKvAppLogListCtrl();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvAppLogListCtrl(QWidget* parent);
    ~CKvAppLogListCtrl() override;

    /// Makes the columns and loads the pictures of types 1 … 9 ("Applogtype_1" …). Call it once, after
    /// `Create` or before it; a list that creates itself calls it then.
    /// @param keepOption 0 turns the lines between the cells off.
    void Initialize(int keepOption);

    // Messages. Without a word to the parent.

    /// Adds a message behind all lines, and a date line before it when its day of the month is another than
    /// that of the message before; trims; then selects and shows the message as the follow mode has it.
    /// @param message copied. @return 1; 0, nothing changed, for a type outside 0 … 9.
    int AddAppLogMsg(const SKvAppLogMsgData& message);
    /// The same for each in order. @param messages those of a type outside 0 … 9 are skipped.
    /// @return 1; 0 when none was added.
    int AddAppLogMsg(const CArray<SKvAppLogMsgData, const SKvAppLogMsgData&>& messages);
    /// The same from any thread, while this object lives: the message is taken in at the next operation, else
    /// within frames, without holding the window. Messages of one thread keep their order, and the lines are
    /// in the end those that adding one by one would leave, followed as one by one. Of more messages than the
    /// maximum that wait at a time the older ones leave no line; in follow mode 1 they are not followed.
    /// @param message copied. @return 1; 0 for a type outside 0 … 9.
    int PostAppLogMsg(const SKvAppLogMsgData& message);
    /// Adds a text of any length as of now: several messages where it is longer than one can be.
    /// @param type, level as in `SKvAppLogMsgData`. @param text any. @return 1; 0 for a type outside 0 … 9.
    int AddAppLogText(int type, unsigned short level, const CString& text);
    /// The same from any thread. @param type, level, text as above. @return 1; 0 for a type outside 0 … 9.
    int PostAppLogText(int type, unsigned short level, const CString& text);
    /// @return the local time now.
    static SYSTEMTIME GetLocalTime();
    /// Adds spacers. Leaves the selection. @param count none for 0 or less, nor beyond 65,535 lines, the
    /// largest maximum. @return the last line's index; -1 when the list is empty.
    int AddEmptySeparateLine(int count);
    /// Adds a date line; a spacer instead when the date is that of the last date line which this operation
    /// added. Leaves the selection. @param time whose date counts. @return 1.
    int AddTimeSeparateLine(const SYSTEMTIME& time);

    /// Removes all lines and adds a date line of today, as the menu does; the next message begins a new day.
    /// Asks nothing and tells nobody. @return 1.
    int ClearLog();
    /// Sets how many lines are kept. @param count 500 at first. @param apply non-zero trims at once; when
    /// lines go, the last line is selected and shown. @return the maximum before.
    unsigned short SetMaxLogLineCounts(unsigned short count, int apply);
    /// @return how many lines are kept.
    unsigned short GetMaxLogLineCounts() const;
    /// @param type any. @return how many messages of it there are, shown or not; 0 for a type outside 0 … 9.
    int GetTypeCount(int type) const;

    // Colours, 0xAARRGGBB: one table for all lists.

    /// Sets the colours of the content of types 0 … 9 and gives them to this list's lines; those of other
    /// lists keep theirs. Types 0 and 4 … 9 are one and the same colour: the last of them counts. Lines of
    /// type 0 have the list's own colours all the same.
    /// @param back, text ten colours each; null leaves that table.
    void SetColor(const DWORD* back, const DWORD* text);
    /// @param back, text receive ten colours each; a null one is left out.
    void GetColor(DWORD* back, DWORD* text) const;

    // Files and clipboard. A line is "[type][level][time][content]"; date lines and spacers are left out.

    /// Reads what `SaveAppLogToFile` wrote and adds each message as `AddAppLogMsg` does. Lines that are no
    /// messages come in as messages of type 0 and level 0.
    /// @param path the file. @param replace non-zero removes all lines before. @return 1, also for an empty
    /// file; 0, nothing changed, when it cannot be read.
    int LoadAppLogFmFile(const wchar_t* path, int replace);
    /// Writes UTF-8, replacing the file as a whole. A line break inside a message becomes one with a tab
    /// behind it. Shows no box. @param path the file.
    /// @param selectedOnly non-zero: the selected lines that are shown.
    /// @return 1; 0, no file touched, when there is nothing to write, or when it cannot be written.
    int SaveAppLogToFile(const wchar_t* path, int selectedOnly);
    /// The same to the clipboard, as text without a line end behind the last line.
    /// @param selectedOnly as above.
    /// @return 1; 0 when there is nothing to copy.
    int SaveAppLogToSysClipboard(int selectedOnly);

    // What is shown.

    /// @param mode an EKvAppLogFollow; others change nothing.
    void SetFollowMode(int mode);
    /// @return an EKvAppLogFollow.
    int GetFollowMode() const;
    /// Filters by type. @param mask bit n shows the messages of type n; all ten show everything. Date lines
    /// stay. While anything is filtered spacers are hidden.
    void SetTypeFilter(DWORD mask);
    /// @return the mask, of the ten types.
    DWORD GetTypeFilter() const;
    /// Shows the messages whose content has a text in it. @param text null or empty shows all.
    /// @param matchCase 0: the case of letters does not count.
    void SetTextFilter(const wchar_t* text, BOOL matchCase);
    /// Opens the find bar below the lines and gives it the focus. @param show 0 closes it.
    void ShowFindBar(BOOL show);

Q_SIGNALS:
    /// The user has cleared the log; after the parent heard of it.
    void LogCleared();
    /// The user chose from the menu how many lines are kept. @param count the maximum now.
    void MaximumLinesEdited(int count);

protected:
    /// Where the colours of types 0 … 9 are held, for all lists: four colours, those of types 4 … 9 being
    /// that of type 0.
    static DWORD* const m_pcBackColor[10];
    static DWORD* const m_pcTextColor[10]; ///< likewise, of the texts

    /// Adds the line of a message, nothing else. @param message copied. @return its index; 0, nothing added,
    /// for a type outside 0 … 9.
    int _AddNewLogLine(const SKvAppLogMsgData& message);
    /// Trims where the maximum is reached. @return 1 when lines went.
    int _CheckMaxLogLineCounts();
    /// The line as it is copied. @param line any. @param out receives it.
    /// @return 1; 0, `out` as it was, for date lines and spacers.
    int _FormatLogLine(int line, CString& out) const;

    int CreateSelf() override;
    void _BeforeQuery() const override;
    /// Counts follow lines that a derived list changes; an override calls this one.
    /// @param kind, rows, column see `CKvReportListCtrl`.
    void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column) override;

    /// Pictures are drawn in the cell less 3 pixels on each side, as large as they fit in their own shape.
    /// @param graphics, line, column see `CKvReportListCtrl`.
    void DrawItem(Graphics* graphics, int line, int column) override;
    UINT _GetNameText() const override;
    CString _GetCellName(int line, int column) const override;
    int _GetColumnTextStyle(int line, int column) override;
    BOOL _GetItemTextColor(int line, int column, int state, DWORD& colour) override;
    void OnContextMenu(CPoint point) override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void changeEvent(QEvent* event) override;
    void OnTimer(UINT id) override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;

private:
    void SetMaximumLines(int count);
    FollowMode Follow() const { return static_cast<FollowMode>(GetFollowMode()); }

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
