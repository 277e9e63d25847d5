#include "KvBezierCurve2D.h"
#include "KvFileNaming.h"
#include "KvQt.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QLoggingCategory>

#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace {

using Keys = std::vector<SKvCGGradientKey>;

void ExpectSame(const Keys& a, const Keys& b)
{
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i].colour, b[i].colour) << i;
        EXPECT_FLOAT_EQ(a[i].position, b[i].position) << i;
        if (i > 0) {
            EXPECT_NEAR(a[i].midPoint, b[i].midPoint, 1e-5) << i;
        }
    }
}

// What a painter makes of the toolkit's gradient is what the control shows.
TEST(KvQtGradient, ComesBackAndLooksTheSame)
{
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        Keys keys(2 + random() % 8);
        for (std::size_t i = 0; i < keys.size(); ++i)
            keys[i] = {static_cast<DWORD>(random()),
                       static_cast<float>(i) / static_cast<float>(keys.size() - 1),
                       0.05f + 0.009f * static_cast<float>(random() % 100)};
        UINT loss = 99;
        ExpectSame(KvFromGradientStops(KvToGradientStops(keys), &loss), keys);
        EXPECT_EQ(loss, 0u);
        ExpectSame(KvFromGradient(KvToLinearGradient(keys, QRectF(0, 0, 100, 10)), &loss), keys);
        EXPECT_EQ(loss, 0u);
    }
    // Hard edges, a stop beside its neighbours' mix, unsorted stops.
    const Keys hard{{0xFF000000, 0, 0.5f},
                    {0xFFFF0000, 0.5f, 0.5f},
                    {0xFF00FF00, 0.5f, 0.5f},
                    {0xFF808080, 0.6f, 0.5f},
                    {0xFFFFFFFF, 1, 0.5f}};
    ExpectSame(KvFromGradientStops(KvToGradientStops(hard)), hard);
    ExpectSame(KvFromGradientStops(KvToGradientStops({{2, 1, 0.5f}, {1, 0, 0.5f}})),
               {{1, 0, 0.5f}, {2, 1, 0.5f}});
    EXPECT_TRUE(KvFromGradientStops({}).empty());
}

TEST(KvQtGradient, SaysWhatIsLost)
{
    UINT loss = 0;
    QRadialGradient radial(0, 0, 10);
    radial.setSpread(QGradient::ReflectSpread);
    radial.setStops({{0, Qt::transparent}, {1, Qt::red}});
    EXPECT_EQ(KvFromGradient(radial, &loss).size(), 2u);
    EXPECT_EQ(loss, UINT{kKvLossShape | kKvLossSpread | kKvLossPremultiplied});
    EXPECT_EQ(KvFromGradient(QLinearGradient(0, 0, 5, 5), &loss).size(), 2u);
    EXPECT_EQ(loss, UINT{kKvLossDirection});
    QGradientStops many;
    for (int i = 0; i < 300; ++i)
        many << QGradientStop(i / 299.0, i % 2 ? Qt::red : Qt::blue);
    EXPECT_EQ(KvFromGradientStops(many, &loss).size(), 255u);
    EXPECT_EQ(loss, UINT{kKvLossStops});
}

TEST(KvQtColour, KeepsWordsAndSaysWhatIsLost)
{
    UINT loss = 1;
    for (const DWORD word : {0u, 0x80123456u, 0xFFFFFFFFu})
        EXPECT_EQ(KvFromQColor(KvToQColor(word), &loss), word);
    EXPECT_EQ(loss, 0u);
    EXPECT_EQ(KvFromQColor(QColor::fromHsv(120, 255, 255), &loss), 0xFF00FF00u);
    EXPECT_EQ(loss, 0u);
    KvFromQColor(QColor::fromRgbF(0.501f, 0, 0), &loss);
    EXPECT_EQ(loss, UINT{kKvLossPrecision});
    EXPECT_EQ(KvFromQColor(QColor::fromRgbF(2, 0, 0), &loss) | 0xFF000000u, 0xFFFF0000u);
    EXPECT_TRUE(loss & kKvLossRange);
    EXPECT_EQ(KvFromQColor(QColor(), &loss), 0u);
    EXPECT_EQ(loss, UINT{kKvLossInvalid});
}

TEST(KvQtEase, HasTheSameShapeOnBothSides)
{
    const SKvParamEaseData ease{kKvEaseDrawn, 0.4, 20, 0.3, -10, 10, 100, 60, 300, 0, 400, 0};
    UINT loss = 1;
    const QEasingCurve curve = KvToEasingCurve(ease, &loss);
    EXPECT_EQ(loss, 0u);
    const double points[8] = {0, 0, 0.3, -0.05, 0.6, 1.1, 1, 1};
    const KvBezierEase exact(points);
    for (double x = 0; x <= 1; x += 0.01)
        EXPECT_NEAR(curve.valueForProgress(x), exact.Value(x), 1e-3) << x;
    SKvParamEaseData back = ease;
    back.inTangentX = back.inTangentY = back.outTangentX = back.outTangentY = 0;
    ASSERT_EQ(KvFromEasingCurve(curve, back, &loss), 1);
    EXPECT_EQ(loss, 0u);
    EXPECT_NEAR(back.inTangentX, 0.4, 1e-12);
    EXPECT_NEAR(back.inTangentY, 20, 1e-9);
    EXPECT_NEAR(back.outTangentX, 0.3, 1e-12);
    EXPECT_NEAR(back.outTangentY, -10, 1e-9);
    EXPECT_EQ(back.startX, 10);
}

TEST(KvQtEase, TakesWhatIsOneCubicAndNothingElse)
{
    SKvParamEaseData ease{kKvEaseDrawn, 0, 0, 0, 0, 0, 0, 1, 1, 0, 1, 0};
    for (const auto type : {QEasingCurve::Linear, QEasingCurve::InQuad, QEasingCurve::OutQuad,
                            QEasingCurve::InCubic, QEasingCurve::OutCubic}) {
        ASSERT_EQ(KvFromEasingCurve(QEasingCurve(type), ease), 1) << type;
        const double points[8] = {
            0, 0, ease.outTangentX, ease.outTangentY, 1 - ease.inTangentX, 1 + ease.inTangentY, 1, 1};
        const KvBezierEase exact(points);
        for (double x = 0; x <= 1; x += 0.05)
            EXPECT_NEAR(QEasingCurve(type).valueForProgress(x), exact.Value(x), 1e-9) << type << " " << x;
    }
    EXPECT_EQ(KvToEasingCurve({kKvEaseLinear, 0, 0, 0, 0, 0, 0, 1, 1, 0, 1, 0}).type(), QEasingCurve::Linear);
    const SKvParamEaseData before = ease;
    UINT loss = 0;
    QEasingCurve two(QEasingCurve::BezierSpline);
    two.addCubicBezierSegment({0.1, 0}, {0.4, 0.5}, {0.5, 0.5});
    two.addCubicBezierSegment({0.6, 0.5}, {0.9, 1}, {1, 1});
    for (const QEasingCurve& other :
         {QEasingCurve(QEasingCurve::OutBounce), QEasingCurve(QEasingCurve::InOutQuad), two}) {
        EXPECT_EQ(KvFromEasingCurve(other, ease, &loss), 0);
        EXPECT_EQ(loss, UINT{kKvLossCurve});
        EXPECT_EQ(ease.outTangentY, before.outTangentY);
    }
    SKvParamEaseData flat{kKvEaseDrawn, 0, 0, 0, 0, 0, 5, 1, 5, 0, 10, 0};
    EXPECT_EQ(KvFromEasingCurve(QEasingCurve(QEasingCurve::InQuad), flat, &loss), 1);
    EXPECT_EQ(loss, UINT{kKvLossHeight});
}

TEST(KvQtFormat, RatesAndSizesAreExact)
{
    for (int i = 0; i < 8; ++i) {
        const SKvRational ratio = KvToRational(static_cast<EKvFrameRate>(i));
        EKvFrameRate rate = kKvFrameRate24;
        ASSERT_EQ(KvFromRational({ratio.numerator * 3, ratio.denominator * 3}, rate), 1);
        EXPECT_EQ(rate, i);
    }
    EXPECT_EQ(KvToRational(kKvFrameRate29_97).numerator, 30000);
    EKvFrameRate rate = kKvFrameRate25;
    UINT loss = 0;
    for (const SKvRational none :
         {SKvRational{2997, 100}, SKvRational{0, 0}, SKvRational{25, 0}, SKvRational{0, 1}})
        EXPECT_EQ(KvFromRational(none, rate, &loss), 0);
    EXPECT_EQ(rate, kKvFrameRate25);
    EXPECT_EQ(loss, UINT{kKvLossRate});
    EXPECT_EQ(KvToRational(static_cast<EKvFrameRate>(-1)).numerator, 0);
    SKvVideoResolution video{kKvAspect16x9, kKvFrameRate25, kKvScanProgressive, 1920, 1080};
    EXPECT_EQ(KvToQSize(video), QSize(1920, 1080));
    EXPECT_EQ(KvFromQSize({}, video), 0);
    EXPECT_EQ(KvFromQSize({720, 576}, video), 1);
    EXPECT_EQ(video.width, 720);
    EXPECT_EQ(video.aspectRatio, kKvAspect16x9);
}

TEST(KvQtGroups, BecomeJson)
{
    IKvFileNamingRuleCollection* rules = nullptr;
    ASSERT_TRUE(KvLoadFileNamingCollection(L"/nowhere/there-is-none.ini", &rules, nullptr));
    IKvFileNamingMatcher* matcher = nullptr;
    ASSERT_TRUE(KvCreateFileNamingMatcher(&matcher));
    matcher->Prepare(L"Fähre.mxf", kKvNamingClassVideoAudio, rules);
    matcher->AddFile(L"Fähre_A1.wav");
    matcher->AddFile(L"Fähre_A2.wav");
    unsigned int count = 0;
    matcher->BuildGroups(&count);
    const QJsonArray groups = KvGroupsToJson(*matcher, count);
    ASSERT_EQ(groups.size(), static_cast<qsizetype>(count));
    ASSERT_GT(count, 0u);
    EXPECT_EQ(groups[0].toObject()["name"].toString(), QStringLiteral("Fähre.mxf"));
    EXPECT_TRUE(groups[0].toObject()["files"].toArray().contains(QStringLiteral("Fähre_A1.wav")));
    matcher->Release();
    rules->Release();
}

TEST(KvQtMessages, ComeInFromAllThreadsWithTypeLevelAndCategory)
{
    static int heard = 0;
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++heard; });
    QWidget parent;
    CKvAppLogListCtrl list;
    list.Create(CRect(0, 0, 300, 200), WS_CHILD, &parent, 1);
    list.Initialize(1);
    {
        KvQtMessageLog log(list);
        KvQtMessageLog second(list);
        second.SetLeast(QtCriticalMsg);
        qDebug("one");
        static const QLoggingCategory media("media");
        qCCritical(media) << "two";
        std::thread([] { qWarning("three"); }).join();
    }
    qWarning("nobody hears this");
    EXPECT_EQ(heard, 4) << "the handler before hears everything";
    qInstallMessageHandler(before);
    EXPECT_EQ(list.GetTypeCount(0), 1);
    EXPECT_EQ(list.GetTypeCount(2), 1);
    EXPECT_EQ(list.GetTypeCount(3), 2);
    const int line = list.FindItem(L"media: two", 3);
    ASSERT_GE(line, 0);
    EXPECT_EQ(list.GetItemText(line, 1), L"03");
}

} // namespace
