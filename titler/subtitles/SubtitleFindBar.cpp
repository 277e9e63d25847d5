#include "subtitles/SubtitleFindBar.h"

#include "KvTextListBase.h"
#include "window/Fields.h"
#include "window/Texts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace titler {
namespace {

// What `FindReplace` does and answers.
enum FindMode
{
    kFindNext = 0,
    kReplaceOne = 1,
    kReplaceAll = 2,
};
enum FindResult
{
    kFound = 0,
    kFoundWrapped = 1,
    kNothing = 2,
};

} // namespace

SubtitleFindBar::SubtitleFindBar(CKvTextListBase& list)
    : m_list(list)
    , m_text(new QLineEdit)
    , m_replacement(new QLineEdit)
    , m_matchCase(new QCheckBox(Text(kTextFindCase)))
    , m_result(new QLabel)
{
    NameField(*m_text, kTextFindText);
    NameField(*m_replacement, kTextFindReplacement);
    m_text->setPlaceholderText(m_text->accessibleName());
    m_replacement->setPlaceholderText(m_replacement->accessibleName());
    m_matchCase->setToolTip(Text(kTextFindCase + 1));
    m_result->setProperty("role", "hint");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(m_text, 2);
    row->addWidget(m_replacement, 2);
    row->addWidget(m_matchCase);
    const std::pair<UINT, FindMode> buttons[] = {
        {kTextFindNext, kFindNext}, {kTextReplaceOne, kReplaceOne}, {kTextReplaceAll, kReplaceAll}};
    for (const auto& [nameId, mode] : buttons) {
        auto* button = new QPushButton(Text(nameId));
        button->setAutoDefault(false);
        button->setToolTip(Text(nameId + 1));
        connect(button, &QPushButton::clicked, this, [this, run = mode] { Run(run); });
        row->addWidget(button);
    }
    row->addWidget(m_result, 1);
    connect(m_text, &QLineEdit::returnPressed, this, [this] { Run(kFindNext); });
    connect(m_replacement, &QLineEdit::returnPressed, this, [this] { Run(kReplaceOne); });
    hide();
}

void SubtitleFindBar::Open()
{
    show();
    m_text->setFocus();
    m_text->selectAll();
}

void SubtitleFindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    hide();
    m_list.setFocus();
}

void SubtitleFindBar::Run(int mode)
{
    const int result =
        m_list.FindReplace(std::max(m_list.GetLastSelItem(), 0), mode, m_text->text().toStdWString(),
                           m_replacement->text().toStdWString(), m_matchCase->isChecked());
    const UINT texts[] = {mode == kReplaceAll ? kTextFindReplaced : 0u, kTextFindWrapped, kTextFindNothing};
    const UINT textId = texts[std::clamp(result, 0, 2)];
    m_result->setText(textId != 0 ? Text(textId) : QString());
}

} // namespace titler
