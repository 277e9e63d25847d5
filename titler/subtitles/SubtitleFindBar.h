// Find and replace below a list of texts.
#pragma once

#include "KvTypes.h"
#include "subtitles/SubtitleMatches.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;

namespace titler {

class SubtitleList;

class SubtitleFindBar : public QWidget
{
    Q_OBJECT

public:
    /// @param list must outlive the bar.
    explicit SubtitleFindBar(SubtitleList& list);

    /// Shows the bar with the focus in the field of what to find.
    void Open();
    /// The same in the field of what to put there.
    void OpenReplacement();
    /// Rows or selection are others: what the bar says of the last search does not hold any more.
    void ForgetResult();

signals:
    /// Something was looked for, and perhaps replaced: rows and selection may be others.
    void Found();
    /// A text was replaced in all rows, so many times.
    void Replaced(const QString& text, const QString& replacement, int count);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    /// The match where the last search stands.
    struct Match
    {
        std::uint64_t row; ///< its key
        TextRange range;
    };
    void OpenField(QLineEdit& field);
    SubtitleQuery Query() const;
    UINT Options() const;
    int StartRow() const;
    QString TextOf(int row) const;
    /// Takes the match where a search has stopped, and shows it in its row.
    /// @param behind from where on in that row the list has searched; backwards the end of what it searched.
    void TakeMatch(const SubtitleMatches& matches, std::optional<qsizetype> behind);
    QString ResultOf(int mode, int result, int count) const;
    QCheckBox* AddOption(UINT nameId, UINT option);
    void AddButton(QLayout& row, UINT nameId, std::function<void()> run);
    void Find(bool backwards);
    void Run(int mode);

    SubtitleList& m_list;
    QLineEdit* m_text;
    QLineEdit* m_replacement;
    QCheckBox* m_matchCase;
    std::vector<std::pair<QCheckBox*, UINT>> m_options; ///< with their EKvFindOption
    QLabel* m_result;
    std::optional<Match> m_match; ///< the list has it, too: it goes on from there
    bool m_backwards = false;
    bool m_isSearching = false; ///< what changes meanwhile is the search's own doing
};

} // namespace titler
