// How the ease curve window looks, also to a screen reader.
#include "tests/curves/EaseWindowFixture.h"

#include <QAccessible>

#include <algorithm>
#include <utility>

namespace {

TEST_F(EaseWindow, DrawsOnWholeDevicePixels)
{
    window->clearFocus();
    struct Row
    {
        const char* name;
        int x, y; // in device pixels
        QRgb colour;
    };
    const auto check = [&](double ratio, const std::vector<Row>& rows) {
        const QImage picture = Picture(ratio);
        for (const Row& row : rows)
            EXPECT_EQ(QString::number(picture.pixel(row.x, row.y), 16), QString::number(row.colour, 16))
                << row.name << " at " << ratio;
    };
    // Grid lines stand at 0.2, 0.4 … of 0 … 2: every 20 pixels.
    check(1, {{"ground", 469, 239, 0xFF505050},
              {"plot", 60, 25, 0xFF646464},
              {"its last pixel", 449, 30, 0xFF646464},
              {"beyond it", 450, 40, 0xFF505050},
              {"grid at 1.4", 60, 80, 0xFF808080},
              {"above", 60, 79, 0xFF646464},
              {"below", 60, 81, 0xFF646464},
              {"axis", 50, 150, 0xFFA0A0A0},
              {"axis", 250, 220, 0xFFA0A0A0},
              {"curve", 249, 120, 0xFFFF0000},
              {"key", 449, 20, 0xFFFFFFFF},
              {"handle", 150, 220, 0xFF00FF00},
              {"tangent", 100, 220, 0xFFFFFFFF},
              {"not blurred", 100, 221, 0xFF505050}});
    check(1.5, {{"grid at 1.3", 90, 120, 0xFF808080},
                {"above", 90, 119, 0xFF646464},
                {"below", 90, 121, 0xFF646464},
                {"axis", 75, 225, 0xFFA0A0A0},
                {"curve", 375, 180, 0xFFFF0000},
                {"handle", 225, 330, 0xFF00FF00}});
    check(2, {{"grid at 1.4", 120, 160, 0xFF808080},
              {"second row", 120, 161, 0xFF808080},
              {"below", 120, 162, 0xFF646464}});
    Run("W-250"); // 2.5 … -0.5: the range's edges come into view
    check(1, {{"maximum", 100, 53, 0xFFA0A0A0}, {"minimum", 300, 186, 0xFFA0A0A0}});
    Run("KHome L450,20 M450,120");
    check(1, {{"box beside the key", 467, 96, 0xFFC8C8C8}, {"key", 449, 120, 0xFFFFFFFF}});
    Run("l");
    window->setFocus();
    check(1, {{"focus", 0, 100, 0xFFFFA500}, {"selected", 443, 120, 0xFFFFA500}});
}

TEST_F(EaseWindow, DrawsToThePixelAlsoFarFromNothing)
{
    keepsCurve = true;
    host.minimum = 1e8 + 0.5;
    host.maximum = 1e8 + 1.5;
    for (int i = 0; i < 8; i += 2) {
        host.given[i] = 36000.02 + (kCurve[i] - 10) * 0.002;
        host.given[i + 1] = host.minimum + kCurve[i + 1] / 2;
    }
    Renew();
    const QImage picture = Picture();
    EXPECT_EQ(picture.pixel(50, 220), 0xFFFFFFFFu);
    EXPECT_EQ(picture.pixel(150, 220), 0xFF00FF00u);
    EXPECT_EQ(picture.pixel(249, 120), 0xFFFF0000u);
    EXPECT_EQ(picture.pixel(449, 20), 0xFFFFFFFFu);
}

TEST_F(EaseWindow, FarHandlesStayOutOfTheMargins)
{
    keepsCurve = true;
    host.maximum = 1;
    for (const double far : {1e3, 1e12, 3e38}) {
        const double curves[][8] = {{0, 0, 0.5, far, 0.5, -far, 1, 1},
                                    {0, 0, -far, 0.5, far, 0.5, 1, 1},
                                    {0, -far, 0.25, -far, 0.75, far, 1, far}};
        for (const auto& curve : curves) {
            std::copy_n(curve, 8, host.given);
            Renew();
            window->ShowSpeed(1);
            window->ShowInitialCurve(1);
            window->SetFrameLength(0.1);
            const QImage picture = Picture();
            int reds[2] = {}; // outside the plot, within it
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x) {
                    const QRgb pixel = picture.pixel(x, y);
                    if (qRed(pixel) >= 200 && qGreen(pixel) <= 60)
                        ++reds[QRect(50, 20, 400, 200).contains(x, y)];
                }
            }
            EXPECT_EQ(reds[0], 0) << far;
            EXPECT_TRUE(reds[1] > 150 || far > 1e15) << far; // beyond, only rounding is left of the curve
        }
    }
}

TEST_F(EaseWindow, ShowsFramesSpeedAndTheInitialCurve)
{
    Run("1"); // a straight line from (50, 220) to (450, 20)
    const auto at = [&](int x, int y) { return Picture().pixel(x, y); };
    const QRgb plain[] = {at(250, 120), at(275, 107), at(253, 153), at(140, 188)};
    window->SetFrameLength(0.1);
    EXPECT_EQ(at(250, 120), plain[0]) << "two pixels apart";
    window->SetFrameLength(2.5);
    EXPECT_NE(at(250, 120), plain[0]) << "fifty pixels apart";
    EXPECT_EQ(at(275, 107), plain[1]) << "between two";
    window->ShowSpeed(1);
    EXPECT_NE(at(253, 153), plain[2]) << "the average at a third";
    window->ShowInitialCurve(1);
    EXPECT_NE(at(140, 188), plain[3]);
    window->SetFrameLength(0);
    window->ShowSpeed(0);
    window->ShowInitialCurve(0);
    EXPECT_EQ(at(250, 120), plain[0]);
    EXPECT_EQ(at(253, 153), plain[2]);
    EXPECT_EQ(at(140, 188), plain[3]);
}

TEST_F(EaseWindow, HandlesAreAccessible)
{
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(window);
    ASSERT_EQ(access->childCount(), 4);
    EXPECT_EQ(access->text(QAccessible::Name), QStringLiteral("Ease curve"));
    QAccessibleInterface* out = access->child(1);
    EXPECT_EQ(out->text(QAccessible::Name), QStringLiteral("Start key's handle"));
    EXPECT_EQ(out->text(QAccessible::Description), QStringLiteral("Time 15.00, value 0.00"));
    EXPECT_EQ(out->rect(), QRect(window->mapToGlobal(QPoint(146, 216)), QSize(8, 8)));
    out->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(out->state().focused && out->state().selected);
    EXPECT_EQ(access->focusChild(), out);
    out->valueInterface()->setCurrentValue(0.5);
    EXPECT_EQ(Points(), "10,0 15,0.5 25,2 30,2");
    out->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    EXPECT_EQ(Points(), "10,0 15,0.52 25,2 30,2");
    EXPECT_EQ(std::exchange(host.heard, {}), "set4 hist set4 hist");
    CRect area;
    EXPECT_EQ(window->ToolTipAt({150, 168}, area),
              QStringLiteral("Start key's handle: time 15.00, value 0.52"));
    EXPECT_EQ(window->ToolTipAt({250, 30}, area), QString());

    host.lock = 1;
    window->Load();
    EXPECT_EQ(access->child(0)->actionInterface(), nullptr) << "a locked key";
    EXPECT_EQ(access->child(1)->valueInterface()->minimumValue().toDouble(), 0);
    host.maximum = -1;
    window->Load();
    EXPECT_EQ(access->childCount(), 0);
    host.heard.clear();
}

} // namespace
