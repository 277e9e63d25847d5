#include "KvAppLogListCtrl.h"
#include "KvCharMapDlg.h"
#include "KvGradientCtrl.h"
#include "KvLayoutSelector.h"
#include "KvRibbonTitlebar.h"
#include "KvSubTitleTxtListEditor.h"
#include "gallery/Gallery.h"
#include "window/Language.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Skin.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

namespace titler {
namespace {

// Bases of others, and what is no control.
const QStringList kNone{"CKvWnd",    "CKvStatic",          "CKvFrameWnd",
                        "CKvDialog", "CKvCaptionBar",      "CKvTextListBase",
                        "CKvMenu",   "CKvParamBezierInfo", "CKvProjectFileLayoutData"};

TEST(Gallery, ShowsEveryControlOfThePublicHeaders)
{
    const QTemporaryDir swatches;
    KeepSwatches(swatches.path());
    Gallery gallery;
    const QRegularExpression declared(QStringLiteral("^class KV_API (CKv\\w+)"),
                                      QRegularExpression::MultilineOption);
    int found = 0;
    for (const QFileInfo& header : QDir(QStringLiteral(KV_HEADERS)).entryInfoList({"*.h"})) {
        QFile file(header.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        for (auto match = declared.globalMatch(text); match.hasNext();) {
            const QString name = match.next().captured(1);
            ++found;
            EXPECT_NE(kNone.contains(name), gallery.Names().contains(name)) << qPrintable(name);
        }
    }
    EXPECT_GE(found, 25);
    gallery.resize(800, 500);
    gallery.show();
    QApplication::processEvents();
    EXPECT_GT(gallery.Picture().height(), 1500) << "all of it, not what fits into the window";
}

TEST(Gallery, SaysWhatAControlTells)
{
    const QTemporaryDir swatches;
    KeepSwatches(swatches.path());
    Gallery gallery;
    auto* strip = gallery.findChild<CKvLayoutSelector*>();
    ASSERT_NE(strip, nullptr);
    const auto isTold = [&gallery](const char* what) {
        const QList<QLabel*> labels = gallery.findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [what](const QLabel* label) {
            return label->text().startsWith(QLatin1String(what));
        });
    };
    gallery.show();
    QTest::mouseClick(strip, Qt::LeftButton, {}, {40, 40});
    EXPECT_TRUE(isTold("CKvLayoutSelector told: WM_COMMAND"));
    for (QWidget* one : QApplication::topLevelWidgets())
        if (auto* characters = qobject_cast<CKvCharMapDlg*>(one)) {
            characters->show();
            characters->GetGrid()->SetSelected(3);
            QTest::keyClick(characters->GetGrid(), Qt::Key_Return);
        }
    EXPECT_TRUE(isTold("CKvCharMapDlg told: OnCommand"));
}

TEST(Gallery, SpeaksTheLanguageThatIsChosen)
{
    const QTemporaryDir swatches;
    KeepSwatches(swatches.path());
    ChooseLanguage(*FindLanguage("de"));
    Gallery gallery;
    auto* subtitles = gallery.findChild<CKvSubTitleTxtListEditor*>();
    ASSERT_NE(subtitles, nullptr);
    EXPECT_EQ(subtitles->GetItemText(0, kKvSubTitleTemplate), L"Titel");
    QStringList menus;
    for (const QMenu* menu : gallery.findChildren<QMenu*>())
        menus << menu->title();
    EXPECT_TRUE(menus.contains(QStringLiteral("&Datei"))) << qPrintable(menus.join(u' '));
    QStringList tabs;
    QAccessibleInterface* bar =
        QAccessible::queryAccessibleInterface(gallery.findChild<CKvRibbonTitlebar*>());
    for (int i = 0; i < bar->childCount(); ++i)
        tabs << bar->child(i)->text(QAccessible::Name);
    EXPECT_TRUE(tabs.contains(QStringLiteral("Gestalten"))) << qPrintable(tabs.join(u' '));
    ChooseLanguage(*FindLanguage("en"));
}

// KV_PICTURES names a folder for pictures that differ.
void ExpectAlike(const QImage& switched, const QImage& begun, const QString& name)
{
    EXPECT_TRUE(switched == begun) << name.toStdString();
    const QString folder = qEnvironmentVariable("KV_PICTURES");
    if (switched == begun || folder.isEmpty())
        return;
    switched.save(folder + u'/' + name + " switched.png");
    begun.save(folder + u'/' + name + " begun.png");
}

// Nothing keeps a colour or a picture of the theme before.
TEST(Gallery, LooksInAnotherThemeAsIfBegunInIt)
{
    const QTemporaryDir swatches;
    KeepSwatches(swatches.path());
    const auto picture = [](QWidget& shown, auto&& grab) {
        QApplication::processEvents();
        // The lines of a log tell the time, a gradient's stop blinks.
        const auto hide = [](QWidget* part) {
            QSizePolicy policy = part->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            part->setSizePolicy(policy);
            part->hide();
        };
        for (QWidget* log : shown.findChildren<CKvAppLogListCtrl*>())
            hide(log);
        for (QWidget* gradient : shown.findChildren<CKvGradientCtrl*>())
            hide(gradient);
        QApplication::processEvents();
        return grab().toImage();
    };
    const auto open = [](QWidget& shown) {
        shown.resize(1200, 800);
        shown.show();
        shown.setFocus();
        QApplication::processEvents();
    };
    const auto windowPicture = [&](MainWindow& window, Workspace workspace) {
        window.Show(workspace);
        if (QWidget* const focus = window.focusWidget())
            focus->clearFocus(); // which one window alone would show
        return picture(window, [&] { return window.grab(); });
    };
    for (const auto& [before, now] : {std::pair(Theme::Dark, Theme::Light), {Theme::Light, Theme::Dark}}) {
        ApplyTheme(*qApp, before);
        Gallery switched;
        MainWindow switchedWindow;
        open(switched);
        open(switchedWindow);
        const QImage other = picture(switched, [&] { return switched.Picture(); });
        ApplyTheme(*qApp, now);
        Gallery begun;
        MainWindow begunWindow;
        open(begun);
        open(begunWindow);
        const QImage seen = picture(switched, [&] { return switched.Picture(); });
        EXPECT_FALSE(seen == other);
        ExpectAlike(seen, picture(begun, [&] { return begun.Picture(); }), ThemeName(now));
        for (const Workspace workspace : {Workspace::Design, Workspace::Animate, Workspace::Clips,
                                          Workspace::Rules, Workspace::Subtitles})
            ExpectAlike(windowPicture(switchedWindow, workspace), windowPicture(begunWindow, workspace),
                        ThemeName(now) + u' ' + QLatin1String(TraitsOf(workspace).name));
    }
    ApplyTheme(*qApp, Theme::Dark);
    qApp->setStyleSheet({});
    qApp->setPalette({});
}

} // namespace
} // namespace titler
