// What the user does to a swatch grid, what its parent hears of it, and what all grids show.
#include "KvSolidColorTemplate.h"
#include "tests/color/ControlEvents.h"
#include "tests/core/TemporaryFolder.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QFile>
#include <QPointer>

#include <gtest/gtest.h>
#include <map>

namespace {

constexpr WPARAM kId = 1002;
constexpr char kFormat[] = "application/x-kv-dwcolor";
// One line of five: with three columns the second row is short.
constexpr char kProfile[] = "[SolidColorTemplate_Head]\nTemplateLine=1\nColors Per Line=5\n"
                            "[SolidColorLine_1]\n"
                            "Color_1= 1,1,1,255\nColor_2= 2,2,2,255\nColor_3= 3,3,3,255\n"
                            "Color_4= 4,4,4,255\nColor_5= 5,5,5,255\n"
                            "[SolidColorLine_Altered_1]\n"
                            "Color_1= 255,0,0,128\nColor_2= 0,255,0,255\nColor_3= 0,0,255,255\n"
                            "Color_4= 255,255,0,255\nColor_5= 0,0,0,0\n";

class TestGrid : public CKvSolidColorTemplate
{
public:
    using CKvSolidColorTemplate::DrawAlphaCell;
    using CKvSolidColorTemplate::DrawCell;
    using CKvSolidColorTemplate::HasCapture;
    using CKvSolidColorTemplate::ReadFile;
    using CKvSolidColorTemplate::ToolTipAt;
};

// A grid of 3 by 8, 92 x 83: cells of 30 x 10, the alpha cells from row 70 on, each 23 wide. Messages are
// written "index/store#colour".
class SwatchGrid : public ControlTest<TestGrid>
{
protected:
    SwatchGrid() { Renew(); }
    void Renew()
    {
        CKvSolidColorTemplate::SetSystemFolder(KvFromQString(QString::fromStdString(folder.Path().string())));
        QFile file(FileName());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(kProfile) > 0);
        file.close();
        ControlTest::Renew({92, 83}, kId);
        ASSERT_TRUE(TestGrid::ReadFile(KvFromQString(FileName()), false));
        onMessage = {};
        heard.clear();
    }
    QString FileName() const
    {
        return QString::fromStdString(folder.Path().string()) + "/KvSolidColorTemplate.ini";
    }
    QByteArray FileText() const
    {
        QFile file(FileName());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    void Hear(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const auto& record = *reinterpret_cast<const KvSwatchNotifyRecord*>(lParam);
        EXPECT_TRUE(message == WM_NOTIFY && wParam == kId && record.header.idFrom == kId);
        EXPECT_TRUE(record.header.hwndFrom == control && record.header.code == 0xFFFFFFD7u);
        Say(std::to_string(record.index) + '/' + std::to_string(record.store) + '#' +
            QString::number(*record.colour, 16).toStdString());
        if (onMessage)
            onMessage(record);
    }

    kv::TemporaryFolder folder;
    std::function<void(const KvSwatchNotifyRecord&)> onMessage;
};

TEST_F(SwatchGrid, Picks)
{
    const struct
    {
        const char* name;
        const char* steps;
        const char* messages;
    } cases[] = {
        {"a swatch", "P35,5 U35,5", "-1/1#ff00ff00"},
        {"a swatch with alpha", "P5,5 U5,5", "-1/1#80ff0000"},
        {"alpha cells", "P0,70 U0,70 P23,82 U23,82 P46,70 U46,70 P91,82 U91,82",
         "0/1#ff000000 1/1#ff555555 2/1#ffaaaaaa 3/1#ffffffff"},
        {"behind the last swatch", "P65,15 U65,15", ""},
        {"right of the last column", "P91,5 U91,5", ""},
        {"released elsewhere", "P5,5 M5,25 U35,5", ""},
        {"pressed elsewhere", "P65,15 M5,5 U5,5", ""},
        {"left and came back", "P30,72 M5,72 M31,72 U31,72", "1/1#ff555555"},
        {"moved far within the cell", "P2,72 M21,80 U21,80", "0/1#ff000000"},
        {"escape", "P5,5 KEsc U5,5", ""},
        {"hidden", "P5,5 H U5,5", ""},
        {"disabled", "P5,5 E U5,5", ""},
        {"enter", "KReturn", "-1/1#80ff0000"},
        {"space after a walk", "KRight KDown KSpace", "-1/1#0"},
        {"a click makes its cell the current one", "P35,5 U35,5 KRight KReturn",
         "-1/1#ff00ff00 -1/1#ff0000ff"},
        {"stops at the edges", "KLeft KUp KReturn KEnd KRight KDown KReturn", "-1/1#80ff0000 3/1#ffffffff"},
        {"down from the short row", "KRight KRight KDown KReturn", "3/1#ffffffff"},
        {"home", "KEnd KHome KReturn", "-1/1#80ff0000"},
        {"keys in a press", "P5,5 KRight KReturn U5,5", "-1/1#80ff0000"},
    };
    for (const auto& test : cases) {
        Renew();
        Run(test.steps);
        EXPECT_EQ(Heard(), test.messages) << test.name;
        EXPECT_FALSE(control->HasCapture()) << test.name;
    }
}

TEST_F(SwatchGrid, SignalsComeWithTheMessages)
{
    std::string signalled;
    const auto note = [&](char kind) {
        return [&, kind](int index, quint32 colour) {
            signalled += kind + std::to_string(index) + '#' + QString::number(colour, 16).toStdString() + ' ';
        };
    };
    QObject::connect(control, &CKvSolidColorTemplate::CellPicked, note('p'));
    QObject::connect(control, &CKvSolidColorTemplate::CellStoreRequested, note('s'));
    Run("P35,5 U35,5 P91,82 U91,82 XSave_Current_Color,35,5");
    EXPECT_EQ(signalled, "p-1#ff00ff00 p3#ffffffff s1#ff00ff00 ");
}

TEST_F(SwatchGrid, SavesTheParentsColour)
{
    EXPECT_EQ(UseContextMenu(*control, {5, 72}), QStringList{"Save Current Color"});
    EXPECT_EQ(UseContextMenu(*control, {5, 5}), QStringList{});
    onMessage = [&](const KvSwatchNotifyRecord& record) { control->SetCellColor(record.index, 0x40010203u); };
    Run("XSave_Current_Color,35,15");
    EXPECT_EQ(Heard(), "4/0#0");
    EXPECT_TRUE(FileText().contains("Color_5= 1,2,3,64"));
    Run("KRight YSave_Current_Color");
    EXPECT_EQ(Heard(), "1/0#ff00ff00");
    EXPECT_EQ(control->GetCellColor(1), 0x40010203u);

    onMessage = [&](const KvSwatchNotifyRecord& record) {
        control->SetCellColor(record.index, 0xFF0A0B0Cu);
        delete control;
    };
    Run("XSave_Current_Color,5,5");
    EXPECT_TRUE(FileText().contains("Color_1= 10,11,12,255")) << "the swatch outlives the grid";
}

TEST_F(SwatchGrid, ResetsToTheFactory)
{
    Run("XReset_All,5,5");
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(control->GetCellColor(4), 0xFF050505u);
    const QByteArray text = FileText();
    EXPECT_EQ(text.count("Color_1= 1,1,1,255"), 2) << text.constData();
    control->SetCellColor(0, 1);
    EXPECT_EQ(control->InitialData(0), 0) << "loaded once";
    EXPECT_EQ(control->GetCellColor(0), 1u);
    QFile::remove(FileName());
    EXPECT_EQ(control->InitialData(1), 0);
    EXPECT_EQ(control->GetCellCount(), 5) << "a failure leaves the swatches";
}

TEST_F(SwatchGrid, AllGridsShowTheSameSwatches)
{
    QWidget window;
    window.resize(92, 83);
    TestGrid other;
    other.setGeometry(0, 0, 92, 83);
    other.Create(WS_CHILD | WS_VISIBLE, &window, 7);
    window.show();
    const auto middle = [&other](int x, int y) { return other.grab().toImage().pixel(x, y); };
    EXPECT_EQ(middle(45, 5), 0xFF00FF00u);
    control->SetCellColor(1, 0xFF102030u);
    EXPECT_EQ(middle(45, 5), 0xFF102030u);
    control->SetCellColor(-1, 5), control->SetCellColor(5, 5); // ignored
    EXPECT_TRUE(TestGrid::ReadFile(KvFromQString(FileName()), true));
    EXPECT_EQ(middle(45, 5), 0xFF020202u);
    other.SetNumRect(0, -3);
    EXPECT_EQ(other.GetCellCount(), 5);
    EXPECT_EQ(middle(11, 40), 0xFF000000u) << "nothing but alpha cells";
    EXPECT_EQ(middle(80, 40), 0xFFFFFFFFu);
}

TEST_F(SwatchGrid, Pictures)
{
    parent.setPalette(QPalette(QColor(0x20, 0x30, 0x40)));
    control->clearFocus();
    const auto at = [this](int x, int y) { return parent.grab().toImage().pixel(x, y); };
    EXPECT_EQ(at(0, 0), 0xFF203040u) << "the gap";
    EXPECT_EQ(at(1, 1), 0xFF18181Au) << "the frame";
    // Red of alpha 128 over the dark and the light square of the checkerboard.
    EXPECT_EQ(at(2, 2), 0xFFE66666u);
    EXPECT_EQ(at(4, 2), 0xFFEE6E6Eu);
    EXPECT_EQ(at(34, 12), 0xFFDDDDDDu) << "alpha 0 shows only the checkerboard";
    EXPECT_EQ(at(75, 15), 0xFF203040u) << "no swatch";
    EXPECT_EQ(at(91, 5), 0xFF203040u) << "no column";
    EXPECT_EQ(at(35, 78), 0xFF555555u);

    SendMouse(*control, QEvent::MouseMove, {75, 5}, {});
    EXPECT_EQ(at(61, 5), 0xFFFFFFFFu) << "hovered";
    SendMouse(*control, QEvent::MouseButtonPress, {75, 5}, Qt::LeftButton);
    EXPECT_NE(at(75, 5), 0xFF0000FFu) << "pressed";
    SendMouse(*control, QEvent::MouseMove, {75, 25}, Qt::LeftButton);
    EXPECT_EQ(at(75, 5), 0xFF0000FFu) << "no longer pressed";
    SendMouse(*control, QEvent::MouseButtonRelease, {75, 25}, {});
    control->setEnabled(false);
    EXPECT_EQ(at(75, 5), 0xFF2A2A2Au);
    EXPECT_EQ(at(35, 78), 0xFF2A2A2Au);
}

TEST_F(SwatchGrid, CellsAloneAreThoseOfTheWholePicture)
{
    control->clearFocus();
    for (const double ratio : {1.0, 1.5}) {
        QImage whole(control->size() * ratio, QImage::Format_ARGB32_Premultiplied);
        whole.setDevicePixelRatio(ratio);
        whole.fill(0);
        QImage cells = whole;
        control->render(&whole, {}, {}, {});
        {
            QPainter painter(&cells);
            for (int index = -1; index <= 5; ++index) {
                control->DrawCell(painter, index);
                control->DrawAlphaCell(painter, index);
            }
        }
        EXPECT_EQ(whole, cells) << ratio;
    }
}

TEST_F(SwatchGrid, AlphaCellsShowWhatTheirAlphaDoes)
{
    control->resize(92, 8 * 20);
    const QImage picture = control->grab().toImage();
    const std::uint32_t middles[] = {0xFF000000u, 0xFF555555u, 0xFFAAAAAAu, 0xFFFFFFFFu};
    const std::uint32_t strips[] = {0xFFDDDDDDu, 0xFFA6A6A6u, 0xFF6E6E6Eu, 0xFF000000u};
    for (int index = 0; index < 4; ++index) {
        EXPECT_EQ(picture.pixel(23 * index + 11, 150), middles[index]) << index;
        std::uint32_t lightest = 0;
        for (int x = 4; x < 19; ++x)
            lightest = std::max(lightest, picture.pixel(23 * index + x, 156));
        EXPECT_EQ(lightest, strips[index]) << "black over the checkerboard, " << index;
    }
}

TEST_F(SwatchGrid, TakesAndGivesColours)
{
    EXPECT_TRUE(DropText(*control, {35, 5}, "#123"));
    EXPECT_EQ(control->GetCellColor(1), 0xFF112233u);
    EXPECT_TRUE(FileText().contains("Color_2= 17,34,51,255"));
    EXPECT_FALSE(DropText(*control, {5, 72}, "#123")) << "on an alpha cell";
    EXPECT_FALSE(DropText(*control, {65, 15}, "#123")) << "beside the swatches";
    EXPECT_FALSE(DropText(*control, {35, 5}, "no colour"));
    EXPECT_FALSE(DropText(*control, {35, 5}, "#123" + QString(1000000, u' ')));
    EXPECT_TRUE(DropText(*control, {29.6, 5}, "#789")) << "in the pixel before the second cell";
    EXPECT_EQ(control->GetCellColor(0), 0xFF778899u);
    EXPECT_EQ(control->GetCellColor(1), 0xFF112233u);
    EXPECT_EQ(Heard(), "");
    Run("KRight KCtrl+C");
    EXPECT_EQ(QApplication::clipboard()->mimeData()->data(kFormat), QByteArray::fromHex("332211ff"));
    Run("KEnd KCtrl+C");
    EXPECT_EQ(QApplication::clipboard()->mimeData()->data(kFormat), QByteArray::fromHex("332211ff"));
    control->setEnabled(false);
    EXPECT_FALSE(DropText(*control, {35, 5}, "#456"));
}

TEST_F(SwatchGrid, TakesBinaryColoursOfFourBytes)
{
    constexpr QPointF kSwatch(35, 5);
    constexpr QPointF kAlphaCell(30, 75);
    constexpr DWORD kBefore = 0xFF00FF00u;
    const struct
    {
        const char* bytes;
        const char* text; ///< beside it
        QPointF at;
        DWORD colour;
    } cases[] = {
        {"332211ff", "", kSwatch, 0xFF112233u},
        {"33221100", "", kSwatch, 0x00112233u},
        {"332211ff", "#445566", kSwatch, 0xFF112233u},
        {"", "", kSwatch, kBefore},
        {"33", "", kSwatch, kBefore},
        {"332211", "", kSwatch, kBefore},
        {"332211ff00", "", kSwatch, kBefore},
        {"332211ff332211ff", "", kSwatch, kBefore},
        {"332211", "#445566", kSwatch, 0xFF445566u},
        {"332211ff", "", kAlphaCell, kBefore},
        {"332211", "", kAlphaCell, kBefore},
        {"332211ff00", "#445566", kAlphaCell, kBefore},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(testing::Message() << one.bytes << ' ' << one.text << " at " << one.at.y());
        Renew();
        const QByteArray before = FileText();
        QMimeData data;
        data.setData(kFormat, QByteArray::fromHex(one.bytes));
        if (*one.text)
            data.setText(one.text);
        EXPECT_EQ(Drop(*control, one.at, data), one.colour != kBefore);
        EXPECT_EQ(control->GetCellColor(1), one.colour);
        EXPECT_EQ(FileText() == before, one.colour == kBefore);
        EXPECT_EQ(control->GetCellColor(0), 0x80FF0000u);
        EXPECT_EQ(Heard(), "");
    }
}

TEST_F(SwatchGrid, DragsASwatchOut)
{
    QString text;
    Run("P35,5 M35,35");
    EXPECT_TRUE(control->HasCapture()) << "not within the event";
    QTimer::singleShot(0, control, [&] {
        if (const auto* drag = control->findChild<QDrag*>()) {
            text = drag->mimeData()->text();
            EXPECT_EQ(drag->mimeData()->data(kFormat), QByteArray::fromHex("00ff00ff"));
        }
        QTest::keyClick(&parent, Qt::Key_Escape); // ends the toolkit's drag
    });
    QApplication::processEvents();
    EXPECT_EQ(text, "#ff00ff00");
    EXPECT_FALSE(control->HasCapture());
    EXPECT_EQ(Heard(), "");

    Run("P30,75 M35,35"); // an alpha cell stands for no colour
    QApplication::processEvents();
    EXPECT_TRUE(control->HasCapture());
    Run("U35,35");
    EXPECT_EQ(Heard(), "");
}

TEST_F(SwatchGrid, ParentMayDeleteTheGridInItsHandler)
{
    for (const char* steps :
         {"P5,5 U5,5", "KReturn", "P5,72 U5,72", "XSave_Current_Color,5,5", "YSave_Current_Color"}) {
        Renew();
        onMessage = [this](const KvSwatchNotifyRecord&) { delete control; };
        Run(steps);
        EXPECT_FALSE(control) << steps;
    }
}

TEST_F(SwatchGrid, InstallsTheFactoryFileWhereThereIsNone)
{
    const QByteArray before = FileText();
    EXPECT_EQ(CKvSolidColorTemplate::InstallFactoryTemplate(), 1);
    EXPECT_EQ(FileText(), before);
    CKvSolidColorTemplate::SetSystemFolder(CKvSolidColorTemplate::GetSystemFolder() + L"/new/deep");
    EXPECT_EQ(CKvSolidColorTemplate::InstallFactoryTemplate(), 1);
    EXPECT_EQ(control->InitialData(1), 1);
    EXPECT_EQ(control->GetCellCount(), 32);
    CKvSolidColorTemplate::SetSystemFolder(KvFromQString(FileName())); // a file is no folder
    EXPECT_EQ(CKvSolidColorTemplate::InstallFactoryTemplate(), 0);
}

TEST_F(SwatchGrid, CellsAreNamed)
{
    CRect area;
    EXPECT_EQ(control->ToolTipAt({5, 5}, area), "R 255  G 0  B 0  A 128  #80FF0000");
    EXPECT_EQ(area, CRect(0, 0, 30, 10));
    EXPECT_EQ(control->ToolTipAt({50, 75}, area), "Alpha 128");
    EXPECT_EQ(area, CRect(46, 70, 69, 83));
    EXPECT_EQ(control->ToolTipAt({91, 5}, area), "");

    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(control);
    ASSERT_EQ(list->childCount(), 9);
    EXPECT_EQ(list->child(1)->text(QAccessible::Name), "Swatch 2 of 5, green");
    EXPECT_EQ(list->child(8)->text(QAccessible::Name), "Alpha 255");
    EXPECT_EQ(list->focusChild(), list->child(0));
    list->child(6)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(list->focusChild(), list->child(6));
    list->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(Heard(), "-1/1#ff00ff00");
}

} // namespace
