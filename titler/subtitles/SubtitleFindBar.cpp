#include "subtitles/SubtitleFindBar.h"

#include "subtitles/SubtitleList.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>

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

SubtitleFindBar::SubtitleFindBar(SubtitleList& list)
    : m_list(list)
    , m_text(new QLineEdit)
    , m_replacement(new QLineEdit)
    , m_matchCase(new QCheckBox)
    , m_result(new QLabel)
{
    for (const auto& [field, nameId] :
         {std::pair{m_text, kTextFindText}, {m_replacement, kTextFindReplacement}}) {
        NameField(*field, nameId);
        InEachLanguage(*field, [field = field] { field->setPlaceholderText(field->accessibleName()); });
        field->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    }
    NameButton(*m_matchCase, kTextFindCase);
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
    connect(m_text, &QLineEdit::textChanged, this, &SubtitleFindBar::ForgetResult);
    connect(m_matchCase, &QCheckBox::toggled, this, &SubtitleFindBar::ForgetResult);
    InEachLanguage(*m_result, [this] { m_result->clear(); });
    hide();
}

QCheckBox* SubtitleFindBar::AddOption(UINT nameId, UINT option)
{
    auto* box = new QCheckBox;
    NameButton(*box, nameId);
    m_options.emplace_back(box, option);
    connect(box, &QCheckBox::toggled, this, &SubtitleFindBar::ForgetResult);
    return box;
}

void SubtitleFindBar::AddButton(QLayout& row, UINT nameId, std::function<void()> run)
{
    auto* button = new QPushButton;
    NameButton(*button, nameId);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, std::move(run));
    row.addWidget(button);
}

void SubtitleFindBar::Open()
{
    OpenField(*m_text);
}

void SubtitleFindBar::OpenReplacement()
{
    OpenField(*m_replacement);
}

void SubtitleFindBar::OpenField(QLineEdit& field)
{
    show();
    field.setFocus();
    field.selectAll();
}

void SubtitleFindBar::ForgetResult()
{
    if (m_isSearching)
        return;
    m_result->clear();
    m_list.ClearMatch();
}

void SubtitleFindBar::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    ForgetResult();
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

SubtitleQuery SubtitleFindBar::Query() const
{
    const auto has = [this](UINT option) {
        return std::any_of(m_options.begin(), m_options.end(),
                           [&](const auto& one) { return one.second == option && one.first->isChecked(); });
    };
    return {m_text->text(), m_matchCase->isChecked(), has(kKvFindWholeWords), has(kKvFindRegularExpression)};
}

// A hit within the selection leaves it as it is.
int SubtitleFindBar::StartRow() const
{
    const int current = m_list.GetCurrentItem();
    return std::max(current >= 0 ? current : m_list.GetLastSelItem(), 0);
}

QString SubtitleFindBar::TextOf(int row) const
{
    return QString::fromStdWString(m_list.GetItemText(row, kKvSubTitleText));
}

UINT SubtitleFindBar::Options() const
{
    UINT options = m_backwards ? kKvFindBackwards : 0u;
    for (const auto& [box, option] : m_options)
        options |= box->isChecked() ? option : 0u;
    return options;
}

// The list tells the row alone.
void SubtitleFindBar::TakeMatch(const SubtitleMatches& matches, std::optional<qsizetype> behind)
{
    const int row = m_list.GetCurrentItem();
    const std::vector<TextRange> found = matches.In(TextOf(row));
    const auto isAhead = [&](const TextRange& one) {
        return !behind || (m_backwards ? one.end <= *behind : one.begin >= *behind);
    };
    const TextRange* match = nullptr;
    if (const auto last = std::find_if(found.rbegin(), found.rend(), isAhead);
        m_backwards && last != found.rend())
        match = &*last;
    if (const auto first = std::find_if(found.begin(), found.end(), isAhead);
        !m_backwards && first != found.end())
        match = &*first;
    if (match == nullptr)
        return;
    m_match = Match{m_list.GetRowKey(row), *match};
    m_list.ShowMatch(row, *match);
}

// @param count of all matches.
QString SubtitleFindBar::ResultOf(int mode, int result, int count) const
{
    if (result == kNothing)
        return Text(kTextFindNothing);
    if (mode == kReplaceAll)
        return Text(kTextFindReplacedCount, {QString::number(count)});
    if (!m_match)
        return Text(kTextFindReplaced); // it was the last one
    const int row = m_list.GetCurrentItem();
    const QString place = WithContext(TextOf(row), m_match->range);
    const QString found = Text(kTextFindPlace, {QString::number(row + 1), place, QString::number(count)});
    return result == kFoundWrapped ? Text(kTextFindWrapped) + u' ' + found : found;
}

void SubtitleFindBar::Run(int mode)
{
    const SubtitleQuery query = Query();
    const SubtitleMatches matches(query);
    ForgetResult();
    if (const QString fault = query.isPattern ? matches.Fault() : QString(); !fault.isEmpty()) {
        m_result->setText(fault);
        return;
    }
    const QScopedValueRollback searching(m_isSearching, true);
    m_list.SetFindOptions(Options());
    const std::wstring text = query.text.toStdWString();
    const int isExact = query.matchCase ? 1 : 0;
    const int start = StartRow();
    const std::optional<Match> from = std::exchange(m_match, {});
    const int fromRow = from ? m_list.FindRowKey(from->row) : -1;
    const QString before = TextOf(fromRow);
    int count = mode == kReplaceAll ? m_list.CountMatches(text, isExact) : 0;
    const int result = m_list.FindReplace(start, mode, text, m_replacement->text().toStdWString(), isExact);
    const QString fault = QString::fromStdWString(m_list.GetFindError());
    const bool isFound = fault.isEmpty() && result != kNothing;
    if (isFound && mode != kReplaceAll) {
        // What the replacement has added moves what stands behind it.
        const qsizetype added = TextOf(fromRow).size() - before.size();
        const bool goesOn = from && result == kFound && fromRow == m_list.GetCurrentItem() &&
                            (fromRow == start || TextOf(fromRow) != before);
        TakeMatch(matches, goesOn ? std::optional(m_backwards ? from->range.begin : from->range.end + added)
                                  : std::nullopt);
        count = m_list.CountMatches(text, isExact);
    }
    const QString shown = fault.isEmpty() ? ResultOf(mode, result, count) : fault;
    if (isFound && mode == kReplaceAll)
        emit Replaced(m_text->text(), m_replacement->text(), count);
    emit Found();
    m_result->setText(shown);
}

} // namespace titler
