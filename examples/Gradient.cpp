// A gradient: the user edits stops and mid points, the host gives the selected stop its colour.
#include <KvGradientCtrl.h>
#include <KvQt.h>

#include <QApplication>
#include <QColorDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    window.setWindowTitle("Gradient");

    CKvGradientCtrl gradient;
    gradient.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, 1001);
    const SKvCGGradientKey dusk[] = {{0xFF2A1B5E, 0, 0.5f}, {0xFFD1345B, 0.4f, 0.5f}, {0xFFFFB347, 1, 0.6f}};
    gradient.SetDefaultData(3, dusk); // what "reset" in the menu brings back
    gradient.SetData(3, dusk);

    QPushButton colour("Colour of the Selected Stop…");
    QLabel told("Drag a stop, or click beside the stops to add one.");
    QVBoxLayout layout(&window);
    layout.addWidget(&gradient, 1);
    layout.addWidget(&told);
    layout.addWidget(&colour, 0, Qt::AlignLeft);

    // A drag is a run: phase 0 begins it, 1 goes on, 2 ends it. Other edits send all three at once.
    KvMessageSink sink(&window, [&](UINT message, WPARAM id, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY || id != 1001)
            return std::nullopt;
        const auto& record = *reinterpret_cast<const GradientNotifyRecord*>(lParam);
        const char* const events[] = {"set by the host", "edited", "selected"};
        const char* const phases[] = {"begins", "goes on", "ends"};
        int count = 0;
        SKvCGGradientKey* stops = nullptr;
        gradient.GetData(count, &stops);
        const int selected = gradient.GetSelectedKey();
        told.setText(QString("%1, %2: stop %3 of %4 at %5 %")
                         .arg(events[record.hdr.idFrom], phases[record.phase])
                         .arg(selected + 1)
                         .arg(count)
                         .arg(selected < 0 ? 0 : 100 * stops[selected].position, 0, 'f', 1));
        return 0;
    });
    QObject::connect(&colour, &QPushButton::clicked, &window, [&] {
        const QColor picked = QColorDialog::getColor(KvToQColor(gradient.GetSelectedColor()), &window, {},
                                                     QColorDialog::ShowAlphaChannel);
        if (picked.isValid())
            gradient.SetColor(KvFromQColor(picked)); // setters are silent
    });
    window.resize(520, 160);
    window.show();
    return QApplication::exec();
}
