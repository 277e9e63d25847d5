#include "edit/Document.h"
#include "time/Transport.h"
#include "title/CanvasView.h"
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
    for (const auto change :
         {+[](Project& p) {
              p.title.outline = {true, kRed, 2};
          },
          +[](Project& p) { p.title.shadow.on = true; }, +[](Project& p) { p.title.outline.width = 3; },
          +[](Project& p) { p.title.shadow.blur = 9; },
          +[](Project& p) { p.title.fill.kind = PaintKind::FourCorner; },
          +[](Project& p) { p.title.fill.corners[2] = kBlue; },
          +[](Project& p) { p.background.kind = PaintKind::Solid; },
          +[](Project& p) { p.background.colour = kBlue; },
          +[](Project& p) { p.title.outline.on = false; }}) {
        change(project);
        EXPECT_EQ(kept.RenderFrame(project, 20, {320, 180}),
                  TitleRenderer().RenderFrame(project, 20, {320, 180}));
    }
    project.title.shadow.on = false;
    const QRect part(100, 50, 90, 70);
    EXPECT_EQ(kept.Render(project, 20, {320, 180}, part), kept.Render(project, 20, {320, 180}).copy(part));
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

// Where a point of the block stands, from 0 to 1 across and down.
QPoint PixelOf(const Project& project, double across, double down)
{
    const QRectF box = TitlePath(project.title, {640, 360}).boundingRect();
    const QTransform motion = TitleMotion(ValuesAt(project.title.properties, 0), box, {640, 360});
    const QPointF at =
        motion.map(QPointF(box.left() + box.width() * across, box.top() + box.height() * down));
    return {int(std::floor(at.x())), int(std::floor(at.y()))};
}

QRgb PixelAt(const QImage& image, QPoint at)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(at.y()))[at.x()];
}

TEST(TitleRenderer, FillsWithOneOrFourColoursThatMoveWithTheText)
{
    Project project = BlockProject();
    Paint& fill = project.title.fill;
    fill.colour = 0x80FF8000;
    fill.corners = {kRed, kBlue, 0xFF00FF00, 0xFFFFFFFF};
    project.title[Property::Rotation].value = 90;
    project.title[Property::Scale].value = 70;
    fill.kind = PaintKind::Solid;
    ExpectNear(PixelAt(TitleRenderer().Render(project, 0, {640, 360}), PixelOf(project, 0.2, 0.7)),
               0x80804000, 1);
    fill.kind = PaintKind::FourCorner;
    QImage image = TitleRenderer().Render(project, 0, {640, 360});
    ExpectNear(PixelAt(image, PixelOf(project, 0.5, 0.5)), 0xFF7F7F7F);
    ExpectNear(PixelAt(image, PixelOf(project, 0.02, 0.02)), 0xFFFA0303, 4);
    ExpectNear(PixelAt(image, PixelOf(project, 0.98, 0.02)), 0xFF0303FA, 4);
    ExpectNear(PixelAt(image, PixelOf(project, 0.02, 0.98)), 0xFF03FA03, 4);
    ExpectNear(PixelAt(image, PixelOf(project, 0.25, 0.5)),
               0xFF7F7F40); // half way to the middle of the left side
    project.title[Property::Opacity].value = 50;
    image = TitleRenderer().Render(project, 0, {640, 360});
    ExpectNear(PixelAt(image, PixelOf(project, 0.25, 0.5)), 0x80404020);
}

// An outline of 18 pixels around a block whose side at rest is straight.
TEST(TitleRenderer, OutlinesTheOuterSideWithRoundJoins)
{
    Project project = BlockProject();
    project.title.fontSize = 20;
    project.title.fill.kind = PaintKind::Solid;
    project.title.fill.colour = 0x00FFFFFF;
    project.title.outline = {true, 0x80FF0000, 5};
    const QRect box = TitlePath(project.title, {640, 360}).boundingRect().toRect();
    const auto at = [&](QPoint corner, int right, int down) {
        return PixelAt(TitleRenderer().Render(project, 0, {640, 360}), corner + QPoint(right, down));
    };
    const QPoint middle(box.left(), box.center().y());
    EXPECT_EQ(at(middle, -21, 0), 0u);
    EXPECT_EQ(at(middle, -16, 0), qRgba(0x80, 0, 0, 0x80));
    EXPECT_EQ(at(middle, -2, 0), qRgba(0x80, 0, 0, 0x80));
    EXPECT_EQ(at(middle, 2, 0), 0u) << "the letters are empty";
    EXPECT_EQ(at(box.topLeft(), -11, -11), qRgba(0x80, 0, 0, 0x80));
    EXPECT_EQ(at(box.topLeft(), -15, -15), 0u) << "a corner is round";
    project.title[Property::Opacity].value = 50;
    EXPECT_EQ(at(middle, -16, 0), qRgba(0x40, 0, 0, 0x40));
    // Opaque, the two meet without a gap wherever the edge stands.
    project.title.outline.colour = kRed;
    project.title.fill.colour = kBlue;
    project.title[Property::Opacity].value = 100;
    project.title[Property::Rotation].value = 7;
    const QImage image = TitleRenderer().Render(project, 0, {640, 360});
    for (int x = PixelOf(project, 0, 0.5).x() - 14; x < PixelOf(project, 1, 0.5).x() + 14; ++x)
        ASSERT_EQ(qAlpha(image.pixel(x, image.height() / 2)), 255) << x;
}

TEST(TitleRenderer, CastsTheShadowUnderTheLetters)
{
    Project project = BlockProject();
    project.title.fontSize = 20;
    project.title.fill.kind = PaintKind::Solid;
    project.title.fill.colour = kBlue;
    project.title.shadow = {true, 0x80000000, 10, 5, 0}; // 36 pixels to the right, 18 down
    const QRect box = TitlePath(project.title, {640, 360}).boundingRect().toRect();
    const auto at = [&](int x, int y) {
        return PixelAt(TitleRenderer().Render(project, 0, {640, 360}), QPoint(x, y));
    };
    EXPECT_EQ(at(box.right() + 33, box.bottom() + 15), 0x80000000u);
    EXPECT_EQ(at(box.right() + 40, box.center().y()), 0u);
    EXPECT_EQ(at(box.left() + 2, box.bottom() + 5), 0u);
    EXPECT_EQ(at(box.center().x(), box.center().y()), kBlue);
    for (const double reach : {14.4, 36.0}) { // sharp, and reckoned at a fraction of the size
        project.title.shadow.blur = reach / 3.6;
        const int edge = box.left() + box.width() + 36;
        const int y = box.center().y() + 18;
        EXPECT_NEAR((qAlpha(at(edge - 1, y)) + qAlpha(at(edge, y))) / 2, 64, 8) << reach;
        EXPECT_EQ(qAlpha(at(edge + int(reach) + 3, y)), 0) << reach;
        EXPECT_GT(qAlpha(at(edge + int(reach) / 2, y)), 2) << reach;
        EXPECT_LT(qAlpha(at(edge + int(reach) / 2, y)), 32) << reach;
    }
    project.title.shadow.blur = 0;
    project.title[Property::Opacity].value = 50;
    EXPECT_EQ(at(box.right() + 33, box.bottom() + 15), 0x40000000u);
    project.title[Property::Rotation].value = 180;
    EXPECT_EQ(at(box.left() - 33, box.top() - 15), 0x40000000u) << "turns with the text";
    project.title[Property::Rotation].value = 0;
    project.title[Property::X].value =
        -100.0 * (box.right() + 10) / 640; // the text is outside, the shadow comes in
    EXPECT_EQ(at(10, box.center().y() + 18), 0x40000000u);
}

TEST(Coverage, BlurSpreadsAsFarAsItSays)
{
    for (const QSize reach : {QSize(0, 0), QSize(1, 0), QSize(2, 5), QSize(16, 9)}) {
        QImage image(61, 41, QImage::Format_Grayscale8);
        image.fill(0);
        for (int y = 18; y <= 22; ++y)
            std::fill_n(image.scanLine(y) + 28, 5, uchar(255));
        ASSERT_TRUE(Blur(image, reach));
        const QRect within =
            QRect(28, 18, 5, 5).adjusted(-reach.width(), -reach.height(), reach.width(), reach.height());
        double sum = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const int covered = image.constScanLine(y)[x];
                sum += covered;
                ASSERT_TRUE(covered == 0 || within.contains(x, y)) << x << ", " << y;
                ASSERT_EQ(covered, image.constScanLine(40 - y)[60 - x]) << "to both sides alike";
            }
        EXPECT_NEAR(sum, 25 * 255, 25 * 255 * 0.03 + 400) << reach.width();
    }
}

// A wide blur is reckoned smaller; the shape shows no trace of that.
TEST(Coverage, WideBlurIsAsThePlainOne)
{
    QPainterPath circle;
    circle.addEllipse(QPointF(201.3, 148.7), 60, 60);
    const QRect frame(0, 0, 400, 300);
    const std::optional<Coverage> fast = BlurredCoverage({circle}, {}, frame, {80, 60});
    ASSERT_TRUE(fast);
    QImage plain = CoverageOf({circle}, {}, frame);
    Blur(plain, {80, 60});
    EXPECT_TRUE(frame.contains(fast->area));
    for (int y = 0; y < fast->area.height(); ++y)
        for (int x = 0; x < fast->area.width(); ++x)
            ASSERT_NEAR(fast->alpha.constScanLine(y)[x],
                        plain.constScanLine(fast->area.top() + y)[fast->area.left() + x], 4)
                << x << ", " << y;
}

struct BackgroundCase
{
    const char* name;
    Paint paint;
    QPoint at; ///< of 640 × 360
    QRgb colour;
};

void PrintTo(const BackgroundCase& c, std::ostream* out)
{
    *out << c.name;
}

class Backgrounds : public testing::TestWithParam<BackgroundCase>
{
};

TEST_P(Backgrounds, AreExportedAndOnTheCanvas)
{
    const BackgroundCase& c = GetParam();
    Document document;
    Transport transport(document);
    CanvasView canvas(document, transport);
    canvas.resize(688, 408); // the frame in its own size
    canvas.ShowSafeAreas(false);
    canvas.show();
    const QPoint place = canvas.FrameRect().topLeft().toPoint() + c.at;
    document.BeginRun("");
    document.UpdateRun([&](Project& project) {
        project = BlockProject();
        project.title.text.clear();
    });
    const QColor check = canvas.viewport()->grab().toImage().pixelColor(place);
    document.UpdateRun([&](Project& project) { project.background = c.paint; });
    const QImage frame = TitleRenderer().RenderFrame(document.Current(), 0, {640, 360});
    ExpectNear(PixelAt(frame, c.at), c.colour);
    EXPECT_EQ(frame.hasAlphaChannel(), qAlpha(c.colour) < 255);
    const int rest = 255 - qAlpha(c.colour);
    const auto over = [&](int channel, int under) { return channel + under * rest / 255; };
    ExpectNear(canvas.viewport()->grab().toImage().pixel(place),
               qRgb(over(qRed(c.colour), check.red()), over(qGreen(c.colour), check.green()),
                    over(qBlue(c.colour), check.blue())),
               3);
}

Paint Background(PaintKind kind, double angle = 0)
{
    return {
        kind, 0x80804020, {{kRed, 0, 0.5f}, {kBlue, 1, 0.5f}}, angle, {kRed, kBlue, 0xFF00FF00, 0xFFFFFFFF}};
}

// On the diagonal a gradient across the corner is as long as both sides' shares of its direction.
INSTANTIATE_TEST_SUITE_P(
    TitleRenderer, Backgrounds,
    testing::Values(BackgroundCase{"None", {PaintKind::None}, {100, 100}, 0},
                    BackgroundCase{"Translucent", Background(PaintKind::Solid), {77, 55}, 0x80402010},
                    BackgroundCase{"Across", Background(PaintKind::Gradient), {160, 300}, 0xFFBF003F},
                    BackgroundCase{"Down", Background(PaintKind::Gradient, 90), {600, 90}, 0xFFBF003F},
                    BackgroundCase{"Diagonal", Background(PaintKind::Gradient, 45), {320, 80}, 0xFF990066},
                    BackgroundCase{"CornersLeft", Background(PaintKind::FourCorner), {160, 180}, 0xFF7F7F40},
                    BackgroundCase{"CornersTop", Background(PaintKind::FourCorner), {320, 0}, 0xFF7F007F}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TitleRenderer, StandsExtremes)
{
    Project project = BlockProject();
    Title& title = project.title;
    title.fill.kind = PaintKind::FourCorner;
    title.shadow = {true, kRed, -20, 20, kWidestBlur};
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
    title.outline = {true, kRed, kWidestOutline};
    title.shadow = {true, kRed, 0, 0, kWidestBlur};
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
