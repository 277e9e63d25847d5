#include "KvBezierCurve2D.h"
#include "KvFileNaming.h"
#include "KvQt.h"

#include <QJsonObject>

#include <cstring>
#include <gtest/gtest.h>

namespace {

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
    for (int i = 0; i < 1000; ++i) {
        const QColor colour = QColor::fromRgb(i * 7919 & 255, i * 104729 >> 3 & 255, i * 1299709 >> 5 & 255);
        for (const QColor::Spec spec : {QColor::Hsv, QColor::Hsl, QColor::Cmyk, QColor::ExtendedRgb}) {
            EXPECT_EQ(KvFromQColor(colour.convertTo(spec), &loss), colour.rgba());
            EXPECT_EQ(loss, 0u) << i << ' ' << spec;
        }
    }
    EXPECT_EQ(KvFromQColor(QColor::fromHsv(120, 0, 255), &loss), 0xFFFFFFFFu);
    EXPECT_EQ(loss, UINT{kKvLossPrecision}) << "white has no hue";
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
    QEasingCurve outside(QEasingCurve::BezierSpline);
    outside.addCubicBezierSegment({-0.1, 0}, {0.5, 1}, {1, 1});
    for (const QEasingCurve& other :
         {QEasingCurve(QEasingCurve::OutBounce), QEasingCurve(QEasingCurve::InOutQuad), two, outside}) {
        EXPECT_EQ(KvFromEasingCurve(other, ease, &loss), 0);
        EXPECT_EQ(loss, UINT{kKvLossCurve});
        EXPECT_EQ(ease.outTangentY, before.outTangentY);
    }
    SKvParamEaseData flat{kKvEaseDrawn, 0, 0, 0, 0, 0, 5, 1, 5, 0, 10, 0};
    EXPECT_EQ(KvFromEasingCurve(QEasingCurve(QEasingCurve::InQuad), flat, &loss), 1);
    EXPECT_EQ(loss, UINT{kKvLossHeight});
}

TEST(KvQtEase, IsTheSamePresetWhenItComesBack)
{
    for (const std::uint32_t kind : {kKvEaseLinear, kKvEaseSpeedUp, kKvEaseSpeedDown, kKvEaseSmooth}) {
        const SKvParamEaseData preset{kind, 0.3, -7, 0.1, 1.1, 10, 100, 60, 300, 0, 400, 0};
        UINT loss = 0;
        const QEasingCurve curve = KvToEasingCurve(preset, &loss);
        EXPECT_EQ(loss, UINT{kKvLossKind}) << kind;
        SKvParamEaseData back = preset;
        ASSERT_EQ(KvFromEasingCurve(curve, back, &loss), 1);
        EXPECT_EQ(loss, 0u);
        EXPECT_EQ(std::memcmp(&back, &preset, sizeof back), 0) << kind;
        back.inTangentX = 0.4;
        ASSERT_EQ(KvFromEasingCurve(curve, back), 1);
        EXPECT_EQ(back.kind, UINT{kKvEaseDrawn}) << "another segment knows nothing of presets";
        EXPECT_NEAR(back.inTangentX, 0.3, 1e-12);
    }
    SKvParamEaseData wide{kKvEaseDrawn, -0.1, 0, 1.1, 0, 10, 100, 60, 300, 0, 400, 0};
    const QEasingCurve curve = KvToEasingCurve(wide);
    EXPECT_EQ(KvFromEasingCurve(curve, wide), 1) << "its own, though no other segment takes it";
    SKvParamEaseData other{kKvEaseDrawn, 0.3, 0, 0.3, 0, 10, 100, 60, 300, 0, 400, 0};
    EXPECT_EQ(KvFromEasingCurve(curve, other), 0);
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

} // namespace
