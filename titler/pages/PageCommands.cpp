#include "pages/PageCommands.h"

#include "edit/Document.h"
#include "edit/PageSteps.h"
#include "project/Pages.h"
#include "time/TransportBar.h"
#include "window/Commands.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QAction>

namespace titler {

PageCommands::PageCommands(Document& document, QWidget& owner)
    : QObject(&owner)
    , m_document(document)
    , m_owner(owner)
{
    const auto here = [this] { return m_document.Current().pageIndex; };
    m_add = Add(
        kTextPageAdd, Qt::CTRL | Qt::SHIFT | Qt::Key_N,
        [this] {
            AddPage(m_document);
            emit Added();
        },
        L"titler_tool_rule_add");
    m_duplicate = Add(
        kTextPageDuplicate, Qt::CTRL | Qt::Key_D, [this] { DuplicatePage(m_document); }, L"titler_tool_copy");
    m_delete = Add(
        kTextPageDelete, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete, [this] { DeletePage(m_document); },
        L"titler_tool_rule_remove");
    m_commands << nullptr;
    m_earlier = Add(kTextPageEarlier, Qt::CTRL | Qt::SHIFT | Qt::Key_PageUp,
                    [this, here] { MovePage(m_document, here() - 1); });
    m_later = Add(kTextPageLater, Qt::CTRL | Qt::SHIFT | Qt::Key_PageDown,
                  [this, here] { MovePage(m_document, here() + 1); });
    m_commands << nullptr;
    m_previous = Add(kTextPagePrevious, Qt::CTRL | Qt::Key_PageUp,
                     [this, here] { m_document.ChoosePage(here() - 1); });
    m_next =
        Add(kTextPageNext, Qt::CTRL | Qt::Key_PageDown, [this, here] { m_document.ChoosePage(here() + 1); });
    connect(&document, &Document::ProjectChanged, this, [this] { Show(); });
    InEachLanguage(*this, [this] { Show(); });
}

QAction* PageCommands::Add(UINT nameId, const QKeySequence& key, std::function<void()> run,
                           const wchar_t* icon)
{
    auto* command = new QAction(this);
    NameCommand(*command, nameId);
    command->setShortcut(key);
    if (icon != nullptr) {
        command->setIcon(SkinIcon(icon));
        command->setIconVisibleInMenu(false);
    }
    connect(command, &QAction::triggered, this, [this, run = std::move(run)] {
        CommitFields(*m_owner.window());
        run();
    });
    m_commands << command;
    return command;
}

QList<QAction*> PageCommands::Tools() const
{
    return {m_add, m_duplicate, m_delete};
}

void PageCommands::SetActive(bool active)
{
    m_isActive = active;
    Show();
}

void PageCommands::Show()
{
    const int count = PageCount(m_document.Current());
    const int page = m_document.Current().pageIndex;
    const bool hasRoom = count < kMostPages;
    const QString full = Text(kTextPagesFull, {QString::number(kMostPages)});
    Show(*m_add, hasRoom, kTextPageAdd, full);
    Show(*m_duplicate, hasRoom, kTextPageDuplicate, full);
    Show(*m_delete, count > 1, kTextPageDelete, Text(kTextOnlyPage));
    Show(*m_earlier, page > 0, kTextPageEarlier, Text(kTextFirstPage));
    Show(*m_previous, page > 0, kTextPagePrevious, Text(kTextFirstPage));
    Show(*m_later, page + 1 < count, kTextPageLater, Text(kTextLastPage));
    Show(*m_next, page + 1 < count, kTextPageNext, Text(kTextLastPage));
}

// A command that cannot be given says why.
void PageCommands::Show(QAction& command, bool isPossible, UINT nameId, const QString& reason) const
{
    command.setEnabled(isPossible && m_isActive);
    command.setToolTip(isPossible ? Text(nameId + 1) : reason);
    command.setStatusTip(command.toolTip());
}

} // namespace titler
