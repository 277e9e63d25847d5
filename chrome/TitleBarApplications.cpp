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

constexpr UINT kFirstApplication = 32813;

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
    const std::vector<ApplicationEntry> entries = MenuApplications(m_bars);
    const QList<QAction*> actions = menu.GetHandle()->actions();
    bool isSection = false; // of the applications
    for (QAction* action : actions) {
        const UINT command = KvGetMenuCommand(action);
        if (command >= kFirstApplication && command < kFirstApplication + kMostMenuApplications) {
            const std::size_t index = command - kFirstApplication;
            FitApplication(*action, index < entries.size() ? &entries[index] : nullptr,
                           m_titleBar.devicePixelRatioF());
            isSection = true;
        } else if (std::exchange(isSection, false) && action->isSeparator() && entries.empty()) {
            delete action;
        }
    }
    FitFrameEntries(menu, *Frame());
}

void TitleBarStrip::DoApplicationCommand(UINT command)
{
    if (command >= kFirstApplication && command < kFirstApplication + kMostMenuApplications)
        ChooseApplication(static_cast<int>(command - kFirstApplication));
}

void TitleBarStrip::ChooseApplication(int index)
{
    if (index >= m_bars.Count() || index == m_bars.ActiveIndex())
        return;
    const std::uint32_t id = m_bars.At(index).id;
    const QPointer<QWidget> self(&m_titleBar);
    ActivateAt(index);
    if (self)
        emit m_titleBar.TitleBarActivated(id);
}

void TitleBarStrip::EnsureSwitchWindow()
{
    if (m_switch || m_bars.Count() < 2)
        return;
    m_switch = new CKvAppSwitchWnd;
    for (int i = 0; i < m_bars.Count(); ++i)
        m_switch->AddApplication(m_bars.At(i).imageKey + L"_s", m_bars.At(i).switchName);
    QObject::connect(m_switch, &CKvAppSwitchWnd::Chosen, m_watcher.get(),
                     [this](int row) { ChooseApplication(row); });
    m_shortcut = std::make_unique<QShortcut>(QKeySequence(Qt::ALT | Qt::Key_F1), &m_titleBar);
    QObject::connect(m_shortcut.get(), &QShortcut::activated, m_watcher.get(),
                     [this] { OpenSwitchWindow(); });
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
    if (m_bars.Count() < 2)
        return false;
    EnsureSwitchWindow(); // the frame that it belonged to may be gone
    m_switch->Open(*Frame(), m_bars.ActiveIndex());
    return true;
}

} // namespace kv
