#include "media/RuleTrialBox.h"

#include "media/RuleTrial.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace titler {

RuleTrialBox::RuleTrialBox(const NamingRules& rules)
    : m_rules(rules)
    , m_main(new QLineEdit)
    , m_other(new QLineEdit)
    , m_result(new QLabel)
{
    auto* rows = new QGridLayout(this);
    rows->setContentsMargins({});
    NameField(*m_main, kTextRuleTryMain);
    NameField(*m_other, kTextRuleTryOther);
    m_main->setObjectName(QStringLiteral("tryMain"));
    m_other->setObjectName(QStringLiteral("tryOther"));
    m_result->setObjectName(QStringLiteral("tryResult"));
    m_main->setPlaceholderText(QStringLiteral("harbour.mxf"));
    m_other->setPlaceholderText(QStringLiteral("harbour_A1.wav"));
    rows->addWidget(RowLabel(kTextRuleTryMain, *m_main), 0, 0);
    rows->addWidget(m_main, 0, 1);
    rows->addWidget(RowLabel(kTextRuleTryOther, *m_other), 1, 0);
    rows->addWidget(m_other, 1, 1);
    rows->addWidget(m_result, 2, 0, 1, 2);
    rows->setColumnStretch(1, 1);
    m_result->setWordWrap(true);
    m_result->setProperty("role", "hint");
    connect(&rules, &NamingRules::Changed, this, &RuleTrialBox::ShowResult);
    connect(m_main, &QLineEdit::textChanged, this, &RuleTrialBox::ShowResult);
    connect(m_other, &QLineEdit::textChanged, this, &RuleTrialBox::ShowResult);
    InEachLanguage(*this, [this] { ShowResult(); });
}

void RuleTrialBox::ShowResult()
{
    const QString main = m_main->text();
    const QString other = m_other->text();
    if (main.isEmpty() || other.isEmpty()) {
        m_result->setText(Text(kTextRuleTryHint));
        return;
    }
    const TrialResult result = TryRules(m_rules.All(), main, other);
    switch (result.trial) {
    case Trial::Together:
        m_result->setText(
            Text(kTextRuleBelongs, {main, other, QString::number(result.rule + 1), result.addition}));
        break;
    case Trial::NotTogether:
        m_result->setText(Text(kTextRuleNotTogether, {main, other}));
        break;
    case Trial::NoMainFile:
        m_result->setText(Text(kTextRuleNoMain, {main}));
        break;
    }
}

} // namespace titler
