// In a window from right to left: what keeps its own direction.
#include "edit/Document.h"
#include "media/MediaModel.h"
#include "media/MediaPanel.h"
#include "media/NamingRules.h"
#include "media/RulesPanel.h"
#include "time/TimeLayout.h"
#include "time/TimeRulerPainter.h"
#include "title/TextInspector.h"
#include "window/Language.h"
#include "window/Skin.h"
#include "window/Texts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <gtest/gtest.h>

using namespace titler;

namespace {

struct FromRightToLeft : testing::Test
{
    static void Choose(const char* code) { ChooseLanguage(*FindLanguage(QLatin1String(code))); }
    void TearDown() override { Choose("en"); }
};

// What is drawn on a ground of one colour, without the ground around it.
QImage Ink(const QImage& picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixel(x, y) != picture.pixel(0, 0))
                ink |= QRect(x, y, 1, 1);
    return picture.copy(ink);
}

// The text of a cell in a view that is shown in the language's direction.
QImage Cell(QTreeView& view, const QModelIndex& index, const char* language)
{
    FromRightToLeft::Choose(language);
    QApplication::processEvents();
    EXPECT_EQ(view.layoutDirection(),
              QLatin1String(language) == QLatin1String("ar") ? Qt::RightToLeft : Qt::LeftToRight);
    const QImage ink = Ink(view.viewport()->grab(view.visualRect(index).adjusted(2, 1, -2, -1)).toImage());
    EXPECT_GT(ink.width(), 4);
    return ink;
}

TEST_F(FromRightToLeft, TheRulersTimesAreWrittenAsTheyAre)
{
    const Properties properties{};
    const TimeRulerLook look{properties, {}, FrameRateOf(kKvFrameRate29_97), 0, 1000, std::nullopt, false};
    const TimeLayout layout({900, 80}, {0, 1000}, 0);
    ApplyTheme(*qApp, Theme::Dark);
    const auto labels = [&](Qt::LayoutDirection direction) {
        QImage picture(900, TimeLayout::kRuler, QImage::Format_RGB32);
        QPainter painter(&picture);
        painter.setLayoutDirection(direction); // as that of a window has it
        DrawTimeRuler(painter, picture.rect(), layout, look, LoadSkin());
        return picture;
    };
    EXPECT_EQ(labels(Qt::RightToLeft), labels(Qt::LeftToRight));
    EXPECT_GT(Ink(labels(Qt::LeftToRight)).width(), 500);
    qApp->setStyleSheet({});
    qApp->setPalette({});
}

TEST_F(FromRightToLeft, PatternsAndCountsAreWrittenAsTheyAre)
{
    NamingRules rules;
    RulesPanel panel(rules);
    panel.resize(1200, 400);
    panel.show();
    auto* list = panel.findChild<QTreeView*>("rules");
    const QModelIndex main = list->model()->index(0, 1);
    ASSERT_TRUE(main.data().toString().contains(u'<'));
    EXPECT_EQ(Cell(*list, main, "ar"), Cell(*list, main, "en"));
    Choose("ar");
    EXPECT_EQ(panel.findChild<QPlainTextEdit*>("ruleAdditions")->layoutDirection(), Qt::LeftToRight);

    MediaPanel media(rules);
    media.resize(400, 600);
    media.show();
    media.OpenFolder(QStringLiteral(TITLER_SAMPLES "/media"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !media.IsBusy(); }, 60000));
    auto* files = media.findChild<QTreeView*>("media");
    const QModelIndex count = files->model()->index(0, MediaModel::CountColumn);
    ASSERT_TRUE(count.data().toString().startsWith(u'+'));
    EXPECT_EQ(Cell(*files, count, "ar"), Cell(*files, count, "en"));
}

TEST_F(FromRightToLeft, SidesOfThePictureStandAtTheirSides)
{
    Document document;
    TextInspector inspector(document);
    inspector.resize(400, 300);
    inspector.show();
    Choose("ar");
    QApplication::processEvents();
    const QList<QAbstractButton*> sides = inspector.findChild<QButtonGroup*>()->buttons();
    ASSERT_EQ(sides.size(), 3);
    EXPECT_TRUE(std::is_sorted(sides.begin(), sides.end(),
                               [](const QWidget* a, const QWidget* b) { return a->x() < b->x(); }));
}

} // namespace
