#include "title/TextInspector.h"

#include "edit/Document.h"
#include "title/TitleRenderer.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QButtonGroup>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFontComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace titler {

TextDifference Difference(const QString& before, const QString& after)
{
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype start = 0;
    while (start < shorter && before[start] == after[start])
        ++start;
    qsizetype end = 0;
    while (end < shorter - start && before[before.size() - 1 - end] == after[after.size() - 1 - end])
        ++end;
    return {start, before.size() - start - end, after.size() - start - end};
}

TextInspector::TextInspector(Document& document)
    : m_document(document)
    , m_text(new QPlainTextEdit)
    , m_family(new QFontComboBox)
    , m_size(new QDoubleSpinBox)
    , m_bold(StyleButton(kTextBold))
    , m_italic(StyleButton(kTextItalic))
    , m_align(new QButtonGroup(this))
{
    BuildFields();
    Connect();
    connect(&document, &Document::ProjectChanged, this, &TextInspector::ShowProject);
    ShowProject();
}

QToolButton* TextInspector::StyleButton(UINT nameId)
{
    auto* button = new QToolButton;
    NameField(*button, nameId);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

void TextInspector::BuildFields()
{
    NameField(*m_text, kTextText);
    NameField(*m_family, kTextFont);
    NameField(*m_size, kTextSize);
    m_text->setObjectName(QStringLiteral("text"));
    m_text->setUndoRedoEnabled(false); // undo is the project's
    m_text->setTabChangesFocus(true);
    m_text->setFixedHeight(m_text->fontMetrics().lineSpacing() * 4 + 16);
    m_text->installEventFilter(this);
    m_family->setEditable(true);
    m_family->setInsertPolicy(QComboBox::NoInsert);
    m_family->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_family->setMinimumContentsLength(12);
    m_size->setRange(kSmallestFont, kLargestFont);
    m_size->setDecimals(1);
    InEachLanguage(*m_size, [this] { m_size->setSuffix(Text(kTextPercent)); });
    m_size->setKeyboardTracking(false);
    JoinProject(*m_text);
    JoinProject(*m_size);
    JoinProject(*m_family);

    m_bold->setText(QStringLiteral("B"));
    m_italic->setText(QStringLiteral("I"));
    QFont bold = m_bold->font();
    bold.setBold(true);
    m_bold->setFont(bold);
    QFont italic = m_italic->font();
    italic.setItalic(true);
    m_italic->setFont(italic);

    auto* styles = new QHBoxLayout;
    styles->addWidget(m_bold);
    styles->addWidget(m_italic);
    styles->addSpacing(12);
    auto* sides = new QWidget;
    sides->setLayoutDirection(Qt::LeftToRight); // they mean sides of the picture
    auto* aligns = new QHBoxLayout(sides);
    aligns->setContentsMargins({});
    styles->addWidget(sides);
    for (const UINT nameId : {kTextLeft, kTextCentre, kTextRight}) {
        QToolButton* button = StyleButton(nameId);
        NameButton(*button, nameId);
        m_align->addButton(button, static_cast<int>(m_align->buttons().size()));
        aligns->addWidget(button);
    }
    TabAtChecked(*m_align);
    styles->addStretch();

    auto* rows = new QGridLayout;
    rows->addWidget(RowLabel(kTextFont, *m_family), 0, 0);
    rows->addWidget(m_family, 0, 1);
    rows->addWidget(RowLabel(kTextSize, *m_size), 1, 0);
    rows->addWidget(m_size, 1, 1);
    rows->addWidget(RowLabel(kTextStyle, *m_bold), 2, 0);
    rows->addLayout(styles, 2, 1);
    rows->setColumnStretch(1, 1);
    auto* column = new QVBoxLayout(this);
    QLabel* heading = Heading(kTextText);
    heading->setBuddy(m_text);
    column->addWidget(heading);
    column->addWidget(m_text);
    column->addLayout(rows);
}

void TextInspector::Connect()
{
    connect(m_text, &QPlainTextEdit::textChanged, this, &TextInspector::OnTextEdited);
    connect(m_family, &QFontComboBox::activated, this, &TextInspector::OnFamilyChosen);
    connect(m_family->lineEdit(), &QLineEdit::editingFinished, this, &TextInspector::OnFamilyChosen);
    connect(m_size, &QDoubleSpinBox::valueChanged, this, [this](double percent) {
        m_document.Edit(EditKind::FontSize, kStepFontSize,
                        [&](Project& project) { project.title.fontSize = percent; });
    });
    connect(m_bold, &QToolButton::toggled, this, [this](bool on) {
        m_document.Edit(EditKind::Single, kStepStyle, [&](Project& project) { project.title.bold = on; });
    });
    connect(m_italic, &QToolButton::toggled, this, [this](bool on) {
        m_document.Edit(EditKind::Single, kStepStyle, [&](Project& project) { project.title.italic = on; });
    });
    connect(m_align, &QButtonGroup::idClicked, this, [this](int id) {
        m_document.Edit(EditKind::Single, kStepAlign,
                        [&](Project& project) { project.title.align = static_cast<TextAlign>(id); });
    });
}

bool TextInspector::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut)
        m_document.EndSession();
    return QWidget::eventFilter(watched, event);
}

// While a name is typed, the box already speaks of fonts that do not exist.
void TextInspector::OnFamilyChosen()
{
    const int row = m_family->findText(m_family->currentText(), Qt::MatchFixedString);
    const QString family = m_family->itemText(row);
    if (row >= 0 && family != ShownFamily())
        m_document.Edit(EditKind::Single, kStepFont,
                        [&](Project& project) { project.title.fontFamily = family; });
    ShowProject();
}

// One step of undo is a word: a blank begins a new one, and so does whatever was not typed.
void TextInspector::OnTextEdited()
{
    QString text = m_text->toPlainText();
    text.truncate(kLongestText);
    if (text.size() == kLongestText && text.back().isHighSurrogate())
        text.chop(1); // half a character is none
    const TextDifference change = Difference(m_document.Current().title.text, text);
    const bool typed = change.inserted + change.removed == 1;
    if (!typed || (change.inserted == 1 && text[change.start].isSpace()))
        m_document.EndSession();
    m_document.Edit(EditKind::Typing, kStepText, [&](Project& project) { project.title.text = text; });
    if (!typed)
        m_document.EndSession();
    ShowText(text);
}

void TextInspector::ShowText(const QString& text)
{
    const QString shown = m_text->toPlainText();
    if (shown == text)
        return;
    const QSignalBlocker blocker(m_text);
    const TextDifference change = Difference(shown, text);
    QTextCursor cursor = m_text->textCursor();
    cursor.setPosition(static_cast<int>(change.start));
    cursor.setPosition(static_cast<int>(change.start + change.removed), QTextCursor::KeepAnchor);
    cursor.insertText(text.mid(change.start, change.inserted));
    m_text->setTextCursor(cursor);
}

QString TextInspector::ShownFamily() const
{
    const QString& family = m_document.Current().title.fontFamily;
    return family.isEmpty() ? DefaultFontFamily() : family;
}

void TextInspector::ShowProject()
{
    const Title& title = m_document.Current().title;
    const QSignalBlocker families(m_family);
    const QSignalBlocker size(m_size);
    const QSignalBlocker bold(m_bold);
    const QSignalBlocker italic(m_italic);
    ShowText(title.text);
    if (std::exchange(m_page, m_document.Current().pageIndex) != m_document.Current().pageIndex)
        m_text->moveCursor(QTextCursor::Start); // a place in another page's text means nothing here
    const QString family = ShownFamily();
    if (m_family->currentText() != family) {
        m_family->setCurrentIndex(m_family->findText(family, Qt::MatchFixedString));
        m_family->setEditText(family); // also one that is not installed
    }
    m_size->setValue(title.fontSize);
    m_bold->setChecked(title.bold);
    m_italic->setChecked(title.italic);
    m_align->button(static_cast<int>(title.align))->setChecked(true);
}

} // namespace titler
