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
#include <deque>
#include <functional>
#include <string>
#include <string_view>

/// The header texts.
inline constexpr std::uint32_t kAppLogHeaderTexts[] = {15041, 15042, 15043, 15044};

struct CKvAppLogListCtrl::Impl
{
    enum class Portion
    {
        kAll,
        kSlice, ///< what does not hold the window for long
    };
    /// While one lives, what is posted waits: the lines stay as they are.
    class Quiet
    {
    public:
        explicit Quiet(Impl& impl) : m_impl(impl) { ++m_impl.quiet; }
        ~Quiet() { --m_impl.quiet; }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

    private:
        Impl& m_impl;
    };
    /// Runs from the start of every operation to its end: takes in what was posted, then is quiet.
    class Operation
    {
    public:
        explicit Operation(Impl& impl) : m_quiet(Begun(impl)) {}

    private:
        static Impl& Begun(Impl& impl)
        {
            if (impl.quiet == 0)
                impl.TakeIn(Portion::kAll);
            return impl;
        }
        Quiet m_quiet;
    };
    struct Message
    {
        int type;
        WORD level;
        const SYSTEMTIME& time;
        std::wstring_view text;
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
    void TakeIn(Portion portion);
    void Plan(kv::AppLogBatch batch);
    void AddPlanned(Portion portion);
    /// As of now, at once.
    void Add(const Message& message);
    /// @param keeps to how many lines the log falls back behind it; 0 when it does not.
    void Add(const Message& message, bool isNewDay, int keeps);
    int AddLine(const Message& message);
    void AddDateLine(const SYSTEMTIME& time);
    bool IsFull(int more) const;
    /// @param keeps how many of the newest lines stay.
    void DropOld(int keeps);
    void SelectLast();
    /// Lines were changed by a derived list.
    void LinesChanged();
    void CountLines();
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

    // The menu's commands. Each may end with the list gone.
    void RunCommand(UINT command);
    void SaveAs(bool selectedOnly);
    void CopyOrTell(bool selectedOnly);
    void AskAndClear();

    // View.
    void ApplyFilter();
    void AskOverlay();
    void UpdateOverlay();
    void CountMissed();
    void ShowBadge();
    void GoToEnd();
    bool IsAtEnd() const;
    /// Makes a change that is no message's; in follow mode 1 a view at the end stays there.
    void KeepEnd(const std::function<void()>& change);
    void DrawIcon(QPainter& painter, int line, int type) const;
    void DrawDate(QPainter& painter, int line);
    std::vector<KvReportMark> FoundMarks(int line) const;

    // Search.
    void OpenFind();
    void MakeFindBar();
    void CloseFind();
    bool IsFindOpen() const { return findBar && !findBar->isHidden(); }
    void FindTextChanged();
    bool IsMatch(int line) const;
    void SetNeedle(kv::AppLogMatcher matcher);
    void FindNext(int step, bool withCurrent = false);
    void GoToMatch(int line);
    void TellFound();
    void PlaceFindBar();

    CKvAppLogListCtrl& list;
    int quiet = 0;
    bool isInitialized = false;
    WORD maximum = 500;
    kv::AppLogDates dates;
    std::array<KvSkinImage, kv::kAppLogTypes> icons;
    kv::AppLogQueue posted{maximum};
    kv::AppLogIntake intake; ///< what was posted and taken over, but is no line yet

    bool isOwnChange = false;
    bool isCounted = true; ///< the counts are true
    std::array<int, kv::kAppLogTypes> typeCounts{};
    int matchCount = 0; ///< lines that match
    int matchPlace = 0; ///< which of them was gone to, from 1; 0 for none

    int followMode = kKvAppLogFollowAlways;
    std::deque<std::uint64_t> missed; ///< messages that came below the view, by their numbers
    int missedShown = 0;              ///< how many of them the filter shows
    bool isMissedCounted = true;      ///< which is true
    QPointer<QPushButton> badge;
    bool overlayAsked = false;

    DWORD typeMask = kv::kAppLogAllTypes;
    kv::AppLogMatcher textFilter;

    QPointer<kv::AppLogFindBar> findBar;
    kv::AppLogMatcher needle;
    std::uint64_t searchId = 0; ///< the line that the search or the user went to last, by its number
};
