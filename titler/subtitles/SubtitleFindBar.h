// Find and replace below a list of texts.
#pragma once

#include "KvTypes.h"

#include <QWidget>

#include <functional>
#include <utility>
#include <vector>

class CKvTextListBase;
class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;

namespace titler {

class SubtitleFindBar : public QWidget
{
    Q_OBJECT

public:
    /// @param list must outlive the bar.
    explicit SubtitleFindBar(CKvTextListBase& list);

    /// Shows the bar with the focus in its first field.
    void Open();

signals:
    /// Something was looked for, and perhaps replaced: rows and selection may be others.
    void Found();
    /// A text was replaced in all rows, so many times.
    void Replaced(const QString& text, const QString& replacement, int count);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QCheckBox* AddOption(UINT nameId, UINT option);
    void AddButton(QLayout& row, UINT nameId, std::function<void()> run);
    void Find(bool backwards);
    void Run(int mode);

    CKvTextListBase& m_list;
    QLineEdit* m_text;
    QLineEdit* m_replacement;
    QCheckBox* m_matchCase;
    std::vector<std::pair<QCheckBox*, UINT>> m_options; ///< with their EKvFindOption
    QLabel* m_result;
    bool m_backwards = false;
};

} // namespace titler
