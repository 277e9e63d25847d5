// A host of one control: the control must come up and tell its colour.
#include <KvGuiAdvCtrls.h>

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    CKvGradientCtrl gradient;
    gradient.setGeometry(10, 10, 400, 60);
    gradient.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, 1001);
    window.resize(420, 90);
    window.show();
    const QImage picture = window.grab().toImage();
    QRgb first = picture.pixel(0, 0);
    for (int x = 0; x < picture.width(); ++x)
        if (picture.pixel(x, 40) != first)
            return 0;
    return 1; // nothing was drawn
}
