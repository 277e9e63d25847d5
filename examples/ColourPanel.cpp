// The colour panel edits one colour; a title follows while it is edited, and each run can be undone.
#include <KvColorPanel.h>
#include <KvQt.h>
#include <KvSolidColorTemplate.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    window.setWindowTitle("Colour panel");

    CKvSolidColorTemplate::InstallFactoryTemplate(); // the swatches, where there is no file yet
    CKvColorPanel panel;
    panel.SetInitialMode(1); // hue, saturation, brightness
    panel.Create(&window);
    panel.SetDlgCtrlID(1001);
    panel.SetColor(0xFFFF8A1F);
    panel.show();

    QLabel title("<h1>Northern Lights</h1>");
    QLabel told("Drag on a map, type a number or pick a swatch.");
    QPushButton undo("Undo");
    QVBoxLayout layout(&window);
    layout.addWidget(&title, 0, Qt::AlignCenter);
    layout.addWidget(&panel, 1);
    layout.addWidget(&told);
    layout.addWidget(&undo, 0, Qt::AlignLeft);

    std::vector<DWORD> steps = {panel.GetColor()};
    const auto show = [&](const char* what) {
        const QColor colour = KvToQColor(panel.GetColor());
        title.setPalette(QPalette(colour, QColor(43, 43, 46)));
        told.setText(QString("%1: %2, steps: %3").arg(what, colour.name()).arg(steps.size() - 1));
        undo.setEnabled(steps.size() > 1);
    };
    KvMessageSink sink(&window, [&](UINT message, WPARAM id, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY || id != 1001)
            return std::nullopt;
        const auto& record = *reinterpret_cast<const KvColorNotifyRecord*>(lParam);
        if (record.phase == kKvPhaseEnd && panel.GetColor() != steps.back())
            steps.push_back(panel.GetColor()); // what lies between phase 0 and 2 is one step for the user
        const char* const phases[] = {"begins", "goes on", "ends"};
        show(phases[record.phase]);
        return 0;
    });
    QObject::connect(&undo, &QPushButton::clicked, &window, [&] {
        steps.pop_back();
        panel.SetColor(steps.back()); // setters are silent
        show("undone");
    });
    show("to begin with");
    window.show();
    return QApplication::exec();
}
