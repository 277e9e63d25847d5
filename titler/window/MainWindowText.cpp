// Find and replace, and the character map.
#include "subtitles/SubtitlePanel.h"
#include "text/TextTools.h"
#include "title/TextInspector.h"
#include "title/TitleWorkspace.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Texts.h"

#include <QMenu>
#include <QStatusBar>

namespace titler {

void MainWindow::BuildTextItems(QMenu& menu)
{
    m_text = std::make_unique<TextTools>(*this, m_document, m_workspace->Texts().Field(), *m_subtitles,
                                         TextStage{[this] { return AreSubtitles(); },
                                                   [this](Workspace workspace) { Show(workspace); },
                                                   [this] { Settle(); }});
    connect(m_text.get(), &TextTools::Found, statusBar(),
            [this](const QString& text) { statusBar()->showMessage(text, kMessageTime); });
    connect(m_text.get(), &TextTools::Reported, this, &MainWindow::Report);
    connect(&m_text->Characters(), &CharacterMap::FavouritesChanged, this, [this] {
        KeepCharacters();
        if (const QString fault = m_settings != nullptr ? m_settings->Save() : QString(); !fault.isEmpty())
            Say(fault, LogType::Warning);
    });
    menu.addSeparator();
    AddItem(menu, kTextFindReplace, {QKeySequence(Qt::CTRL | Qt::Key_H)}, [this] { m_text->OpenFind(); });
    AddItem(menu, kTextFindAgain, {QKeySequence(Qt::Key_F3)}, [this] { m_text->FindNext(); });
    AddItem(menu, kTextCharacterMap, {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_M)},
            [this] { m_text->OpenCharacterMap(); });
}

void MainWindow::KeepCharacters()
{
    if (m_settings == nullptr)
        return;
    m_settings->recentCharacters = m_text->Characters().Recent();
    m_settings->favouriteCharacters = m_text->Characters().Favourites();
}

} // namespace titler
