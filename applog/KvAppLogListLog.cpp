// The log list's menu: saving, copying, clearing.
#include "KvMenu.h"
#include "applog/AppLogFile.h"
#include "applog/KvAppLogListImpl.h"
#include "core/Text.h"
#include "core/TextTables.h"
#include "core/WholeFile.h"
#include "platform/VirtualKey.h"

#include <QAction>
#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr UINT kMenu = 12071;
constexpr UINT kCommandCustom = 32853;
constexpr UINT kCommandSaveSelected = 32854;
constexpr UINT kCommandSaveAll = 32855;
constexpr UINT kCommandCopySelected = 32856;
constexpr UINT kCommandCopyAll = 32857;
constexpr UINT kCommandClear = 32858;
constexpr std::pair<UINT, WORD> kMaxima[] = {{32850, 1000}, {32851, 2000}, {32852, 3000}};

constexpr std::uint32_t kTextNothingSaved = 15045;
constexpr std::uint32_t kTextNothingCopied = 15046;
constexpr std::uint32_t kTextFileFilter = 15047;
constexpr std::uint32_t kTextCustom = 15048;
constexpr std::uint32_t kTextClear = 15049;
constexpr std::uint32_t kTextNotSaved = 20200;
constexpr std::uint32_t kTextUntitled = 20201;

QAction* FindAction(const QMenu& menu, UINT command)
{
    const QList<QAction*> actions = menu.actions();
    const auto found = std::find_if(actions.begin(), actions.end(), [command](const QAction* action) {
        return KvGetMenuCommand(action) == command;
    });
    return found == actions.end() ? nullptr : *found;
}

/// "Log Files (*.log) | *.log ||" as the toolkit has it: the descriptions alone.
QString NameFilters(std::wstring_view filters)
{
    const QStringList parts = KvToQString(filters).split(QLatin1Char('|'));
    QStringList names;
    for (qsizetype i = 0; i < parts.size(); i += 2) {
        if (!parts[i].trimmed().isEmpty())
            names += parts[i].trimmed();
    }
    return names.join(QStringLiteral(";;"));
}

} // namespace

// Visits the messages, or those that are selected and shown, in order.
template <typename Visit>
void CKvAppLogListCtrl::Impl::VisitMessages(bool selectedOnly, Visit visit) const
{
    CArray<int, int> lines;
    if (selectedOnly)
        list.GetSelItems(lines);
    const int count = selectedOnly ? static_cast<int>(lines.size()) : list.GetItemCount();
    for (int i = 0; i < count; ++i) {
        const int line = selectedOnly ? lines[static_cast<std::size_t>(i)] : i;
        if (TypeAt(line) >= 0 && (!selectedOnly || list.IsRowShown(line)))
            visit(line);
    }
}

CKvAppLogListCtrl::Impl::Outcome CKvAppLogListCtrl::Impl::SaveTo(const std::wstring& path, bool selectedOnly,
                                                                 std::string* error) const
{
    kv::AppLogFileText text;
    CString formatted;
    VisitMessages(selectedOnly, [&](int line) {
        list._FormatLogLine(line, formatted);
        text.Add(formatted);
    });
    if (text.Bytes().empty())
        return Outcome::kNothing;
    return kv::WriteWholeFile(path, text.Bytes(), error) ? Outcome::kDone : Outcome::kFailed;
}

bool CKvAppLogListCtrl::Impl::Copy(bool selectedOnly, bool withTime) const
{
    std::wstring text;
    CString formatted;
    VisitMessages(selectedOnly, [&](int line) {
        list._FormatLogLine(line, formatted);
        if (!withTime) // the brackets around the time go with it
            formatted.erase(list.ViewItemText(line, kv::kAppLogType).size() +
                                list.ViewItemText(line, kv::kAppLogLevel).size() + 4,
                            list.ViewItemText(line, kv::kAppLogTime).size() + 2);
        (text += text.empty() ? L"" : L"\n") += formatted;
    });
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (text.empty() || !clipboard)
        return false;
    clipboard->setText(KvToQString(text));
    return true;
}

void CKvAppLogListCtrl::OnContextMenu(CPoint point)
{
    CKvMenu menu;
    menu.LoadMenu(kMenu);
    QMenu& items = *menu.GetHandle();
    {
        const Impl::Operation operation(*m_impl);
        QAction* custom = FindAction(items, kCommandCustom);
        UINT checked = kCommandCustom;
        for (const auto& [command, maximum] : kMaxima)
            checked = m_impl->maximum == maximum ? command : checked;
        if (checked == kCommandCustom)
            custom->setText(KvToQString(
                kv::FillText(kv::LoadText(kTextCustom), {kv::NumberText(std::int64_t{m_impl->maximum})})));
        else
            delete custom;
        menu.CheckMenuItem(checked, 1);
        const bool isSelected = GetShownSelCount() > 0;
        menu.EnableMenuItem(kCommandSaveSelected, isSelected);
        menu.EnableMenuItem(kCommandCopySelected, isSelected);
        menu.EnableMenuItem(kCommandClear, GetItemCount() > 0);
    }
    const QPointer<CKvAppLogListCtrl> self(this);
    const UINT command =
        menu.TrackPopupMenu(TPM_RIGHTBUTTON | TPM_RETURNCMD, mapToGlobal(QPoint(point)), this);
    if (self)
        m_impl->RunCommand(command);
}

void CKvAppLogListCtrl::Impl::RunCommand(UINT command)
{
    for (const auto& [maximumCommand, maximumLines] : kMaxima) {
        if (command != maximumCommand)
            continue;
        const unsigned short before = list.GetMaxLogLineCounts();
        list.SetMaxLogLineCounts(maximumLines, 1);
        if (before != maximumLines)
            emit list.MaximumLinesEdited(maximumLines);
        return;
    }
    switch (command) {
    case kCommandSaveSelected:
    case kCommandSaveAll:
        SaveAs(command == kCommandSaveSelected);
        break;
    case kCommandCopySelected:
    case kCommandCopyAll:
        CopyOrTell(command == kCommandCopySelected);
        break;
    case kCommandClear:
        AskAndClear();
        break;
    default:
        break;
    }
}

void CKvAppLogListCtrl::Impl::SaveAs(bool selectedOnly)
{
    const QPointer<CKvAppLogListCtrl> self(&list);
    const QPointer<QFileDialog> dialog(new QFileDialog(&list));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilter(NameFilters(kv::LoadText(kTextFileFilter)));
    dialog->setDefaultSuffix(QStringLiteral("log"));
    dialog->selectFile(KvToQString(kv::LoadText(kTextUntitled)));
    const bool isChosen = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    const QStringList files = dialog->selectedFiles();
    delete dialog;
    if (!self || !isChosen || files.isEmpty())
        return;
    const std::wstring path = KvFromQString(files.front());
    std::string error;
    const Outcome outcome = [&] {
        const Operation operation(*this);
        return SaveTo(path, selectedOnly, &error);
    }();
    if (outcome == Outcome::kNothing)
        KvMessageBox(&list, kv::LoadText(kTextNothingSaved), MB_OK | MB_ICONWARNING);
    else if (outcome == Outcome::kFailed)
        KvMessageBox(&list, kv::FillText(kv::LoadText(kTextNotSaved), {kv::FromUtf8(error)}),
                     MB_OK | MB_ICONERROR);
}

void CKvAppLogListCtrl::Impl::CopyOrTell(bool selectedOnly)
{
    if (!list.SaveAppLogToSysClipboard(selectedOnly))
        KvMessageBox(&list, kv::LoadText(kTextNothingCopied), MB_OK | MB_ICONWARNING);
}

void CKvAppLogListCtrl::Impl::AskAndClear()
{
    const QPointer<CKvAppLogListCtrl> self(&list);
    if (KvMessageBox(&list, kv::LoadText(kTextClear), MB_YESNOCANCEL | MB_ICONQUESTION) != IDYES || !self)
        return;
    list.ClearLog();
    KvNotifyHeader record{&list, list.GetDlgCtrlID(), kKvAppLogCleared};
    KvSendMessage(list.parentWidget(), WM_NOTIFY, list.GetDlgCtrlID(), reinterpret_cast<LPARAM>(&record));
    if (self)
        Q_EMIT self->LogCleared();
}

BOOL CKvAppLogListCtrl::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    {
        const Impl::Operation operation(*m_impl);
        if (key == 'C' && kv::HeldModifiers(modifiers) == (Qt::ControlModifier | Qt::ShiftModifier)) {
            m_impl->Copy(true, false);
            return 1;
        }
    }
    if (key == VK_ESCAPE && m_impl->IsFindOpen() && !HasCapture()) {
        m_impl->CloseFind();
        return 1;
    }
    return CKvReportListCtrl::OnKeyDown(key, modifiers);
}

BOOL CKvAppLogListCtrl::OnChar(UINT character)
{
    {
        const Impl::Operation operation(*m_impl);
        if (character == kv::kCtrlC || character == kv::kCtrlF) {
            if (character == kv::kCtrlC)
                m_impl->Copy(true, true);
            else
                m_impl->OpenFind();
            return 1;
        }
    }
    return CKvReportListCtrl::OnChar(character);
}

bool CKvAppLogListCtrl::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    return character == kv::kCtrlC || character == kv::kCtrlF || (key == VK_ESCAPE && m_impl->IsFindOpen()) ||
           CKvReportListCtrl::WantsShortcut(key, modifiers, character);
}
