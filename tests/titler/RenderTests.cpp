#include "FrameExport.h"
#include "GradientTable.h"
#include "TitleRenderer.h"

#include <QTemporaryDir>

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
    project.title.stops = {{kRed, 0.0f, 0.5f}, {kBlue, 1.0f, 0.5f}};
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

struct Direction
{
    double angle;
    double offset;
};

TEST(TitleRenderer, RunsTheGradientAcrossTheText)
{
    for (const Direction d : {Direction{0, 0}, Direction{90, 0}, Direction{180, 0}, Direction{0, 0.25}}) {
        Project project = BlockProject();
        project.title.gradientAngle = d.angle;
        project.title[Property::GradientOffset].value = d.offset;
        const QRectF box = TitlePath(project.title, DisplaySize(project.video)).boundingRect();
        const QImage image = TitleRenderer().Render(project, 0, {640, 360});
        for (const double part : {0.1, 0.5, 0.9}) {
            const QPointF at(box.left() + box.width() * part, box.top() + box.height() * part);
            const QPoint pixel = at.toPoint();
            const double along = d.angle == 90 ? (pixel.y() + 0.5 - box.top()) / box.height()
                                               : (pixel.x() + 0.5 - box.left()) / box.width();
            const double t = std::clamp((d.angle == 180 ? 1 - along : along) - d.offset, 0.0, 1.0);
            ExpectNear(image.pixel(pixel),
                       qRgb(int(std::lround(255 * (1 - t))), 0, int(std::lround(255 * t))));
        }
        EXPECT_EQ(image.pixel(2, 2), 0u);
    }
}

TEST(TitleRenderer, IsTheSameForEveryOrderOfCalls)
{
    TitleRenderer kept;
    Project project = NewProject();
    project.title.text = "Title";
    kept.Render(project, 0, {320, 180});
    project.title.stops.front().colour = kBlue;
    EXPECT_EQ(kept.Render(project, 0, {320, 180}), TitleRenderer().Render(project, 0, {320, 180}));
    project.title.text = "Other";
    EXPECT_EQ(kept.Render(project, 0, {320, 180}), TitleRenderer().Render(project, 0, {320, 180}));
    project.video.aspectRatio = kKvAspect4x3;
    EXPECT_EQ(kept.Render(project, 0, {320, 180}), TitleRenderer().Render(project, 0, {320, 180}));
    project.title.text.clear();
    EXPECT_EQ(kept.Render(project, 0, {320, 180}).pixel(160, 90), 0u);
}

TEST(FrameExport, WritesTheFrameWithItsTransparency)
{
    QTemporaryDir folder;
    Project project = BlockProject();
    project.title.stops = {{0x80FF0000, 0.0f, 0.5f}, {0x80FF0000, 1.0f, 0.5f}};
    const QString file = folder.filePath("frame.png");
    ASSERT_EQ(ExportFrame(project, file, 0), "");
    const QImage image(file);
    EXPECT_EQ(image.size(), QSize(640, 360));
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    ExpectNear(image.pixel(320, 180), 0x80FF0000);
    EXPECT_NE(ExportFrame(project, folder.filePath("missing/frame.png"), 0), "");
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
