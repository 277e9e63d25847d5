// The two dialogs for texts: made when they are first needed, over the window, beside what they are about.
#pragma once

#include "text/CharacterMap.h"
#include "text/TextFinder.h"

class QDialog;

namespace titler {

class TextTools : public QObject
{
    Q_OBJECT

public:
    /// @param window what the dialogs stand over; it deletes the tools before its own parts.
    TextTools(QWidget& window, Document& document, QPlainTextEdit& editor, SubtitlePanel& subtitles,
              const TextStage& stage);
    ~TextTools() override;

    /// Shows find and replace, with what is selected as the text to find; without a selection with its own.
    void OpenFind();
    /// Asks for a text where there is none yet.
    void FindNext();
    void OpenCharacterMap();
    CharacterMap& Characters() { return m_characters; }

signals:
    void Found(const QString& text);
    void Reported(titler::LogType type, const QString& text);

private:
    CKvFindReplaceTxtDlg& FindDialog();
    void Open(QDialog& dialog);
    void KeepClear(QDialog& dialog) const;

    QWidget& m_window;
    TextFinder m_finder;
    CharacterMap m_characters;
    std::unique_ptr<CKvFindReplaceTxtDlg> m_dialog;
};

} // namespace titler
