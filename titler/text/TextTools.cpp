#include "text/TextTools.h"

#include "window/DialogPlace.h"

#include <QLineEdit>
#include <QScreen>

namespace titler {
namespace {

constexpr int kCaption = 32; // of a dialog that has no frame yet

} // namespace

TextTools::TextTools(QWidget& window, Document& document, QPlainTextEdit& editor, SubtitlePanel& subtitles,
                     const TextStage& stage)
    : m_window(window)
    , m_finder(document, editor, subtitles, stage)
    , m_characters(document, editor, subtitles, stage)
{
    connect(&m_finder, &TextFinder::Found, this, [this](const QString& text) {
        KeepClear(*m_dialog);
        emit Found(text);
    });
    connect(&m_finder, &TextFinder::Reported, this, &TextTools::Reported);
    connect(&m_characters, &CharacterMap::Reported, this, &TextTools::Reported);
}

TextTools::~TextTools() = default;

CKvFindReplaceTxtDlg& TextTools::FindDialog()
{
    if (m_dialog == nullptr) {
        m_dialog = std::make_unique<CKvFindReplaceTxtDlg>();
        m_dialog->SetNotify(&m_finder);
        m_dialog->Create(&m_window);
    }
    return *m_dialog;
}

void TextTools::OpenFind()
{
    CKvFindReplaceTxtDlg& dialog = FindDialog();
    if (const QString selected = m_finder.SelectedText(); !selected.isEmpty()) {
        CStringArray texts{selected.toStdWString()};
        dialog.SetFindString(texts);
    }
    Open(dialog);
}

void TextTools::FindNext()
{
    const auto* text = qobject_cast<const QLineEdit*>(FindDialog().GetDlgItem(kKvFindEdit));
    if (text == nullptr || text->text().isEmpty())
        OpenFind();
    else
        m_dialog->FindNext();
}

void TextTools::OpenCharacterMap()
{
    Open(m_characters.Dialog());
}

void TextTools::Open(QDialog& dialog)
{
    KeepClear(dialog);
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
}

// It goes where the user has moved it to, unless it lies over the text that it is about.
void TextTools::KeepClear(QDialog& dialog) const
{
    const QRect seen = m_finder.PlaceOnScreen();
    if (dialog.testAttribute(Qt::WA_Moved) && !dialog.frameGeometry().intersects(seen))
        return;
    const QSize frame =
        dialog.isVisible() ? dialog.frameGeometry().size() : dialog.size() + QSize(0, kCaption);
    dialog.move(PlaceBeside(seen, frame, m_window.screen()->availableGeometry()));
}

} // namespace titler
