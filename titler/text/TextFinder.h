// Find and replace over the texts of all titles and all subtitles.
#pragma once

#include "KvFindReplaceTxtDlg.h"
#include "edit/StepName.h"
#include "log/LogPanel.h"
#include "subtitles/SubtitleMatches.h"
#include "window/Workspaces.h"

#include <QObject>
#include <QRect>

#include <cstdint>
#include <functional>
#include <optional>

class QPlainTextEdit;

namespace titler {

class Document;
class SubtitlePanel;

/// The window, as far as tools for texts need it.
struct TextStage
{
    std::function<bool()> areSubtitles; ///< whether it shows those, else titles or what has no such text
    std::function<void(Workspace)> show;
    std::function<void()> settle; ///< takes what is typed in open fields and cells
};

/// What answers the library's dialog. The texts in reading order are those of the pages, then those of the
/// subtitles' rows. What is found is shown where it stands, and selected there.
class TextFinder : public QObject, public IKvFindReplaceTxtNotify
{
    Q_OBJECT

public:
    /// @param editor the field of the current page's text. All must outlive the finder.
    TextFinder(Document& document, QPlainTextEdit& editor, SubtitlePanel& subtitles, TextStage stage);

    /// Goes to the next place behind the hit, or behind the cursor or row that the user is at.
    /// @return 0; 1 after it went on at the first page; 2 when there is none.
    int Find(const wchar_t* text, BOOL matchCase) override;
    /// Replaces the hit if it is in sight and still one, and goes to the next place; or all, as one step of
    /// undo in the project and one of the subtitles. A replacement is not searched again. A title that would
    /// become too long stays. @return as `Find`; 0 when something was replaced and nothing is left.
    int Replace(const wchar_t* text, const wchar_t* replacement, BOOL matchCase, BOOL all) override;

    /// What is selected in the title's text or in an open cell, to be looked for; empty for several lines,
    /// and where a hit is selected.
    QString SelectedText() const;
    /// Where the text stands that the user is at, in screen coordinates.
    QRect PlaceOnScreen() const;

signals:
    /// Something was found, in words; for now, not for the log.
    void Found(const QString& text);
    void Reported(titler::LogType type, const QString& text);

private:
    struct Hit
    {
        int page;          ///< -1 for a subtitle's
        std::uint64_t row; ///< its key
        TextRange range;
    };
    /// Where a search begins, and where it ends once it has gone all the way round.
    struct Start
    {
        int place; ///< a page, or the number of pages plus a row
        qsizetype offset;
        qsizetype end;
    };
    int PageTotal() const;
    int PlaceTotal() const;
    QString TextAt(int place) const;
    /// -1 when its row is gone.
    int PlaceOf(const Hit& hit) const;
    bool IsInSight(const Hit& hit) const;
    TextRange EditorSelection() const;
    Start StartHere() const;
    bool GoOn(const SubtitleMatches& matches, const Start& start, bool& hasWrapped);
    void ShowHit(const Hit& hit);
    /// Shows the hit and says where it stands. @return the result of the search that found it.
    int Announce(bool hasWrapped);
    void ForgetHit();
    int ReplaceAll(const SubtitleMatches& matches, const StepName& step, const QString& replacement);
    void RefuseLong(int page);
    void TakeSelection(const SubtitleMatches& matches);

    Document& m_document;
    QPlainTextEdit& m_editor;
    SubtitlePanel& m_subtitles;
    TextStage m_stage;
    std::optional<Hit> m_hit;
};

} // namespace titler
