// A main window under a menu bar: popups with states that the host keeps, shortcuts, window buttons.
#include <KvMenu.h>
#include <KvRibbonMenuBar.h>

#include <QApplication>
#include <QLabel>
#include <QMenu>

constexpr unsigned kAddKey = 201, kLoop = 202;

struct AnimationMenu : IKvRibbonMenuBarSmartMenu
{
    QLabel& told;
    int keys = 0;
    bool loops = false;
    explicit AnimationMenu(QLabel& label) : told(label) {}
    int OnUpdateCommand(HMENU popup, unsigned command) override // before it is seen, or its shortcut counts
    {
        for (QAction* entry : popup->actions())
            if (command == kLoop && KvGetMenuCommand(entry) == kLoop)
                entry->setChecked(loops);
        return 1;
    }
    int OnCommand(HMENU, unsigned command) override
    {
        keys += command == kAddKey;
        loops ^= command == kLoop;
        told.setText(QString("Keys: %1, %2").arg(keys).arg(loops ? "over and over" : "once"));
        return 1;
    }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    auto* told = new QLabel("Choose from the menus, or hold Alt for the keys.");
    AnimationMenu states(*told); // both outlive the bar
    QMenu items;
    QMenu* animation = items.addMenu("&Animation");
    animation->addAction("&Add Key", QKeySequence("Ctrl+K"))->setData(kAddKey);
    animation->addAction("&Loop", QKeySequence("Ctrl+L"))->setData(kLoop);
    animation->actions().last()->setCheckable(true);

    CKvFrameWnd frame;
    auto* bar = new CKvRibbonMenuBar;
    bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 800, 0}, &frame, 1001);
    frame.setMenuWidget(bar);
    frame.setCentralWidget(told);
    told->setAlignment(Qt::AlignCenter);
    bar->BeginAddMenuBar(L"titler_icon", L"Example", 1, &items, &states);
    bar->EndAddMenuBar();
    bar->SetSysTitle(1, L"Example – ");
    bar->SetDocTitle(1, L"Northern lights");
    bar->ActiveMenuBar(1);
    bar->ShowAppMenuBtn(0);
    frame.resize(800, 300);
    frame.show();
    return QApplication::exec();
}
