// Find and replace below a list of texts.
#pragma once

#include <QWidget>

class CKvTextListBase;
class QCheckBox;
class QLabel;
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

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Run(int mode);

    CKvTextListBase& m_list;
    QLineEdit* m_text;
    QLineEdit* m_replacement;
    QCheckBox* m_matchCase;
    QLabel* m_result;
};

} // namespace titler
