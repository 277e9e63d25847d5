// The log: messages from this thread and from another one, a filter, and what the user does with them.
#include <KvAppLogListCtrl.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <atomic>
#include <chrono>
#include <thread>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;

    CKvAppLogListCtrl log;
    log.Create({0, 0, 640, 240}, WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, 1001);
    log.Initialize(1);
    log.SetMaxLogLineCounts(2000, 1);
    log.SetFollowMode(kKvAppLogFollowAtEnd); // somebody who reads above is left there
    const wchar_t* const messages[] = {L"Opened harbour.mov", L"Rendering", L"Frame dropped", L"Disk full"};
    for (int type = 0; type < 4; ++type) // plain, important, warning, error
        log.AddAppLogText(type, 0, messages[type]);

    QLineEdit filter;
    filter.setPlaceholderText("Show the lines with…");
    QLabel told("Ctrl+F searches, Ctrl+C copies, the right button has a menu.");
    QVBoxLayout layout(&window);
    layout.addWidget(&log, 1);
    layout.addWidget(&filter);
    layout.addWidget(&told);

    QObject::connect(&filter, &QLineEdit::textChanged, &log,
                     [&](const QString& text) { log.SetTextFilter(text.toStdWString().c_str(), 0); });
    QObject::connect(&log, &CKvAppLogListCtrl::SelectionEdited, &told, [&] {
        told.setText(QString("%1 of %2 lines selected").arg(log.GetSelCount()).arg(log.GetItemCount()));
    });
    KvMessageSink sink(&window, [&](UINT message, WPARAM id, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY || id != 1001)
            return std::nullopt;
        told.setText("The log was cleared.");
        return 0;
    });
    std::atomic<bool> ends = false;
    std::thread worker([&] {
        for (int frame = 1; !ends; ++frame) {
            log.PostAppLogText(0, 0, L"Rendered frame " + std::to_wstring(frame)); // from any thread
            std::this_thread::sleep_for(std::chrono::milliseconds(400));
        }
    });
    window.resize(640, 320);
    window.show();
    const int result = QApplication::exec();
    ends = true;
    worker.join(); // before the list goes
    return result;
}
