#include "text/CharacterMap.h"

#include "edit/Document.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "title/TitleRenderer.h"
#include "window/Texts.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>

#include <utility>

namespace titler {
namespace {

bool IsTextField(const QWidget& widget)
{
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget))
        return !line->isReadOnly();
    const auto* lines = qobject_cast<const QPlainTextEdit*>(&widget);
    return lines != nullptr && !lines->isReadOnly();
}

} // namespace

CharacterMap::CharacterMap(Document& document, QPlainTextEdit& editor, SubtitlePanel& subtitles,
                           TextStage stage)
    : m_document(document)
    , m_editor(editor)
    , m_subtitles(subtitles)
    , m_stage(std::move(stage))
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { OnFocus(now); });
    connect(&document, &Document::ProjectOpened, this, [this] { m_hasTitleCursor = false; });
    connect(&document, &Document::ProjectChanged, this, &CharacterMap::ShowFace);
}

CharacterMap::~CharacterMap() = default;

CKvCharMapDlg& CharacterMap::Dialog()
{
    if (m_dialog == nullptr) {
        m_dialog = std::make_unique<CKvCharMapDlg>();
        m_dialog->SetRecent(m_recent.toStdWString());
        m_dialog->SetFavorites(m_favourites.toStdWString());
        ShowFace();
        m_dialog->Create(m_editor.window(), this);
        connect(m_dialog.get(), &CKvCharMapDlg::FavoritesChanged, this, &CharacterMap::FavouritesChanged);
    }
    return *m_dialog;
}

void CharacterMap::SetKept(const QString& recent, const QString& favourites)
{
    m_recent = recent;
    m_favourites = favourites;
    if (m_dialog == nullptr)
        return;
    m_dialog->SetRecent(m_recent.toStdWString());
    m_dialog->SetFavorites(m_favourites.toStdWString());
}

QString CharacterMap::Recent() const
{
    return m_dialog == nullptr ? m_recent : QString::fromStdWString(m_dialog->GetRecent());
}

QString CharacterMap::Favourites() const
{
    return m_dialog == nullptr ? m_favourites : QString::fromStdWString(m_dialog->GetFavorites());
}

// The map's own fields are no place to insert into.
void CharacterMap::OnFocus(QWidget* now)
{
    if (now == nullptr || !IsTextField(*now) || now->window() == m_dialog.get())
        return;
    m_field = now;
    m_hasTitleCursor = m_hasTitleCursor || now == &m_editor;
}

void CharacterMap::ShowFace()
{
    const QString& own = m_document.Current().title.fontFamily;
    const std::wstring face = (own.isEmpty() ? DefaultFontFamily() : own).toStdWString();
    if (m_dialog != nullptr && m_dialog->GetFont() != face)
        m_dialog->SetFont(face);
}

int CharacterMap::OnCommand(unsigned id, WPARAM character, LPARAM)
{
    if (id != KvCharMapCommand)
        return 0;
    const QString text = QChar(static_cast<char16_t>(character));
    const bool isShown = m_field != nullptr && m_field->isVisible();
    const int row = m_stage.areSubtitles() ? m_subtitles.List().GetCurrentItem() : -1;
    if (isShown && m_field == &m_editor)
        InsertInTitle(text, false);
    else if (auto* line = qobject_cast<QLineEdit*>(m_field); isShown && line != nullptr)
        line->insert(text);
    else if (auto* lines = qobject_cast<QPlainTextEdit*>(m_field); isShown && lines != nullptr)
        lines->insertPlainText(text);
    else if (row >= 0)
        InsertInRow(row, text);
    else
        InsertInTitle(text, !m_hasTitleCursor || !m_editor.isVisible());
    return 1;
}

// Sessions end before and behind it: what is typed there is another step.
void CharacterMap::InsertInTitle(const QString& text, bool atEnd)
{
    QTextCursor cursor = m_editor.textCursor();
    if (atEnd)
        cursor.movePosition(QTextCursor::End);
    const qsizetype removed = cursor.selectionEnd() - cursor.selectionStart();
    if (m_document.Current().title.text.size() - removed >= kLongestText) {
        emit Reported(LogType::Warning, Text(kTextTitleFull, {QString::number(kLongestText)}));
        return;
    }
    m_document.EndSession();
    cursor.insertText(text);
    m_editor.setTextCursor(cursor);
    m_document.EndSession();
    if (atEnd)
        emit Reported(LogType::Message, Text(kTextInsertedInTitle, {text}));
}

void CharacterMap::InsertInRow(int row, const QString& text)
{
    const QString before = QString::fromStdWString(m_subtitles.List().GetItemText(row, kKvSubTitleText));
    m_subtitles.SetTexts([text] { return Text(kStepInsertCharacter, {text}); }, {{row, before + text}});
    emit Reported(LogType::Message, Text(kTextInsertedInRow, {text, QString::number(row + 1)}));
}

} // namespace titler
