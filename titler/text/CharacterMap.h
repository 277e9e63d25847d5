// The character map over the window: it shows the title's face and writes into the text that one was at.
#pragma once

#include "KvCharMapDlg.h"
#include "log/LogPanel.h"
#include "text/TextFinder.h"

#include <QObject>
#include <QPointer>

#include <memory>

namespace titler {

/// A pick goes to the text field that had the focus last, while that is to be seen: at its cursor, as if it
/// were typed, in a title as a step of undo of its own. Else it goes to the end of a text, as one step: of
/// the current row where subtitles are shown, of the title elsewhere, which is said then.
class CharacterMap : public QObject, public IKvCmdTarget
{
    Q_OBJECT

public:
    /// @param editor the field of the current page's text. All must outlive the map.
    CharacterMap(Document& document, QPlainTextEdit& editor, SubtitlePanel& subtitles, TextStage stage);
    ~CharacterMap() override;

    /// The dialog, made hidden at the first call.
    CKvCharMapDlg& Dialog();
    int OnCommand(unsigned id, WPARAM character, LPARAM) override;

    // What is kept from run to run.
    void SetKept(const QString& recent, const QString& favourites);
    QString Recent() const;
    QString Favourites() const;

signals:
    void FavouritesChanged();
    void Reported(titler::LogType type, const QString& text);

private:
    void OnFocus(QWidget* now);
    void ShowFace();
    void InsertInTitle(const QString& text, bool atEnd);
    void InsertInRow(int row, const QString& text);

    Document& m_document;
    QPlainTextEdit& m_editor;
    SubtitlePanel& m_subtitles;
    TextStage m_stage;
    QPointer<QWidget> m_field;     ///< the text field that had the focus last
    bool m_hasTitleCursor = false; ///< the user has put it somewhere
    QString m_recent;              ///< until there is a dialog
    QString m_favourites;
    std::unique_ptr<CKvCharMapDlg> m_dialog;
};

} // namespace titler
