// Where the user tries whether two files belong together by the rules.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace titler {

class NamingRules;

class RuleTrialBox : public QWidget
{
public:
    /// @param rules must outlive the box.
    explicit RuleTrialBox(const NamingRules& rules);

private:
    void ShowResult();

    const NamingRules& m_rules;
    QLineEdit* m_main;
    QLineEdit* m_other;
    QLabel* m_result;
};

} // namespace titler
