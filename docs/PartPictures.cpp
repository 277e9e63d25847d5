// Pictures of the parts that stand on their own: colour maps, numbers, buttons, scroll bars, the report list.
#include "KvButtons.h"
#include "KvColorMapWnd.h"
#include "KvParamEdit.h"
#include "KvReportListCtrl.h"
#include "KvScroll.h"
#include "Pictures.h"

#include <QApplication>
#include <QKeyEvent>

namespace {

constexpr int kMargin = 16;
constexpr UINT kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;

bool SaveColourMaps(const Pictures& pictures)
{
    QWidget window;
    int y = kMargin;
    for (const bool enabled : {true, false}) {
        int x = kMargin;
        const auto add = [&](int type, int lock, int width) {
            auto* map = new CKvColorMapWnd; // the window owns it
            map->setGeometry(x, y, width, 128);
            map->Create(kStyle, &window, 1);
            map->SetType(type);
            map->SetLockType(lock);
            map->SetValue(0xA03A86FFu);
            map->setEnabled(enabled);
            x += width + kMargin;
        };
        add(kKvColorMapField, kKvLockFieldHue, 192);
        add(kKvColorMapSlider, kKvLockSliderHue, 24);
        add(kKvColorMapAlpha, 0, 24);
        window.resize(x, y + 128 + kMargin);
        y += 128 + kMargin;
    }
    window.show();
    return pictures.Save(window, "colour-map");
}

bool SaveNumbers(const Pictures& pictures)
{
    QWidget window;
    CKvParamEdit* numbers[3];
    int x = kMargin;
    for (CKvParamEdit*& number : numbers) {
        number = new CKvParamEdit; // the window owns it
        number->setGeometry(x, kMargin, 72, 24);
        number->Create(kStyle, &window, 1);
        number->SetValue(128);
        x += 72 + kMargin;
    }
    numbers[2]->setEnabled(false);
    window.resize(x, 24 + 2 * kMargin);
    window.show();
    QApplication::setActiveWindow(&window);
    numbers[1]->setFocus(Qt::TabFocusReason); // with the number selected
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_9, Qt::NoModifier, QStringLiteral("97"));
    QApplication::sendEvent(QApplication::focusWidget(), &typed);
    return numbers[1]->IsTyping() && pictures.Save(window, "number-edit");
}

/// Buttons in two rows, each in a state that a mouse or a key would bring about.
class ButtonScene
{
public:
    ButtonScene()
    {
        for (int i = 0; i < 5; ++i)
            Add<CKvBitmapButton>({kMargin + 44 * i, kMargin, 28, 28}, L"titler_tool_save");
        auto* text = Add<CKvButton>({kMargin, kMargin + 40, 110, 28}, L"titler_play");
        text->SetWindowText(L"Play");
        for (int i = 0; i < 2; ++i) {
            auto* radio =
                Add<CKvRadioBitmapButton>({kMargin + 132 + 44 * i, kMargin + 44, 28, 22}, L"RGB_UnCheck");
            radio->UpdateBitmap(L"RGB_UnCheck", L"RGB_Check");
            radio->SetCheck(i == 0);
        }
        m_window.resize(2 * kMargin + 44 * 4 + 28, 2 * kMargin + 68);
    }

    bool Save(const Pictures& pictures)
    {
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        const auto buttons = m_window.findChildren<CKvBitmapButton*>();
        buttons[1]->setAttribute(Qt::WA_UnderMouse);
        buttons[2]->setDown(true);
        buttons[3]->setFocus(Qt::TabFocusReason);
        buttons[4]->setEnabled(false);
        return pictures.Save(m_window, "buttons");
    }

private:
    template <typename Button>
    Button* Add(QRect place, const wchar_t* picture)
    {
        auto* button = new Button; // the window owns it
        button->CreateButton(1, &m_window, place, kStyle, picture, nullptr);
        return button;
    }

    QWidget m_window;
};

bool SaveScrollBars(const Pictures& pictures)
{
    QWidget window;
    const auto add = [&](Qt::Orientation orientation, CRect place, std::int64_t view, std::int64_t length) {
        auto* bar = new CKvScrollBar; // the window owns it
        bar->Create(orientation, WS_CHILD | WS_VISIBLE, place, &window, 1);
        IKvScrollLineHelper* line = nullptr;
        KvCreateScrollLineHelper(&line);
        line->SetViewLength(view);
        line->SetVirtualLength(length);
        line->SetPosition(length / 3);
        bar->SetScroll(*line);
        line->Release();
        return bar;
    };
    add(Qt::Horizontal, {16, 16, 316, 32}, 100, 1000);
    add(Qt::Horizontal, {16, 44, 316, 60}, 40, 10'000'000'000);
    add(Qt::Horizontal, {16, 72, 316, 88}, 100, 100);
    add(Qt::Horizontal, {16, 100, 316, 116}, 100, 1000)->setEnabled(false);
    add(Qt::Vertical, {332, 16, 348, 116}, 100, 400);
    window.resize(364, 132);
    window.show();
    return pictures.Save(window, "scroll-bar");
}

class ClipList : public CKvReportListCtrl
{
public:
    explicit ClipList(QWidget& window)
    {
        Create({kMargin, kMargin, 496, 196}, kStyle, &window, 1);
        InsertColumn(L"Clip", 200);
        InsertColumn(L"Length", 110);
        InsertColumn(L"Files", 80);
        SetAutoSizeColumn(0);
        InsertRow(-1, {L"harbour.mxf", L"00:01:12:08", L"6"});
        InsertRow(-1, {L"aurora.mov", L"00:00:40:00", L"1"});
        InsertRow(-1, {L"interview-00-0001-00-000-VHD.MXF", L"00:14:02:21", L"3"}, 48);
        InsertRow(-1, {L"streets of the old town, second take.mov", L"00:02:00:10", L"2"});
        const DWORD back = InTheme(0xFF5A3A1Au, 0xFFFFE2B8u);
        SetCellColors(1, 2, &back, nullptr);
        SetSelItem(2);
    }
};

bool SaveReportList(const Pictures& pictures)
{
    QWidget window;
    window.resize(512, 212);
    ClipList list(window);
    window.show();
    return pictures.Save(window, "report-list");
}

} // namespace

bool SaveParts(const Pictures& pictures)
{
    return SaveColourMaps(pictures) && SaveNumbers(pictures) && ButtonScene().Save(pictures) &&
           SaveScrollBars(pictures) && SaveReportList(pictures);
}
