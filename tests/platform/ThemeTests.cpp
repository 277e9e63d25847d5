// Both built-in skins: what is written can be read, what is drawn can be seen.
#include "KvAppLogListCtrl.h"
#include "KvFindReplaceTxtDlg.h"
#include "KvGuiRes.h"
#include "KvParamEdit.h"
#include "KvScroll.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

constexpr double kLegible = 4.5;
constexpr double kVisible = 3;         // of a picture
constexpr double kDisabledLegible = 2; // no rule asks for more

double Luminance(const QColor& colour)
{
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& a, const QColor& b)
{
    const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor Colour(const QString& key)
{
    DWORD colour = 0;
    EXPECT_EQ(KvGuiRes::LoadColor(KvFromQString(key).c_str(), colour), 1) << qPrintable(key);
    return QColor::fromRgba(colour);
}

// Of grounds that lie over one another, the lowest first.
QColor Ground(const QString& keys)
{
    QImage pixel(1, 1, QImage::Format_ARGB32);
    QPainter painter(&pixel);
    for (const QString& key : keys.split(u'+'))
        painter.fillRect(0, 0, 1, 1, Colour(key));
    return pixel.pixelColor(0, 0);
}

QStringList Names(const QString& ini, const char* section)
{
    QFile file(ini);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(ini);
    QStringList names;
    QString current;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (line.startsWith(u'['))
            current = line.mid(1, line.size() - 2);
        else if (current == QLatin1String(section) && !line.startsWith(u';') && line.contains(u'='))
            names << line.section(u'=', 0, 0);
    }
    EXPECT_FALSE(names.isEmpty()) << section;
    return names;
}

constexpr const char* kBuiltIn = ":/kv/skin/skin.ini";
constexpr const char* kLight = ":/kv/skin/light/skin.ini";

struct Pair
{
    const char* text;
    const char* ground;
};

// Every text that a painter writes in a theme's colour, with what it is written on.
constexpr Pair kPairs[] = {
    {"keWindowTextColor", "keWindowBKColor"},
    {"keWindowTextColor", "keParamEditBKColor"},
    {"keWindowTextColor", "keReportListBKColor"},
    {"keWindowTextColor", "keReportListHeaderBKColor"},
    {"keWindowTextColor", "keTitlerPanelColor"},
    {"keWindowTextColor", "keTitlerFieldColor"},
    {"keWindowTextColor", "keTitlerSelectionColor"},
    {"keWindowTextHoverColor", "keWindowBKColor"},
    {"keWindowTextHoverColor", "keWindowBKColor+keButtonHoverColor"},
    {"keWindowTextHoverColor", "keWindowBKColor+keButtonPressedColor"},
    {"keWindowTextHoverColor", "keTitlerPanelColor+keButtonHoverColor"},
    {"keWindowTextSelectedColor", "keWindowBKColor"},
    {"keButtonTipsText", "keButtonTipsBackground"},
    {"keReportListSelectedTextColor", "keReportListSelectedBKColor"},
    {"keSubTitlePlayTextColor", "keSubTitlePlayBKColor"},
    {"keSubTitlePlayTextColor", "keSubTitlePlaySelectedBKColor"},
    {"keApplogMessageTextColor", "keApplogMessageBKColor"},
    {"keApplogImportantMsgTextColor", "keApplogImportantMsgBKColor"},
    {"keApplogWarningTextColor", "keApplogWarningBKColor"},
    {"keApplogErrorTextColor", "keApplogErrorBKColor"},
    {"keApplogFoundTextColor", "keApplogFoundBKColor"},
    {"keTitlerDimTextColor", "keWindowBKColor"},
    {"keTitlerDimTextColor", "keTitlerPanelColor"},
    {"keTitlerDimTextColor", "keTitlerCanvasColor"},
    {"keTitlerFaultColor", "keTitlerPanelColor"},
};
// Of the ease window: colours of its own, which the dark skin leaves alone.
constexpr Pair kEasePairs[] = {{"keEaseLabelColor", "keEaseGroundColor"},
                               {"keEaseLabelColor", "keEaseBoxColor"},
                               {"keEasePlaceColor", "keEaseGroundColor"}};

class Themes : public testing::TestWithParam<const wchar_t*>
{
protected:
    void SetUp() override { ASSERT_EQ(KvGuiRes::SetSkinFolder(GetParam()), 1); }
    void TearDown() override { KvGuiRes::SetSkinFolder(nullptr); }
    bool IsLight() const { return GetParam() != nullptr; }
};

void ExpectLegible(const Pair& pair)
{
    EXPECT_GE(Contrast(Colour(pair.text), Ground(pair.ground)), kLegible) << pair.text << " " << pair.ground;
}

TEST_P(Themes, TextsCanBeRead)
{
    for (const Pair& pair : kPairs)
        ExpectLegible(pair);
    for (const Pair& pair : kEasePairs)
        if (IsLight())
            ExpectLegible(pair);
    for (const char* ground : {"keWindowBKColor", "keReportListBKColor", "keReportListHeaderBKColor",
                               "keReportListGridColor", "keTitlerPanelColor", "keTitlerFieldColor"})
        EXPECT_GE(Contrast(Colour("keDisabledTextColor"), Ground(ground)), kDisabledLegible) << ground;
    for (const char* ground : {"keWindowBKColor", "keReportListBKColor"})
        EXPECT_GE(Contrast(Colour("keDisabledTextColor"), Ground(ground)), kLegible) << ground;
    const auto isTested = [](const QString& key) {
        const auto has = [&key](const Pair& pair) { return key == QLatin1String(pair.text); };
        return key == QLatin1String("keDisabledTextColor") ||
               std::any_of(std::begin(kPairs), std::end(kPairs), has);
    };
    for (const QString& key : Names(kBuiltIn, "Colors"))
        EXPECT_TRUE(!key.contains(QLatin1String("Text")) || isTested(key)) << qPrintable(key);
}

TEST_P(Themes, MarksOfTheFocusAndOfRowsCanBeSeen)
{
    constexpr Pair marks[] = {{"keFocusColor", "keWindowBKColor"},
                              {"keFocusColor", "keReportListBKColor"},
                              {"keFocusColor", "keReportListSelectedBKColor"},
                              {"keFocusColor", "keParamEditBKColor"},
                              {"keLayoutViewUnitFrameColorSelect", "keWindowBKColor"},
                              {"keSubTitlePlayMarkColor", "keSubTitlePlayBKColor"},
                              {"keTitlerPlayheadColor", "keTitlerCanvasColor"},
                              {"keTitlerKeyColor", "keTitlerCanvasColor"},
                              {"keTitlerNegativeSignColor", "keReportListBKColor"},
                              {"keTitlerOverlapSignColor", "keReportListBKColor"},
                              {"keTitlerFastSignColor", "keReportListBKColor"},
                              {"keTitlerEmptySignColor", "keReportListBKColor"}};
    for (const Pair& pair : marks)
        EXPECT_GE(Contrast(Colour(pair.text), Ground(pair.ground)), kVisible)
            << pair.text << " " << pair.ground;
}

// The greatest contrast of a pixel of the picture to the ground around it.
double SeenContrast(const KvSkinImage& picture, const QColor& ground)
{
    QImage image(picture.Size() * 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    picture.Draw(painter, QRectF(image.rect()));
    painter.end();
    double most = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            most = std::max(most, Contrast(image.pixelColor(x, y), ground));
    return most;
}

TEST_P(Themes, PicturesCanBeSeen)
{
    const QStringList files = QDir(":/kv/skin").entryList({"*.svg"});
    EXPECT_GT(files.size(), 100);
    for (const QString& file : files) {
        if (file.contains("_disabled") || file.startsWith("ribbontitlebar_"))
            continue;
        const KvSkinImage picture = KvGuiRes::LoadImageW(KvFromQString(file).c_str());
        for (const char* ground : {"keWindowBKColor", "keReportListBKColor", "keTitlerPanelColor"})
            EXPECT_GE(SeenContrast(picture, Colour(ground)), kVisible) << qPrintable(file) << " " << ground;
    }
}

// Each rule with a colour, on the ground that it has or that of what is below it.
void CheckSheet(const QString& sheet, QColor below)
{
    static const QRegularExpression rules("([^{}]+)\\{([^}]*)\\}");
    static const QRegularExpression colours("(?:^|[;\\s])(background(?:-color)?|color)\\s*:\\s*(#\\w+)");
    int found = 0;
    for (auto rule = rules.globalMatch(sheet); rule.hasNext();) {
        const QRegularExpressionMatch match = rule.next();
        QColor text;
        QColor ground = below;
        for (auto one = colours.globalMatch(match.captured(2)); one.hasNext();) {
            const QRegularExpressionMatch colour = one.next();
            (colour.captured(1) == "color" ? text : ground) = QColor(colour.captured(2));
        }
        if (!text.isValid())
            continue;
        ++found;
        const bool isDisabled = match.captured(1).contains(":disabled");
        EXPECT_GE(Contrast(text, ground), isDisabled ? kDisabledLegible : kLegible)
            << qPrintable(match.captured(0));
    }
    EXPECT_GT(found, 0) << qPrintable(sheet);
}

TEST_P(Themes, WhatTheToolkitPaintsCanBeRead)
{
    QWidget parent;
    CKvFindReplaceTxtDlg dialog;
    ASSERT_EQ(dialog.Create(&parent), 1);
    CheckSheet(dialog.styleSheet(), Colour("keWindowBKColor"));
    CKvParamEdit number;
    CheckSheet(number.findChild<QLineEdit*>()->styleSheet(), Colour("keParamEditBKColor"));
    auto* log = new CKvAppLogListCtrl;
    log->Create(CRect(0, 0, 300, 200), WS_CHILD | WS_VISIBLE, &parent, 1);
    log->Initialize(1);
    log->ShowFindBar(1);
    CheckSheet(log->findChild<QWidget*>("findBar")->styleSheet(), Colour("keReportListHeaderBKColor"));
}

INSTANTIATE_TEST_SUITE_P(Each, Themes, testing::Values(nullptr, kKvLightSkin),
                         [](const auto& one) { return one.param ? "Light" : "Dark"; });

// What a key or a picture of the dark skin lacks in the light one would be seen in a colour meant for dark.
// Forms hold it alone: no control around it hears of the skin.
TEST(LightSkin, ReachesAScrollBarOfAForm)
{
    QWidget form;
    CKvScrollBar bar(&form);
    KvGuiRes::SetSkinFolder(kKvLightSkin);
    const QPalette light = CKvScrollBar(&form).palette();
    EXPECT_EQ(bar.palette(), light);
    KvGuiRes::SetSkinFolder(nullptr);
    EXPECT_NE(bar.palette(), light);
}

TEST(LightSkin, KnowsEveryColourOfTheDarkOne)
{
    const QStringList known = Names(kLight, "Colors");
    const QStringList overFrames{"keTitlerCheckLightColor", "keTitlerCheckDarkColor",
                                 "keTitlerActionSafeColor", "keTitlerTitleSafeColor"};
    for (const QString& key : Names(kBuiltIn, "Colors"))
        EXPECT_NE(known.contains(key), overFrames.contains(key)) << qPrintable(key);
    const QStringList mapped = Names(kLight, "Pictures");
    const QStringList own = QDir(":/kv/skin/light").entryList({"*.svg"});
    QSet<QString> used;
    static const QRegularExpression colour("#([0-9a-fA-F]{6})\\b");
    for (const QString& name : QDir(":/kv/skin").entryList({"*.svg"})) {
        QFile file(":/kv/skin/" + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString svg = QString::fromUtf8(file.readAll());
        for (auto match = colour.globalMatch(svg); match.hasNext();) {
            const QString found = match.next().captured(1).toLower();
            used << found;
            EXPECT_TRUE(mapped.contains(found) || own.contains(name)) << qPrintable(name + u' ' + found);
        }
    }
    for (const QString& one : mapped)
        EXPECT_TRUE(used.contains(one)) << qPrintable(one) << " is in no picture";
}

} // namespace
