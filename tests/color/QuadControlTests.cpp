// What the user does to the four-corner control, what its parent hears of it, and what it shows.
#include "KvQuadGradCtrl.h"
#include "tests/color/ControlEvents.h"
#include "tests/color/PlainQuad.h"

#include <QAccessible>
#include <QClipboard>

#include <gtest/gtest.h>
#include <map>

namespace {

constexpr char kFormat[] = "application/x-kv-dwcolor";
constexpr char kFirst[] = "*R G B M";

class TestCtrl : public CKvQuadGradCtrl
{
public:
    using CKvQuadGradCtrl::ToolTipAt;
};

// A control 160 x 60: corners of 20 x 20, the preview from (20, 12) to (140, 48). "c" is CornersChanged, a
// message is the colour that it tells, "s" with a corner the signal after it.
class QuadControl : public ControlTest<TestCtrl>
{
protected:
    QuadControl() { Renew(); }
    void Renew()
    {
        ControlTest::Renew({160, 60}, 1003);
        QObject::connect(control, &CKvQuadGradCtrl::CornersChanged, [this] { Say("c"); });
        QObject::connect(control, &CKvQuadGradCtrl::CornerSelected,
                         [this](int corner) { Say('s' + std::to_string(corner)); });
        onMessage = {};
        heard.clear();
    }
    void Hear(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const auto& record = *reinterpret_cast<const KvNotifyHeader*>(lParam);
        EXPECT_TRUE(message == WM_NOTIFY && wParam == 0 && record.hwndFrom == control && record.idFrom == 0);
        Say(QString::number(record.code, 16).toStdString());
        if (onMessage)
            onMessage();
    }
    std::string Corners() const
    {
        static const std::map<DWORD, std::string> names{
            {0xFFFF0000u, "R"}, {0xFF00FF00u, "G"}, {0xFF0000FFu, "B"}, {0xFFFF00FFu, "M"}};
        DWORD corners[4];
        control->GetData(corners);
        std::string text;
        for (int corner = 0; corner < 4; ++corner) {
            const auto name = names.find(corners[corner]);
            text += corner > 0 ? " " : "";
            text += corner == control->GetSelectedCorner() ? "*" : "";
            text += name == names.end() ? QString::number(corners[corner], 16).toStdString() : name->second;
        }
        return text;
    }
    // Further steps: D with a text and a point drops it; N selects no corner.
    Actions OwnActions(const Step& step) override
    {
        return {{'D', [=, this] { DropText(*control, step.at, step.command); }},
                {'N', [this] { control->SetSelectedCorner(-1); }}};
    }

    std::function<void()> onMessage;
};

TEST_F(QuadControl, UserActions)
{
    const struct
    {
        const char* name;
        const char* steps;
        const char* heard;
        const char* corners;
    } cases[] = {
        {"select", "P140,0", "ff00ff00 s1", "R *G B M"},
        {"every corner", "P159,59 P0,40 P19,19", "ffff00ff s3 ff0000ff s2 ffff0000 s0", kFirst},
        {"the selected one", "P5,5", "", kFirst},
        {"beside the corners", "P20,5 P5,20 P80,30", "", kFirst},
        {"from none", "N P5,5", "ffff0000 s0", kFirst},
        {"arrows", "KRight KDown KLeft KUp", "ff00ff00 s1 ffff00ff s3 ff0000ff s2 ffff0000 s0", kFirst},
        {"at an edge", "KLeft KUp", "", kFirst},
        {"arrow from none", "N KDown", "ffff0000 s0", kFirst},
        {"exchange sides", "XExchange_Left_and_Right,80,30", "c", "*G R M B"},
        {"exchange top", "XExchange_Top_and_Bottom,80,30", "c", "*B M R G"},
        {"clockwise", "XTurn_Clockwise,80,30", "c", "*B R M G"},
        {"counterclockwise", "XTurn_Counterclockwise,80,30", "c", "*G M R B"},
        {"exchange two", "XExchange_with_Selected_Corner,150,50", "c", "*M G B R"},
        {"a right click selects nothing", "XNothing,150,50", "", kFirst},
        {"copy and paste", "KCtrl+C XPaste,150,50", "c", "*R G B R"},
        {"copy by the menu, paste by key", "XCopy,150,5 KCtrl+V", "c", "*G G B M"},
        {"paste of the same", "KCtrl+C KCtrl+V", "", kFirst},
        {"paste into none", "KCtrl+C N KCtrl+V", "", "R G B M"},
        {"by the menu key", "KRight KCtrl+C KLeft YPaste", "ff00ff00 s1 ffff0000 s0 c", "*G G B M"},
        {"drop", "D#80102030,150,50", "c", "*R G B 80102030"},
        {"drop beside", "D#fff,80,30", "", kFirst},
        {"drop of no colour", "Dwords,150,50", "", kFirst},
    };
    for (const auto& test : cases) {
        Renew();
        Run(test.steps);
        EXPECT_EQ(Heard(), test.heard) << test.name;
        EXPECT_EQ(Corners(), test.corners) << test.name;
    }
}

TEST_F(QuadControl, MenuShowsWhatCanBeDone)
{
    const QString exchange = "Exchange with Selected Corner";
    QApplication::clipboard()->clear();
    EXPECT_EQ(UseContextMenu(*control, {5, 5}), (QStringList{"Paste", exchange}));
    Run("KCtrl+C");
    EXPECT_EQ(UseContextMenu(*control, {150, 5}), QStringList{});
    Run("N");
    EXPECT_EQ(UseContextMenu(*control, {80, 30}), (QStringList{"Copy", "Paste", exchange}));
}

TEST_F(QuadControl, SettersAreSilent)
{
    const DWORD corners[4] = {1, 2, 3, 4};
    control->SetData(corners), control->SetSelectedCorner(2), control->SetColor(0xFFFF0000u);
    control->SetData(nullptr), control->SetSelectedCorner(4), control->SetSelectedCorner(-2);
    EXPECT_EQ(Corners(), "1 2 *R 4");
    EXPECT_EQ(control->GetSelectedColor(), 0xFFFF0000u);
    control->SetSelectedCorner(-1);
    control->SetColor(9);
    EXPECT_EQ(control->GetSelectedColor(), 0u);
    EXPECT_EQ(Corners(), "1 2 R 4");
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(control->OnGetDlgCode(), 0x81u);
}

TEST_F(QuadControl, HostMayDeleteTheControlInItsHandler)
{
    for (const char* steps : {"P150,5", "KRight", "KDown"}) {
        Renew();
        onMessage = [this] { delete control; };
        Run(steps);
        EXPECT_FALSE(control) << steps;
    }
    for (const char* steps : {"XTurn_Clockwise,80,30", "D#fff,5,5", "KRight KCtrl+C KLeft KCtrl+V"}) {
        Renew();
        QObject::connect(control, &CKvQuadGradCtrl::CornersChanged, [this] { delete control; });
        Run(steps);
        EXPECT_FALSE(control) << steps;
    }
}

TEST_F(QuadControl, Pictures)
{
    parent.setPalette(QPalette(QColor(0x20, 0x30, 0x40)));
    control->clearFocus();
    const auto at = [this](int x, int y) { return parent.grab().toImage().pixel(x, y); };
    EXPECT_EQ(at(0, 0), 0xFF203040u);
    EXPECT_EQ(at(1, 1), 0xFF000000u) << "frame";
    EXPECT_EQ(at(2, 2), 0xFFC0C0C0u) << "the selected corner's mark";
    EXPECT_EQ(at(10, 10), 0xFFFF0000u);
    EXPECT_EQ(at(142, 2), 0xFF00FF00u) << "no mark";
    EXPECT_EQ(at(22, 14), 0xFFFF0000u) << "the preview's first pixel";
    EXPECT_EQ(at(5, 30), 0xFF203040u) << "between the corners";
    DWORD flat[4] = {0xFF123456u, 0xFF123456u, 0xFF123456u, 0xFF123456u};
    control->SetData(flat);
    EXPECT_EQ(at(50, 20), 0xFF123456u);
    EXPECT_EQ(at(137, 45), 0xFF123456u);
    flat[3] = 0x00FFFFFFu;
    control->SetData(flat);
    EXPECT_EQ(at(142, 42), 0xFFCCCCCCu) << "the checkerboard alone";
    control->setEnabled(false);
    EXPECT_EQ(at(10, 10), 0xFF1A1A1Au);
    control->resize(7, 60); // corners without width
    EXPECT_EQ(at(10, 10), 0xFF203040u);
}

TEST_F(QuadControl, ADropIsMarkedOtherwiseThanTheFocus)
{
    const auto at = [this](int x, int y) { return parent.grab().toImage().pixel(x, y); };
    const QRgb ring = at(0, 10); // of the selected corner
    EXPECT_EQ(at(1, 10), 0xFF000000u) << "its frame";
    QMimeData data;
    data.setText("#123");
    QDragEnterEvent enter({150, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(control, &enter);
    EXPECT_EQ(at(140, 50), ring);
    EXPECT_EQ(at(141, 50), ring) << "thicker";
    QDragLeaveEvent leave;
    QApplication::sendEvent(control, &leave);
    EXPECT_EQ(at(141, 50), 0xFF000000u);
}

TEST_F(QuadControl, SignalNamesTheCornerInForce)
{
    for (const auto& [corner, heardThen] : {std::pair(2, "ff00ff00 s2"), std::pair(-1, "ff00ff00")}) {
        Renew();
        onMessage = [this, other = corner] { control->SetSelectedCorner(other); };
        Run("P150,5");
        EXPECT_EQ(Heard(), heardThen) << "the parent selected " << corner;
    }
}

TEST_F(QuadControl, FillsImages)
{
    const DWORD corners[4] = {0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0xFFFF00FFu};
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(0xFF101010u);
    KvFillQuadGradient(image, {10, 5, 60, 15}, corners);
    EXPECT_EQ(image.pixel(10, 5), 0xFFFF0000u);
    EXPECT_EQ(image.pixel(9, 5), 0xFF101010u);
    EXPECT_EQ(image.pixel(39, 15), 0xFF101010u);
    // The centre: the average of (127, 127, 0) and (127, 0, 255).
    EXPECT_EQ(image.pixel(35, 10), 0xFF7F3F7Fu);
    QImage other(4, 4, QImage::Format_RGB888);
    other.fill(Qt::white);
    KvFillQuadGradient(other, {0, 0, 4, 4}, corners);
    EXPECT_EQ(other.pixel(0, 0), 0xFFFFFFFFu);
    QImage none;
    KvFillQuadGradient(none, {0, 0, 4, 4}, corners);
    KvFillQuadGradient(image, {0, 0, 4, 4}, nullptr);
}

TEST(QuadFill, OfAnImageIsExactInEveryFormatAndAtEveryRatio)
{
    const std::pair<QImage::Format, kv::PixelFormat> formats[] = {
        {QImage::Format_ARGB32, kv::PixelFormat::Argb32},
        {QImage::Format_ARGB32_Premultiplied, kv::PixelFormat::Argb32Premultiplied},
        {QImage::Format_RGB32, kv::PixelFormat::Rgb32},
    };
    const kv::QuadColours gradients[] = {{0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0xFFFF00FFu},
                                         {0xC0FF8000u, 0x4000FF40u, 0xFF2000FFu, 0x20FFFFFFu}};
    const CRect rects[] = {{0, 0, 41, 27}, {7, 3, 30, 20}, {-9, 5, 60, 33}};
    constexpr int kSpare = 8; // bytes behind each row
    const auto pixelOf = [](const QImage& image, int i, int j) {
        return reinterpret_cast<const DWORD*>(image.constScanLine(j))[i];
    };
    for (const double ratio : {1.0, 1.5, 2.0}) {
        const int width = qRound(41 * ratio);
        const int height = qRound(27 * ratio);
        for (const auto& [format, meant] : formats) {
            for (const kv::QuadColours& corners : gradients) {
                for (const CRect& rect : rects) {
                    SCOPED_TRACE(testing::Message()
                                 << ratio << ", format " << format << ", from " << rect.left);
                    std::vector<uchar> bytes(static_cast<std::size_t>((4 * width + kSpare) * height), 9);
                    QImage image(bytes.data(), width, height, 4 * width + kSpare, format);
                    for (int j = 0; j < height; ++j) {
                        for (int i = 0; i < width; ++i) { // of every alpha, premultiplied or not
                            const auto alpha = static_cast<DWORD>((37 * i + 11 * j) % 256);
                            reinterpret_cast<DWORD*>(image.scanLine(j))[i] =
                                kv::MakeColour(alpha, alpha / 2, alpha, alpha / 3);
                        }
                    }
                    const QImage before = image.copy();
                    image.setDevicePixelRatio(ratio);
                    KvFillQuadGradient(image, rect, corners.data());
                    const double worst = WorstError(
                        {width, height}, {rect, ratio, meant}, corners,
                        [&, image = &before](int i, int j) { return pixelOf(*image, i, j); },
                        [&](int i, int j) { return pixelOf(image, i, j); });
                    EXPECT_LE(worst, 2.0);
                    EXPECT_EQ(image.constBits(), bytes.data()) << "in place";
                    EXPECT_EQ(std::count(bytes.end() - kSpare, bytes.end(), 9), kSpare);
                }
            }
        }
    }
}

TEST(QuadFill, LeavesACopyOfTheImageAlone)
{
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(0xFF101010u);
    const QImage copy = image;
    const DWORD white[4] = {0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu};
    KvFillQuadGradient(image, {0, 0, 4, 4}, white);
    EXPECT_EQ(image.pixel(2, 2), 0xFFFFFFFFu);
    EXPECT_EQ(copy.pixel(2, 2), 0xFF101010u);
}

TEST_F(QuadControl, CornersAreNamed)
{
    CRect area;
    EXPECT_EQ(control->ToolTipAt({150, 5}, area), "Top right corner\nR 0  G 255  B 0  A 255  #FF00FF00");
    EXPECT_EQ(area, CRect(140, 0, 160, 20));
    EXPECT_EQ(control->ToolTipAt({80, 30}, area), "");
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(control);
    ASSERT_EQ(list->childCount(), 4);
    EXPECT_EQ(list->child(3)->text(QAccessible::Name), "Bottom right corner, magenta");
    EXPECT_EQ(list->focusChild(), list->child(0));
    list->child(2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(Heard(), "ff0000ff s2");
    EXPECT_EQ(list->focusChild(), list->child(2));
}

} // namespace
