// A main window under a title bar of two applications: tabs, a tool window each, a menu, window buttons.
#include <KvGuiRes.h>
#include <KvRibbonTitlebar.h>

#include <QApplication>
#include <QLabel>
#include <QMenu>

struct ProjectMenu : IKvRibbonTitleBarSmartMenu // behind the button with the three lines
{
    QLabel& told;
    explicit ProjectMenu(QLabel& label) : told(label) {}
    int GetMenuName(wchar_t name[260]) override { return std::wstring(L"project").copy(name, 259) != 0; }
    int OnCommand(unsigned command) override
    {
        told.setText(QString("Menu command %1").arg(command)); // 0: dismissed
        return 1;
    }
};

struct Tools : QLabel, IKvGuiWnd // what stands below the strip while its tab is selected
{
    using QLabel::QLabel;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    KvGuiRes::RegisterMenu(L"project", [] {
        auto entries = std::make_unique<QMenu>();
        entries->addAction("New Project")->setData(101u);
        return entries;
    });
    auto* told = new QLabel("Select a tab, or hold Alt for the keys.");
    ProjectMenu menu(*told); // outlives the bar
    CKvFrameWnd frame;
    auto* bar = new CKvRibbonTitlebar;
    bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 800, 0}, &frame, 1001);
    frame.setMenuWidget(bar);
    frame.setCentralWidget(told);
    told->setAlignment(Qt::AlignCenter);
    const wchar_t* const tabs[] = {L"Design", L"Animate", L"Clips", L"Rules"};
    for (unsigned id = 1; id <= 2; ++id) { // an application each
        bar->BeginAddTitleBar(L"titler_titles", id == 1 ? L"Titles" : L"Media", nullptr, id, &menu);
        for (unsigned i = 2 * id - 2; i < 2 * id; ++i) {
            auto* tools = new Tools(QString::fromWCharArray(tabs[i]) + " tools", bar); // keeps its width
            bar->AddRibbonItem(tabs[i], tools, tools, 0);
        }
        bar->EndAddTitleBar();
        bar->SetSysTitle(id, L"Example – ");
        bar->SetDocTitle(id, L"Northern lights");
    }
    bar->ActiveTitleBar(1, 1);
    QObject::connect(bar, &CKvRibbonTitlebar::RibbonItemSelected, told,
                     [=](quint32, const QString& name) { told->setText(name + " is shown."); });
    frame.resize(800, 300);
    frame.show();
    return QApplication::exec();
}
