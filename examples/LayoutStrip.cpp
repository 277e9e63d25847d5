// A strip of layouts: the host lends a thumbnail of each that comes into view, the user picks one.
#include <KvLayoutSelector.h>

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

struct Thumb final : IKvThumbImage // until the strip releases it
{
    std::vector<DWORD> dots;
    explicit Thumb(int index) : dots(160 * 90, QColor::fromHsv(index * 29 % 360, 150, 110).rgba()) {}
    int Lock(UINT& width, UINT& height, int& stride, const DWORD*& pixels) override
    {
        width = 160;
        height = 90;
        stride = 160 * 4; // bytes from one row to the next
        pixels = dots.data();
        return 1;
    }
    void Unlock() override {}
    int Release() override { return delete this, 0; }
};

struct Layouts : IKvLayoutSelectorData
{
    int current = 0;
    int AddRef() override { return 1; } // it stands on the stack and outlives the strip
    int Release() override { return 1; }
    int GetCount() override { return 40; }
    BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage**) override
    {
        (L"Layout " + std::to_wstring(index + 1)).copy(name, 63);
        *thumbnail = new Thumb(index);
        return 1;
    }
    BOOL IsSelected(int index) override { return index == current; }
    int Select(int index, BOOL) override { return (current = index) >= 0; }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    Layouts layouts;
    QWidget window;
    CKvLayoutSelector strip;
    strip.Create({0, 0, 620, 112}, 1001, &window, WS_CHILD | WS_VISIBLE | WS_TABSTOP); // wide: a row
    strip.SetData({16, 9}, &layouts);
    strip.EnableSelect(1);
    QLabel told("Click a layout, or drag near the scroll bar.");
    QVBoxLayout layout(&window);
    layout.addWidget(&strip, 1);
    layout.addWidget(&told);
    QObject::connect(&strip, &CKvLayoutSelector::LayoutPicked, &told,
                     [&](int index) { told.setText(QString("Layout %1 was picked.").arg(index + 1)); });
    window.show();
    return QApplication::exec();
}
