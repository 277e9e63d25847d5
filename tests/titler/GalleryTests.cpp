#include "KvCharMapDlg.h"
#include "KvLayoutSelector.h"
#include "gallery/Gallery.h"
#include "window/Settings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <gtest/gtest.h>

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

} // namespace
} // namespace titler
