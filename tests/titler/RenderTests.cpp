#include "title/GradientTable.h"
#include "title/TitleRenderer.h"

#include <cmath>
#include <gtest/gtest.h>

namespace titler {
namespace {

constexpr DWORD kRed = 0xFFFF0000;
constexpr DWORD kBlue = 0xFF0000FF;

Project BlockProject()
{
    Project project = NewProject();
    project.video.width = 640;
    project.video.height = 360;
    project.title.text = QString(4, QChar(0x2588)); // four full blocks: one rectangle
    project.title.fontFamily = "DejaVu Sans";
    project.title.bold = false;
    project.title.fontSize = 40;
    project.title.fill.stops = {{kRed, 0.0f, 0.5f}, {kBlue, 1.0f, 0.5f}};
    return project;
}

void ExpectNear(QRgb actual, QRgb expected, int tolerance = 2)
{
    EXPECT_NEAR(qAlpha(actual), qAlpha(expected), tolerance);
    EXPECT_NEAR(qRed(actual), qRed(expected), tolerance);
    EXPECT_NEAR(qGreen(actual), qGreen(expected), tolerance);
    EXPECT_NEAR(qBlue(actual), qBlue(expected), tolerance);
}

struct TableCase
{
    const char* name;
    GradientStops stops;
    int place; ///< of 0 to 1000
    QRgb colour;
};

void PrintTo(const TableCase& c, std::ostream* out)
{
    *out << c.name;
}

class Table : public testing::TestWithParam<TableCase>
{
};

TEST_P(Table, HoldsTheColourOfItsPlace)
{
    const TableCase& c = GetParam();
    ExpectNear(GradientTable(c.stops, 1001)[static_cast<std::size_t>(c.place)], c.colour, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Gradient, Table,
    testing::Values(
        TableCase{"BeforeFirst", {{kRed, 0.5f, 0.5f}, {kBlue, 1.0f, 0.5f}}, 100, kRed},
        TableCase{"AfterLast", {{kRed, 0.0f, 0.5f}, {kBlue, 0.5f, 0.5f}}, 900, kBlue},
        TableCase{"MidPointMixesHalf", {{kRed, 0.0f, 0.5f}, {kBlue, 1.0f, 0.25f}}, 250, 0xFF7F007F},
        TableCase{"BeyondMidPoint", {{kRed, 0.0f, 0.5f}, {kBlue, 1.0f, 0.25f}}, 625, 0xFF3F00BF},
        TableCase{"HardEdgeLeft", {{kRed, 0.0f, 0.5f}, {kRed, 0.5f, 0.5f}, {kBlue, 0.5f, 0.5f}}, 499, kRed},
        TableCase{"HardEdgeRight", {{kRed, 0.0f, 0.5f}, {kRed, 0.5f, 0.5f}, {kBlue, 0.5f, 0.5f}}, 500, kBlue},
        // Straight: half way the colour is the average, and only then it is premultiplied.
        TableCase{"Straight", {{0x00FF0000, 0.0f, 0.5f}, {kBlue, 1.0f, 0.5f}}, 500, 0x7F40003F}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TitleRenderer, IsTheSameForEveryOrderOfCalls)
{
    TitleRenderer kept;
    Project project = NewProject();
    project.title.text = "Title";
    kept.Render(project, 0, {320, 180});
    project.title.fill.stops.front().colour = kBlue;
    EXPECT_EQ(kept.Render(project, 0, {320, 180}), TitleRenderer().Render(project, 0, {320, 180}));
    project.title.text = "Other";
    EXPECT_EQ(kept.Render(project, 0, {320, 180}), TitleRenderer().Render(project, 0, {320, 180}));
    project.video.aspectRatio = kKvAspect4x3;
    EXPECT_EQ(kept.Render(project, 0, {320, 180}), TitleRenderer().Render(project, 0, {320, 180}));
    project.title[Property::X].keys = {{0, 0}, {9, 0}, {20, 30}};
    project.title[Property::Opacity].keys = {{0, 0}, {9, 90}};
    for (const double frame : {5.0, 5.0, 3.0, 12.5, 20.0, 0.0})
        EXPECT_EQ(kept.Render(project, frame, {320, 180}),
                  TitleRenderer().Render(project, frame, {320, 180}));
    project.title[Property::Opacity].keys.clear();
    project.title.text.clear();
    EXPECT_EQ(kept.Render(project, 0, {320, 180}).pixel(160, 90), 0u);
}

struct Motion
{
    const char* name;
    double x, y, scale, rotation, opacity, offset;
    double angle = 0; ///< of the gradient
};

void PrintTo(const Motion& c, std::ostream* out)
{
    *out << c.name;
}

class MovedTitle : public testing::TestWithParam<Motion>
{
};

// Every pixel that is not next to an edge against the rectangle at rest, reckoned backwards.
TEST_P(MovedTitle, StandsWhereItsValuesPutIt)
{
    const Motion& m = GetParam();
    Project project = BlockProject();
    const QSizeF frame(640, 360);
    const QRectF box = TitlePath(project.title, frame).boundingRect();
    const double values[] = {m.x, m.y, m.scale, m.rotation, m.opacity, m.offset};
    for (std::size_t i = 0; i < kProperties; ++i)
        project.title.properties[i].keys = {{0, 2 * values[i] / 3}, {30, 4 * values[i] / 3}};
    const double radians = m.rotation / 180 * 3.14159265358979;
    const double scale = m.scale / 100;
    const double angle = m.angle / 180 * 3.14159265358979;
    const double length = box.width() * std::abs(std::cos(angle)) + box.height() * std::abs(std::sin(angle));
    project.title.fill.angle = m.angle;
    const QImage image = TitleRenderer().Render(project, 15, {640, 360});
    for (int y = 0; y < 360; y += 3)
        for (int x = 0; x < 640; x += 3) {
            const double right = x + 0.5 - box.center().x() - frame.width() * m.x / 100;
            const double down = y + 0.5 - box.center().y() - frame.height() * m.y / 100;
            const double u = (right * std::cos(radians) + down * std::sin(radians)) / scale;
            const double v = (down * std::cos(radians) - right * std::sin(radians)) / scale;
            const double inside =
                std::min(box.width() / 2 - std::abs(u), box.height() / 2 - std::abs(v)) * scale;
            const double along = (u * std::cos(angle) + v * std::sin(angle)) / length;
            const double t = std::clamp(0.5 + along - m.offset, 0.0, 1.0);
            const double full = 255 * m.opacity / 100;
            SCOPED_TRACE(testing::Message() << x << ", " << y);
            if (inside < -1)
                ASSERT_EQ(image.pixel(x, y), 0u);
            else if (inside > 1)
                ExpectNear(reinterpret_cast<const QRgb*>(image.constScanLine(y))[x],
                           qRgba(int(std::lround(full * (1 - t))), 0, int(std::lround(full * t)),
                                 int(std::lround(full))));
        }
}

INSTANTIATE_TEST_SUITE_P(
    TitleRenderer, MovedTitle,
    testing::Values(Motion{"Still", 0, 0, 100, 0, 100, 0}, Motion{"Downwards", 0, 0, 100, 0, 100, 0.25, 90},
                    Motion{"Backwards", 0, 0, 100, 0, 100, 0, 180}, Motion{"Moved", 12.5, -20, 100, 0, 75, 0},
                    Motion{"HalfOutside", 40, 30, 100, 0, 75, 0.3}, Motion{"Small", 0, 0, 30.5, 0, 75, 0},
                    Motion{"Large", -30, 10, 400, 20, 75, 0, -33}, Motion{"Turned", 0, 0, 75, 90, 75, -0.25},
                    Motion{"TurnedTwiceAndMore", 3, 5, 60, 750, 75, 0},
                    Motion{"Faint", 0, 0, 100, -15, 3, 0}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TitleRenderer, StandsExtremes)
{
    Project project = BlockProject();
    Title& title = project.title;
    title.text = QStringLiteral("W").repeated(kLongestText);
    title.fontSize = kLargestFont;
    for (const double scale : {0.0, 1e-9, 0.01, 1000.0})
        for (const double rotation : {0.0, 45.0, 3600.0})
            for (const QSize size : {QSize(1, 1), QSize(4000, 16), QSize(640, 360)}) {
                title[Property::Scale].value = scale;
                title[Property::Rotation].value = rotation;
                EXPECT_EQ(TitleRenderer().Render(project, 0, size).size(), size);
            }
    title = BlockProject().title;
    title[Property::Scale].value = 1000;
    EXPECT_EQ(qAlpha(TitleRenderer().Render(project, 0, {640, 360}).pixel(2, 357)), 255);
    EXPECT_TRUE(TitleRenderer().Render(project, 0, {600000000, 1}).isNull());
}

// A frame of 4:3 in wide pixels: the text keeps its shape on the screen, so it is narrower in the file.
TEST(TitleRenderer, ScalesToThePixelsOfTheFormat)
{
    Project project = BlockProject();
    project.video = {kKvAspect4x3, kKvFrameRate25, kKvScanUpperFirst, 720, 576};
    const QRectF box = TitlePath(project.title, DisplaySize(project.video)).boundingRect();
    const QImage image = TitleRenderer().Render(project, 0, {720, 576});
    const int first = static_cast<int>(std::lround(box.left() * 720 / 768));
    EXPECT_EQ(qAlpha(image.pixel(first - 2, 288)), 0);
    EXPECT_EQ(qAlpha(image.pixel(first + 2, 288)), 255);
}

} // namespace
} // namespace titler
