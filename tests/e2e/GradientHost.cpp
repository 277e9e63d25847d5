// A host with one gradient control, driven from outside. It prints a line for each notification:
// "event phase colour", the colour being the selected stop's.
#include "KvGradientCtrl.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments(); // title [colour]
    QWidget window;
    window.setWindowTitle(arguments.value(1, QStringLiteral("host")));
    window.resize(420, 90);

    CKvGradientCtrl gradient;
    gradient.setGeometry(10, 10, 400, 70);
    gradient.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, 1001);
    if (arguments.size() > 2)
        gradient.SetColor(arguments[2].toUInt(nullptr, 16));
    KvMessageSink sink(&window, [&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY)
            return std::nullopt;
        const auto& record = *reinterpret_cast<const GradientNotifyRecord*>(lParam);
        std::printf("%d %d %08X\n", static_cast<int>(record.hdr.idFrom), record.phase,
                    gradient.GetSelectedColor());
        std::fflush(stdout);
        return 0;
    });
    window.show();
    gradient.setFocus();
    std::puts("ready");
    std::fflush(stdout);
    return QApplication::exec();
}
