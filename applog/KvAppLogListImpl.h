// The log list's private part: its lines, what is shown of them, and the search.
#pragma once

#include "KvAppLogListCtrl.h"
#include "KvGuiRes.h"
#include "applog/AppLogFindBar.h"
#include "applog/AppLogLine.h"
#include "applog/AppLogMatcher.h"
#include "applog/AppLogQueue.h"

#include <QPointer>
#include <QPushButton>

#include <array>
#include <functional>
#include <string>
#include <string_view>

struct CKvAppLogListCtrl::Impl
{
    /// Runs from the start of every operation to its end: the outermost one takes in what was posted.
    class Operation
    {
    public:
        explicit Operation(Impl& impl) : m_impl(impl)
        {
            if (m_impl.operations++ == 0)
                m_impl.TakePosted();
        }
        ~Operation() { --m_impl.operations; }
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;

    private:
        Impl& m_impl;
    };
    /// What came of writing lines.
    enum class Outcome
    {
        kDone,
        kNothing, ///< there was no line to write
        kFailed,
    };

    explicit Impl(CKvAppLogListCtrl& control) : list(control) {}

    // Lines.
    void TakePosted();
    void Add(int type, WORD level, const SYSTEMTIME& time, std::wstring_view text);
    int AddLine(int type, WORD level, const SYSTEMTIME& time, std::wstring_view text);
    void AddDateLine(const SYSTEMTIME& time);
    /// Adds lines that are no message; follow mode 1 stays at the end.
    void AddSeparators(const std::function<void()>& add);
    int Trim();
    void SelectLast();
    void Clear();
    int TypeAt(int line) const;
    void ColourLine(int line, int type);
    void ColourLines();
    static void LoadTheme();
    void LoadSkin();

    // Writing.
    template <typename Visit>
    void VisitMessages(bool selectedOnly, Visit visit) const;
    /// @param error receives why it failed, with the path, when not null.
    Outcome SaveTo(const std::wstring& path, bool selectedOnly, std::string* error = nullptr) const;
    bool Copy(bool selectedOnly, bool withTime) const;
    bool IsAnySelected() const;

    // The menu's commands. Each may end with the list gone.
    void RunCommand(UINT command);
    void SaveAs(bool selectedOnly);
    void CopyOrTell(bool selectedOnly);
    void AskAndClear();

    // View.
    void ApplyFilter();
    void AskOverlay();
    void UpdateOverlay();
    void GoToEnd();
    void DrawIcon(QPainter& painter, int line, int type) const;
    void DrawDate(QPainter& painter, int line);
    bool DrawFound(QPainter& painter, int line);

    // Search.
    void OpenFind();
    void CloseFind();
    bool IsFindOpen() const { return findBar && !findBar->isHidden(); }
    void FindTextChanged();
    bool IsMatch(int line) const;
    void Recount();
    void FindNext(int step, bool withCurrent = false);
    void PlaceFindBar();

    CKvAppLogListCtrl& list;
    int operations = 0;
    bool isInitialized = false;
    WORD maximum = 500;
    kv::AppLogDates dates;
    std::array<int, kv::kAppLogTypes> typeCounts{};
    std::array<KvSkinImage, kv::kAppLogTypes> icons;
    kv::AppLogQueue posted;

    int followMode = kKvAppLogFollowAlways;
    int missed = 0; ///< messages that came below the view
    QPointer<QPushButton> badge;
    bool overlayAsked = false;

    DWORD typeMask = 0;
    kv::AppLogMatcher textFilter;

    QPointer<kv::AppLogFindBar> findBar;
    kv::AppLogMatcher needle;
    int matchCount = 0; ///< lines that match
    int matchPlace = 0; ///< which of them was gone to, from 1; 0 for none
};
