// Swatches: a click picks a colour or an alpha, "Save Current Color" in the menu stores the host's colour.
#include <KvQt.h>
#include <KvSolidColorTemplate.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    window.setWindowTitle("Swatches");

    // All grids of a program share their swatches. They are kept in the user's folder, or in the one that
    // the host names by SetSystemFolder.
    CKvSolidColorTemplate::InstallFactoryTemplate(); // where there is no file yet
    CKvSolidColorTemplate swatches;
    swatches.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, 1001);
    swatches.SetNumRect(4, 9); // the last row has the four alpha cells
    swatches.InitialData(0);

    QLabel colour;
    colour.setFixedSize(220, 120);
    QLabel told("Pick a swatch, or an alpha below them.");
    QHBoxLayout layout(&window);
    QVBoxLayout right;
    layout.addWidget(&swatches, 1);
    layout.addLayout(&right);
    right.addWidget(&colour);
    right.addWidget(&told);

    DWORD current = 0xFF336699;
    const auto show = [&](const QString& what) {
        QPixmap picture(colour.size());
        picture.fill(KvToQColor(current));
        colour.setPixmap(picture);
        told.setText(QString("%1: #%2").arg(what).arg(current, 8, 16, QChar('0')));
    };
    KvMessageSink sink(&window, [&](UINT message, WPARAM id, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY || id != 1001)
            return std::nullopt;
        const auto& record = *reinterpret_cast<const KvSwatchNotifyRecord*>(lParam);
        if (record.store == 0) {
            swatches.SetCellColor(record.index, current); // written to the file afterwards
            show(QString("stored in swatch %1").arg(record.index));
        } else if (record.index < 0) {
            current = *record.colour;
            show("picked a swatch");
        } else {
            current = (current & 0x00FFFFFFu) | (*record.colour & 0xFF000000u);
            show("picked an alpha");
        }
        return 0;
    });
    window.show();
    return QApplication::exec();
}
