#include "KvLayoutSelector.h"
#include "gallery/Gallery.h"
#include "window/Settings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QTemporaryDir>

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
    KvSendMessage(strip->parentWidget(), WM_COMMAND, MAKEWPARAM(strip->GetDlgCtrlID(), 1),
                  reinterpret_cast<LPARAM>(strip));
    const QList<QLabel*> labels = gallery.findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->text().startsWith(QStringLiteral("CKvLayoutSelector told: WM_COMMAND"));
    }));
}

} // namespace
} // namespace titler
