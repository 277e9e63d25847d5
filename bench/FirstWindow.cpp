// Shows one main window, says how many milliseconds of CPU time the process took until it was painted, and
// ends. Built twice: with a ribbon title bar, and plain, without the library.
#include <QApplication>
#include <QMainWindow>
#include <QPaintEvent>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#ifdef KV_WITH_BAR
#include "KvRibbonTitlebar.h"
#endif

namespace {

// Ends the process once the painting in which this widget took part is through.
class FirstPaint : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, this, [] {
                std::printf("%.3f\n", 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
                std::fflush(stdout);
                std::_Exit(0);
            });
        return false;
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    FirstPaint paint;
#ifdef KV_WITH_BAR
    CKvFrameWnd window;
    auto* bar = new CKvRibbonTitlebar;
    bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 1920, 0}, &window, 1);
    window.setMenuWidget(bar);
    bar->BeginAddTitleBar(L"titler_titles", L"Titles", nullptr, 1, nullptr);
    for (const wchar_t* tab : {L"Design", L"Animate", L"Media", L"Titles", L"Effects", L"Colour", L"Sound",
                               L"Preview", L"Publish", L"Settings"})
        bar->AddRibbonItem(tab, nullptr, nullptr, 0);
    bar->EndAddTitleBar();
    bar->ActiveTitleBar(1, 1);
    bar->installEventFilter(&paint);
#else
    QMainWindow window;
    window.installEventFilter(&paint);
#endif
    window.resize(1920, 1080);
    window.show();
    return QApplication::exec();
}
