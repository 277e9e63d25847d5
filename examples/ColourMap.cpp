// Three colour maps that show one colour: saturation and brightness, hue, alpha.
#include <KvColorMapWnd.h>
#include <KvQt.h>

#include <QApplication>
#include <QGridLayout>
#include <QLabel>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;

    CKvColorMapWnd field;
    CKvColorMapWnd hue;
    CKvColorMapWnd alpha;
    CKvColorMapWnd* const maps[] = {&field, &hue, &alpha};
    UINT number = 1001;
    for (CKvColorMapWnd* map : maps)
        map->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, number++);
    field.SetType(kKvColorMapField);
    field.SetLockType(kKvLockFieldHue); // shows the other two
    hue.SetType(kKvColorMapSlider);
    hue.SetLockType(kKvLockSliderHue);
    alpha.SetType(kKvColorMapAlpha);

    QLabel colour;
    colour.setAutoFillBackground(true);
    QLabel told("Drag on a map; arrows and the wheel step.");
    QGridLayout layout(&window);
    layout.addWidget(&field, 0, 0);
    layout.addWidget(&hue, 0, 1);
    layout.addWidget(&alpha, 0, 2);
    layout.addWidget(&colour, 0, 3);
    layout.addWidget(&told, 1, 0, 1, 4);
    layout.setColumnStretch(0, 1);
    layout.setRowStretch(0, 1);
    layout.setColumnMinimumWidth(3, 60);

    // The others follow in whole precision: a colour of 8 bits a channel would lose the hue of greys.
    const auto show = [&](const CKvColorMapWnd& from) {
        for (CKvColorMapWnd* map : maps)
            if (map != &from) {
                map->SetHSBValue(from.GetHue(), from.GetSat(), from.GetBri());
                map->SetA(from.GetA());
            }
        const QColor now = KvToQColor(from.GetValue());
        colour.setPalette(now);
        told.setText(QString("%1, alpha %2").arg(now.name()).arg(from.GetA()));
    };
    for (CKvColorMapWnd* map : maps)
        QObject::connect(map, &CKvColorMapWnd::ColorChanged, &window, [=] { show(*map); });
    field.SetValue(0xFF3A86FF);
    show(field);
    window.resize(420, 240);
    window.show();
    return QApplication::exec();
}
