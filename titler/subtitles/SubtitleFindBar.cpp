#include "subtitles/SubtitleFindBar.h"

#include "KvTextListBase.h"
#include "window/Fields.h"
#include "window/Texts.h"

#include <QCheckBox>
#include <QGridLayout>
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
    for (const auto& [field, nameId] :
         {std::pair{m_text, kTextFindText}, {m_replacement, kTextFindReplacement}}) {
        NameField(*field, nameId);
        field->setPlaceholderText(field->accessibleName());
        field->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    }
    m_matchCase->setToolTip(Text(kTextFindCase + 1));
    m_result->setProperty("role", "hint");
    m_result->setWordWrap(true);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins({});
    auto* finds = new QHBoxLayout;
    finds->addWidget(m_text, 1);
    AddButton(*finds, kTextFindPrevious, [this] { Find(true); });
    AddButton(*finds, kTextFindNext, [this] { Find(false); });
    auto* replaces = new QHBoxLayout;
    replaces->addWidget(m_replacement, 1);
    AddButton(*replaces, kTextReplaceOne, [this] { Run(kReplaceOne); });
    AddButton(*replaces, kTextReplaceAll, [this] { Run(kReplaceAll); });
    grid->addLayout(finds, 0, 0, 1, 2);
    grid->addLayout(replaces, 1, 0, 1, 2);
    grid->addWidget(m_matchCase, 2, 0);
    grid->addWidget(AddOption(kTextFindWholeWords, kKvFindWholeWords), 2, 1);
    grid->addWidget(AddOption(kTextFindSelection, kKvFindSelectedRows), 3, 0);
    grid->addWidget(AddOption(kTextFindPattern, kKvFindRegularExpression), 3, 1);
    grid->addWidget(m_result, 4, 0, 1, 2);
    connect(m_replacement, &QLineEdit::returnPressed, this, [this] { Run(kReplaceOne); });
    hide();
}

QCheckBox* SubtitleFindBar::AddOption(UINT nameId, UINT option)
{
    auto* box = new QCheckBox(Text(nameId));
    box->setToolTip(Text(nameId + 1));
    m_options.emplace_back(box, option);
    return box;
}

void SubtitleFindBar::AddButton(QLayout& row, UINT nameId, std::function<void()> run)
{
    auto* button = new QPushButton(Text(nameId));
    button->setAutoDefault(false);
    button->setToolTip(Text(nameId + 1));
    connect(button, &QPushButton::clicked, this, std::move(run));
    row.addWidget(button);
}

void SubtitleFindBar::Open()
{
    show();
    m_text->setFocus();
    m_text->selectAll();
}

void SubtitleFindBar::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && m_text->hasFocus()) {
        Find(event->modifiers().testFlag(Qt::ShiftModifier));
    } else if (event->key() == Qt::Key_Escape) {
        hide();
        m_list.setFocus();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void SubtitleFindBar::Find(bool backwards)
{
    m_backwards = backwards;
    Run(kFindNext);
}

void SubtitleFindBar::Run(int mode)
{
    UINT options = m_backwards ? kKvFindBackwards : 0u;
    for (const auto& [box, option] : m_options)
        options |= box->isChecked() ? option : 0u;
    m_list.SetFindOptions(options);
    const std::wstring text = m_text->text().toStdWString();
    const int isExact = m_matchCase->isChecked() ? 1 : 0;
    const int matches = mode == kReplaceAll ? m_list.CountMatches(text, isExact) : 0;
    const int result = m_list.FindReplace(std::max(m_list.GetLastSelItem(), 0), mode, text,
                                          m_replacement->text().toStdWString(), isExact);
    const QString fault = QString::fromStdWString(m_list.GetFindError());
    if (!fault.isEmpty())
        m_result->setText(fault);
    else if (result == kNothing)
        m_result->setText(Text(kTextFindNothing));
    else if (mode == kReplaceAll)
        m_result->setText(Text(kTextFindReplacedCount, {QString::number(matches)}));
    else
        m_result->setText(result == kFoundWrapped ? Text(kTextFindWrapped) : QString());
    if (mode == kReplaceAll && fault.isEmpty() && result != kNothing)
        emit Replaced(m_text->text(), m_replacement->text(), matches);
    emit Found();
}

} // namespace titler
