#include "subtitles/EncodingDialog.h"

#include "subtitles/TextEncoding.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>

#include <algorithm>

namespace titler {
namespace {

constexpr std::size_t kPreviewBytes = 8192;
constexpr int kPreviewWidth = 56; // characters
constexpr int kPreviewHeight = 16;

// The begin of a file, up to its first letter that is no ASCII and on from there: what is before looks alike
// in most encodings.
std::string_view TellingBegin(std::string_view bytes)
{
    const auto first = std::find_if(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
    const auto at = static_cast<std::size_t>(first - bytes.begin());
    const bool isFar = first != bytes.end() && at > kPreviewBytes / 4;
    const std::size_t line = isFar ? bytes.rfind('\n', at) : bytes.npos;
    const std::size_t begin = line == bytes.npos || bytes.find('\0') != bytes.npos ? 0 : line + 1;
    return bytes.substr(begin, kPreviewBytes);
}

} // namespace

EncodingDialog::EncodingDialog(std::string_view bytes, QWidget* parent)
    : QDialog(parent)
    , m_names(new QListWidget)
    , m_preview(new QPlainTextEdit)
{
    const std::string_view begin = TellingBegin(bytes);
    m_begin = QByteArray(begin.data(), static_cast<qsizetype>(begin.size()));
    NameField(*m_names, kTextEncodingList);
    NameField(*m_preview, kTextEncodingPreview);
    m_preview->setReadOnly(true);
    m_preview->setTabChangesFocus(true);
    m_preview->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_preview->setMinimumSize(fontMetrics().averageCharWidth() * kPreviewWidth,
                              fontMetrics().lineSpacing() * kPreviewHeight);
    for (const char* name : Encodings())
        m_names->addItem(QLatin1String(name));
    m_names->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_names->setFixedWidth(m_names->sizeHintForColumn(0) + 2 * m_names->frameWidth() +
                           m_names->verticalScrollBar()->sizeHint().width());
    auto* question = new QLabel;
    InEachLanguage(*this, [this, question] {
        setWindowTitle(Text(kTextEncodingTitle));
        question->setText(Text(kTextEncodingQuestion));
    });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* grid = new QGridLayout(this);
    grid->addWidget(question, 0, 0, 1, 2);
    grid->addWidget(FieldLabel(kTextEncodingList, *m_names), 1, 0);
    grid->addWidget(FieldLabel(kTextEncodingPreview, *m_preview), 1, 1);
    grid->addWidget(m_names, 2, 0);
    grid->addWidget(m_preview, 2, 1);
    grid->addWidget(buttons, 3, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_names, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(m_names, &QListWidget::currentRowChanged, this, &EncodingDialog::ShowPreview);
    const QString guess = QString::fromStdString(GuessEncoding(bytes));
    m_names->setCurrentItem(m_names->findItems(guess, Qt::MatchFixedString).value(0));
    m_names->setFocus();
}

QString EncodingDialog::Encoding() const
{
    return m_names->currentItem()->text();
}

void EncodingDialog::ShowPreview()
{
    const std::string_view begin(m_begin.constData(), static_cast<std::size_t>(m_begin.size()));
    const std::optional<ConvertedText> text = DecodeText(begin, Encoding().toStdString());
    QString shown = QString::fromStdString(text ? text->bytes : std::string());
    // The last line may end within a letter.
    if (m_begin.size() == static_cast<qsizetype>(kPreviewBytes) && shown.contains(u'\n'))
        shown.truncate(shown.lastIndexOf(u'\n'));
    m_preview->setPlainText(shown);
}

} // namespace titler
