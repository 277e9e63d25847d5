// How the user of a ribbon title bar goes from one application to another: by the menu of the application
// button and by the switch window.
#include "KvGuiRes.h"
#include "chrome/KvAppSwitchWnd.h"
#include "chrome/TitleBarStrip.h"
#include "platform/FrameState.h"

#include <QAction>
#include <QMenu>
#include <QShortcut>

#include <utility>

namespace kv {
namespace {

// A name is no text with mnemonics.
QString MenuText(const std::wstring& name)
{
    return KvToQString(name).replace('&', QLatin1String("&&"));
}

// The command's entry shows an application, or goes.
void FitApplication(QAction& action, const ApplicationEntry* entry, qreal ratio)
{
    if (!entry) {
        delete &action;
        return;
    }
    action.setText(MenuText(entry->name));
    action.setEnabled(!entry->active);
    const KvSkinImage picture = KvGuiRes::LoadImageW(entry->picture.c_str());
    if (!picture.IsNull())
        action.setIcon(QIcon(picture.Pixmap(picture.Size(), ratio)));
}

} // namespace

void TitleBarStrip::PrepareApplicationMenu(CKvMenu& menu)
{
    const std::vector<ApplicationEntry> entries = MenuApplications(Records());
    m_offered.clear();
    for (int i = 0; i < static_cast<int>(entries.size()); ++i)
        m_offered.emplace_back(m_titleBar, Records().At(i));
    const QList<QAction*> actions = menu.GetHandle()->actions();
    bool isSection = false; // of the applications
    for (QAction* action : actions) {
        const UINT command = KvGetMenuCommand(action);
        if (IsApplicationCommand(command)) {
            const std::size_t index = command - kCommandFirstApplication;
            FitApplication(*action, index < entries.size() ? &entries[index] : nullptr,
                           m_titleBar.devicePixelRatioF());
            isSection = true;
        } else if (std::exchange(isSection, false) && action->isSeparator() && entries.empty()) {
            delete action;
        }
    }
    FitFrameEntries(menu, *Frame());
}

// While the menu was open the host may have removed some of the applications.
void TitleBarStrip::DoApplicationCommand(UINT command)
{
    const std::size_t index = command - kCommandFirstApplication;
    if (IsApplicationCommand(command) && index < m_offered.size() && m_offered[index].Lives())
        ChooseApplication(Records().IndexOf(*m_offered[index].record));
}

void TitleBarStrip::ChooseApplication(int index)
{
    if (index < 0 || index >= Records().Count() || index == Records().ActiveIndex())
        return;
    const std::uint32_t id = Records().At(index).id;
    const QPointer<QWidget> bar(&m_titleBar);
    ActivateAt(index);
    if (bar)
        emit m_titleBar.TitleBarActivated(id);
}

bool TitleBarStrip::IsFlagOpen() const
{
    return m_switch && m_switch->isVisible();
}

void TitleBarStrip::OnAdded()
{
    if (m_switch)
        AddToSwitchWindow(Records().Count() - 1);
    else
        EnsureSwitchWindow();
    Layout(); // the flag may be new
}

void TitleBarStrip::OnRemoved(int index)
{
    if (Records().Count() < 2)
        DropSwitchWindow();
    else if (m_switch)
        m_switch->RemoveApplication(index);
}

void TitleBarStrip::AddToSwitchWindow(int index)
{
    const SKvTitleBarData& record = TitleBarAt(Records(), index);
    m_switch->AddApplication(record.imageKey + L"_s", record.switchName);
}

void TitleBarStrip::EnsureSwitchWindow()
{
    if (m_switch || Records().Count() < 2)
        return;
    m_switch = new CKvAppSwitchWnd;
    for (int i = 0; i < Records().Count(); ++i)
        AddToSwitchWindow(i);
    QObject::connect(m_switch, &CKvAppSwitchWnd::Chosen, &m_titleBar,
                     [this](int row) { ChooseApplication(row); });
    m_shortcut = std::make_unique<QShortcut>(QKeySequence(Qt::ALT | Qt::Key_F1), &m_titleBar);
    QObject::connect(m_shortcut.get(), &QShortcut::activated, &m_titleBar, [this] { OpenSwitchWindow(); });
}

void TitleBarStrip::DropSwitchWindow()
{
    m_shortcut.reset();
    if (!m_switch)
        return;
    CKvAppSwitchWnd* const window = std::exchange(m_switch, nullptr);
    window->hide();
    // Once it was shown it may be the one that speaks just now; then it is its frame's child as well.
    if (window->parentWidget())
        window->deleteLater();
    else
        delete window;
}

bool TitleBarStrip::OpenSwitchWindow()
{
    if (Records().Count() < 2)
        return false;
    EnsureSwitchWindow(); // the frame that it belonged to may be gone
    m_switch->Open(*Frame(), Records().ActiveIndex());
    return true;
}

} // namespace kv
