// A frame with a caption bar, driven from outside: the title bar with two applications, or with --menubar the
// menu bar. It prints a line for each thing that happens:
//   part NAME X Y W H    where a button or item stands in the frame, anew after each change of size; then
//   told W H             the size of the frame that they hold for
//   state N              show state: 1 normal, 2 minimised, 3 maximised
//   popup X Y            a popup opened, in the frame's coordinates
//   inside               the pointer entered the window's contents
//   activated ID, tab ID NAME, command N, close refused, closed
#include "KvGuiRes.h"
#include "KvRibbonMenuBar.h"
#include "KvRibbonTitlebar.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QTimer>

#include <cstdio>

namespace {

void Say(const QString& line)
{
    std::puts(qUtf8Printable(line));
    std::fflush(stdout);
}

class HostFrame : public CKvFrameWnd
{
public:
    void SetBar(CKvCaptionBar* bar)
    {
        m_bar = bar;
        setMenuWidget(bar);
    }

    void TellParts()
    {
        const auto tell = [this](const QString& name, QRect rect) {
            rect.translate(m_bar->mapTo(this, QPoint()));
            Say(QStringLiteral("part %1 %2 %3 %4 %5")
                    .arg(name)
                    .arg(rect.x())
                    .arg(rect.y())
                    .arg(rect.width())
                    .arg(rect.height()));
        };
        for (const UINT button : {kKvCaptionApplication, kKvCaptionClose, kKvCaptionMaximise,
                                  kKvCaptionMinimise, kKvCaptionMenu}) {
            if (const QWidget* window = KvGetDlgItem(m_bar, button))
                tell(QString::number(button), window->geometry());
        }
        const QAccessibleInterface* strip = QAccessible::queryAccessibleInterface(m_bar);
        for (int i = 0; strip && i < strip->childCount(); ++i) {
            const QAccessibleInterface* child = strip->child(i);
            if (child && !child->object())
                tell(child->text(QAccessible::Name), child->rect().translated(-m_bar->mapToGlobal(QPoint())));
        }
        Say(QStringLiteral("told %1 %2").arg(width()).arg(height()));
    }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        const bool refuse = m_closings++ == 0;
        Say(refuse ? QStringLiteral("close refused") : QStringLiteral("closed"));
        event->setAccepted(!refuse);
    }
    void resizeEvent(QResizeEvent* event) override
    {
        CKvFrameWnd::resizeEvent(event);
        QTimer::singleShot(0, this, &HostFrame::TellParts);
    }
    void changeEvent(QEvent* event) override
    {
        CKvFrameWnd::changeEvent(event);
        if (event->type() == QEvent::WindowStateChange)
            Say(QStringLiteral("state %1").arg(isMinimized() ? 2 : isMaximized() ? 3 : 1));
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QMenu*>(watched)) {
            const QPoint at = mapFromGlobal(static_cast<QWidget*>(watched)->pos());
            Say(QStringLiteral("popup %1 %2").arg(at.x()).arg(at.y()));
        } else if (event->type() == QEvent::Enter && watched == centralWidget()) {
            Say(QStringLiteral("inside"));
        }
        return CKvFrameWnd::eventFilter(watched, event);
    }

private:
    CKvCaptionBar* m_bar = nullptr;
    int m_closings = 0;
};

CKvCaptionBar* MakeTitleBar(HostFrame& frame)
{
    auto* bar = new CKvRibbonTitlebar;
    bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 700, 96}, &frame, 1);
    const wchar_t* const names[] = {L"First", L"Second"};
    for (unsigned id = 1; id <= 2; ++id) {
        bar->BeginAddTitleBar(L"app", names[id - 1], nullptr, id, nullptr);
        bar->AddRibbonItem(L"Alpha", nullptr, nullptr, 1);
        bar->AddRibbonItem(L"Beta", nullptr, nullptr, 0);
        bar->EndAddTitleBar();
    }
    bar->ActiveTitleBar(1, 1);
    QObject::connect(bar, &CKvRibbonTitlebar::TitleBarActivated, &frame,
                     [](quint32 id) { Say(QStringLiteral("activated %1").arg(id)); });
    QObject::connect(
        bar, &CKvRibbonTitlebar::RibbonItemSelected, &frame,
        [](quint32 id, const QString& name) { Say(QStringLiteral("tab %1 %2").arg(id).arg(name)); });
    return bar;
}

class SmartMenu : public IKvRibbonMenuBarSmartMenu
{
public:
    int OnCommand(HMENU, unsigned command) override
    {
        Say(QStringLiteral("command %1").arg(command));
        return 0;
    }
};

QMenu* MakeMenu(QWidget& parent)
{
    auto* menu = new QMenu(&parent);
    int command = 100;
    for (const char* title : {"&File", "&Edit"}) {
        QMenu* popup = menu->addMenu(QLatin1String(title));
        for (const char* entry : {"&One", "&Two"})
            popup->addAction(QLatin1String(entry))->setData(++command);
    }
    return menu;
}

CKvCaptionBar* MakeMenuBar(HostFrame& frame, SmartMenu& smartMenu)
{
    auto* bar = new CKvRibbonMenuBar;
    bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 700, 96}, &frame, 1);
    bar->BeginAddMenuBar(L"app", L"First", 1, MakeMenu(frame), &smartMenu);
    bar->EndAddMenuBar();
    bar->ActiveMenuBar(1);
    return bar;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setDoubleClickInterval(2000); // a loaded machine clicks slowly
    SmartMenu smartMenu;
    HostFrame frame;
    frame.setWindowTitle(QStringLiteral("host"));
    const bool wantsMenuBar = QApplication::arguments().contains(QStringLiteral("--menubar"));
    frame.SetBar(wantsMenuBar ? MakeMenuBar(frame, smartMenu) : MakeTitleBar(frame));
    frame.setCentralWidget(new QWidget);
    application.installEventFilter(&frame);
    frame.setGeometry(300, 200, 700, 400);
    frame.show();
    Say(QStringLiteral("ready"));
    return QApplication::exec();
}
