// A gradient of four corners: the user selects a corner, the host gives it its colour and fills a picture.
#include <KvQt.h>
#include <KvQuadGradCtrl.h>

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
    window.setWindowTitle("Four-corner gradient");

    CKvQuadGradCtrl quad;
    quad.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, 1001);
    const DWORD harbour[4] = {0xFF102A43, 0xFF247BA0, 0xFF2A1B5E, 0xFFFFB347};
    quad.SetData(harbour);

    QLabel picture;
    QPushButton colour("Colour of the Corner…");
    QLabel told("Select a corner, or exchange them by the right button's menu.");
    QVBoxLayout layout(&window);
    layout.addWidget(&quad, 1);
    layout.addWidget(&picture);
    layout.addWidget(&told);
    layout.addWidget(&colour, 0, Qt::AlignLeft);

    const auto fill = [&] {
        DWORD corners[4];
        quad.GetData(corners);
        QImage image(400, 100, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        KvFillQuadGradient(image, image.rect(), corners);
        picture.setPixmap(QPixmap::fromImage(image));
    };
    // The record is a bare header: who speaks, and the corner's colour as the code.
    KvMessageSink sink(&window, [&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY || reinterpret_cast<const KvNotifyHeader*>(lParam)->hwndFrom != &quad)
            return std::nullopt;
        const char* const corners[] = {"top left", "top right", "bottom left", "bottom right"};
        const QColor selected = KvToQColor(reinterpret_cast<const KvNotifyHeader*>(lParam)->code);
        told.setText(QString("%1: %2").arg(corners[quad.GetSelectedCorner()], selected.name()));
        return 0;
    });
    QObject::connect(&quad, &CKvQuadGradCtrl::CornersChanged, &window, fill);
    QObject::connect(&colour, &QPushButton::clicked, &window, [&] {
        const QColor picked = QColorDialog::getColor(KvToQColor(quad.GetSelectedColor()), &window);
        if (picked.isValid())
            quad.SetColor(KvFromQColor(picked)); // setters are silent
        fill();
    });
    fill();
    window.show();
    return QApplication::exec();
}
