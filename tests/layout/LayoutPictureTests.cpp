// A few pixels of a layout strip.
#include "KvGuiRes.h"
#include "tests/layout/LayoutFixture.h"

namespace kv::test {
namespace {

QColor SkinColourOf(const wchar_t* key)
{
    DWORD colour = 0;
    EXPECT_EQ(KvGuiRes::LoadColor(key, colour), 1) << QString(QString::fromWCharArray(key)).toStdString();
    return QColor::fromRgba(colour);
}

class LayoutPicture : public LayoutStrip
{
protected:
    QImage Picture()
    {
        control->UpdateScroll();
        control->clearFocus();
        return control->grab().toImage();
    }
};

TEST_F(LayoutPicture, ShowsThumbnailMarkAndGround)
{
    layouts->marked = {1};
    layouts->without = {2};
    layouts->locked = {3};
    const QImage picture = Picture();
    const struct
    {
        const char* name;
        QPoint at;
        QColor colour;
    } rows[] = {
        {"the border", {0, 40}, SkinColourOf(L"keLayoutViewWndFrameColor")},
        {"the ground", {2, 40}, SkinColourOf(L"keWindowBKColor")},
        {"a picture", {40, 40}, QColor(0, 255, 0)},
        {"its right end", {77, 40}, QColor(0, 255, 0)},
        {"no mark", {60, 15}, QColor(0, 255, 0)},
        {"left of a mark", {133, 15}, QColor(0, 255, 0)},
        {"a mark", {134, 15}, QColor(0, 0, 255)},
        {"its last corner", {157, 26}, QColor(0, 0, 255)},
        {"below it", {150, 28}, QColor(0, 255, 0)},
        {"no thumbnail", {200, 40}, SkinColourOf(L"keLayoutViewUnitBackgroundColor")},
        {"no label there", {168, 10}, SkinColourOf(L"keLayoutViewUnitBackgroundColor")},
        {"pixels that are not lent", {290, 40}, QColor(Qt::black)},
    };
    for (const auto& row : rows)
        EXPECT_EQ(picture.pixelColor(row.at).name().toStdString(), row.colour.name().toStdString())
            << row.name;
    EXPECT_NE(picture.pixelColor(8, 8), QColor(0, 255, 0)) << "the label's ground";
    EXPECT_EQ(layouts->alive, 0);
}

TEST_F(LayoutPicture, LabelsCountFromAnyNumber)
{
    const auto label = [this](int index) { return Picture().copy(7 + 80 * index, 5, 40, 16); };
    const QImage second = label(1);
    EXPECT_NE(label(0), second);
    control->SetFirstNumber(1);
    EXPECT_EQ(label(0), second);
}

TEST_F(LayoutPicture, LargeLettersLeaveTheNameAlone)
{
    QFont font;
    font.setPixelSize(34); // two plates are higher than a thumbnail
    SKvGuiBasicSettings settings{0xFF102030u, 0xFFFFFFFFu, 0xFF808080u, font};
    control->SetGuiBasicSettings(&settings);
    EXPECT_NE(Picture().pixelColor(8, 8), QColor(0, 255, 0)) << "a number alone";
    layouts->isLongName = true;
    control->UpdateScroll(); // asks again
    EXPECT_EQ(Picture().pixelColor(8, 8), QColor(0, 255, 0)) << "no number";
    EXPECT_NE(Picture().pixelColor(74, 57), QColor(0, 255, 0)) << "but the name";
}

TEST_F(LayoutPicture, AlphaIsStraightAndLiesOnBlack)
{
    layouts->colour = 0x80FF0000u;
    const QColor colour = Picture().pixelColor(40, 40);
    EXPECT_NEAR(colour.red(), 128, 1);
    EXPECT_EQ(colour.green() + colour.blue(), 0);
}

TEST_F(LayoutPicture, FramesRunThroughPixelCentres)
{
    const QImage picture = Picture();
    const QColor frame = SkinColourOf(L"keLayoutViewUnitFrameColorNormal");
    // 0.8 of a pixel over the green.
    const int red = static_cast<int>(std::lround(frame.red() * 0.8));
    for (const QPoint at : {QPoint(40, 2), QPoint(4, 30), QPoint(40, 61), QPoint(78, 40)})
        EXPECT_NEAR(picture.pixelColor(at).red(), red, 3) << at.x() << ',' << at.y();
    EXPECT_EQ(picture.pixelColor(40, 3).red(), 0);
    EXPECT_EQ(picture.pixelColor(5, 30).red(), 0);
}

TEST_F(LayoutPicture, TakesTheHostsColours)
{
    SKvGuiBasicSettings settings{0xFF102030u, 0xFFFF0000u, 0xFF808080u, {}};
    control->SetGuiBasicSettings(&settings);
    EXPECT_EQ(Picture().pixelColor(2, 40), QColor(0x10, 0x20, 0x30));
}

TEST_F(LayoutPicture, OnePixelOfTheHostsIsSeenToChange)
{
    Picture();
    layouts->corner = 0xFFFF0000u;
    control->NotifyUnitChanged(1);
    const QImage picture = control->grab().toImage();
    EXPECT_EQ(picture.pixelColor(154, 58), QColor(255, 0, 0));
    EXPECT_EQ(picture.pixelColor(74, 58), QColor(0, 255, 0)) << "nobody spoke of this one";
    layouts->corner.reset();
    EXPECT_EQ(Picture().pixelColor(154, 58), QColor(0, 255, 0));
}

TEST_F(LayoutPicture, IsTheSameFromTheCacheAndAtEveryPlace)
{
    layouts->isLongName = true;
    const QImage fresh = Picture();
    EXPECT_EQ(control->grab().toImage(), fresh);
    Run("W-240");
    const QImage moved = control->grab().toImage();
    control->Paint();
    EXPECT_EQ(control->grab().toImage(), moved);
}

} // namespace
} // namespace kv::test
