// Dialogs from templates: items and their places, how dialogs open and end, texts of a translation, idle
// update.
#include "KvDialog.h"
#include "KvGuiRes.h"

#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QHelpEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <cmath>
#include <gtest/gtest.h>

namespace {

constexpr UINT kEaseDialog = 12016;
constexpr UINT kHint = 0xFFFFFFFF;

class Dialog : public CKvDialog
{
public:
    explicit Dialog(CWnd* parent = nullptr) : CKvDialog(kEaseDialog, parent) {}

    std::function<void()> onInit;
    std::function<LRESULT(LPARAM)> onIdle;
    QString heard;
    BOOL canUndo = 1;

    BOOL OnInitDialog() override
    {
        heard += QStringLiteral("init ");
        if (onInit)
            onInit();
        return 1;
    }
    void OnOK() override { heard += QStringLiteral("ok "), CKvDialog::OnOK(); }
    void OnCancel() override { heard += QStringLiteral("cancel "), CKvDialog::OnCancel(); }
    void OnAnswer(int result) override { heard += QStringLiteral("=%1 ").arg(result); }
    LRESULT OnKickIdle(WPARAM, LPARAM count) override { return onIdle ? onIdle(count) : 0; }

    void OnCmdUpdateUI(CCmdUI* command) override
    {
        if (command->m_nID == 12077)
            command->Enable(canUndo);
    }

    using CKvDialog::ReplaceDlgItem;
};

// The usual way to measure dialog units, for the expected places.
QRect Place(const QFont& font, const QRect& units)
{
    const QFontMetrics metrics(font);
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const double x = std::round(metrics.horizontalAdvance(letters) / 52.0) / 4;
    const double y = metrics.height() / 8.0;
    const auto round = [](double value) { return static_cast<int>(std::lround(value)); };
    return {round(units.x() * x), round(units.y() * y), round(units.width() * x), round(units.height() * y)};
}

TEST(DialogTemplate, ItemsStandInDialogUnitsAndFollowALargerWindow)
{
    const struct
    {
        const char* name;
        UINT id;
        QRect units;
        QRect growth; // what 100 × 40 more pixels add to x, y, width and height
    } rows[] = {
        {"curve takes the room", 12088, {7, 7, 341, 180}, {0, 0, 100, 40}},
        {"next key", 12094, {380, 125, 23, 14}, {100, 0, 0, 0}},
        {"Cancel", IDCANCEL, {354, 172, 50, 14}, {100, 0, 0, 0}},
        {"hint keeps the bottom", kHint, {7, 192, 397, 12}, {0, 40, 100, 0}},
    };
    for (const int points : {8, 13}) {
        Dialog dialog;
        QFont font = dialog.font();
        font.setPointSize(points);
        dialog.setFont(font);
        ASSERT_EQ(dialog.Create(kEaseDialog, nullptr), 1);
        const QSize smallest = Place(font, {0, 0, 411, 211}).size();
        EXPECT_EQ(dialog.size(), smallest);
        dialog.show();
        for (const int large : {0, 1, 0}) {
            dialog.resize(large ? smallest + QSize(100, 40) : QSize(10, 10));
            for (const auto& row : rows) {
                const QRect at = Place(font, row.units);
                const QRect expected(at.topLeft() + large * row.growth.topLeft(),
                                     at.size() + large * row.growth.size());
                EXPECT_EQ(dialog.GetDlgItem(row.id)->geometry(), expected) << row.name;
                EXPECT_EQ(QRect(dialog.MapDialogRect(CRect(row.units))), at) << row.name;
            }
        }
    }
}

TEST(DialogTemplate, TabOrderReplacedItemAndCommands)
{
    Dialog dialog;
    ASSERT_EQ(dialog.Create(kEaseDialog, nullptr), 1);
    QWidget* curve = new QWidget(&dialog);
    curve->setFocusPolicy(Qt::StrongFocus);
    const QRect place = dialog.GetDlgItem(12088)->geometry();
    EXPECT_TRUE(dialog.ReplaceDlgItem(12088, curve) == 1 && dialog.ReplaceDlgItem(12, curve) == 0);
    EXPECT_TRUE(dialog.GetDlgItem(12088) == curve && curve->geometry() == place);
    EXPECT_EQ(dialog.findChildren<QLabel*>().size(), 1) << "the placeholder is gone";

    QStringList texts;
    QWidget* control = curve;
    while ((control = control->nextInFocusChain()) != curve) {
        if (auto* button = qobject_cast<QPushButton*>(control))
            texts << button->text() + (button->isDefault() ? QStringLiteral("!") : QString());
    }
    EXPECT_EQ(texts.join(u','), "Undo,Redo,Reset,Linear,Speed Up,Speed Down,Ease in out,|<,>|,OK!,Cancel");

    dialog.show();
    dialog.GetDlgItem(12077)->setFocus();
    dialog.canUndo = 0;
    dialog.UpdateDialogControls();
    EXPECT_FALSE(dialog.GetDlgItem(12077)->isEnabled());
    EXPECT_EQ(dialog.focusWidget(), curve) << "not the next button, which the next Space would press";
}

TEST(DialogTemplate, TranslationReachesAnOpenDialogAndLosesNoText)
{
    QTemporaryDir folder;
    const auto translate = [&](const QString& name, const QString& texts) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(texts.toUtf8()) > 0);
        file.close();
        EXPECT_EQ(KvGuiRes::SetStringFile(KvFromQString(file.fileName()).c_str()), 1);
    };
    Dialog dialog;
    dialog.Create(kEaseDialog, nullptr);
    const auto name = [&](UINT id) {
        return QAccessible::queryAccessibleInterface(dialog.GetDlgItem(id))->text(QAccessible::Name);
    };
    const auto tip = [&](UINT id) {
        QHelpEvent event(QEvent::ToolTip, {1, 1}, {1, 1});
        QApplication::sendEvent(dialog.GetDlgItem(id), &event);
        return event.isAccepted() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Parameter Curve Setup"));
    EXPECT_TRUE(name(12093) == "Previous key" && name(12094) == "Next key" && name(12091) == "Speed Up");
    EXPECT_TRUE(tip(12091) == "Begin slowly, end fast" && tip(kHint).isEmpty()) << "all of it can be read";

    const QString slow = QStringLiteral("&Langsam los, dann immer schneller");
    const QString hint = QStringLiteral("Mausrad oder mittlere Taste: senkrecht zoomen. ").repeated(4);
    const QString file = QStringLiteral("[Dialogs]\n12016.0=Kurve\n12016.12093=Zurück\n12016.12091=%1\n"
                                        "12016.65535=%2\n[Tips]\n12093=Voriger Schlüssel\n");
    translate(QStringLiteral("texts.ini"), file.arg(slow, hint));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Kurve"));
    EXPECT_EQ(name(12079), QStringLiteral("Redo")) << "not translated";
    EXPECT_TRUE(name(12093) == QStringLiteral("Zurück") && tip(12093).contains("Voriger Schlüssel"));
    EXPECT_EQ(name(12091), slow.mid(1));
    EXPECT_TRUE(tip(12091).contains(slow.mid(1)) && tip(12091).contains("Begin slowly, end fast"));
    EXPECT_TRUE(tip(kHint).contains(hint.trimmed()));
    const QImage cut = dialog.grab().toImage();
    translate(QStringLiteral("longer.ini"), file.arg(slow + slow.mid(1), hint + hint));
    EXPECT_EQ(dialog.grab().toImage(), cut) << "the end is cut, not both ends";
    KvGuiRes::SetStringFile(nullptr);
    EXPECT_EQ(name(12091), QStringLiteral("Speed Up"));
}

TEST(DialogTemplate, GrowsWhereATextOfAnotherLanguageHasNoRoom)
{
    Dialog dialog;
    dialog.Create(kEaseDialog, nullptr);
    const QSize english = dialog.size();
    const auto isCut = [&](UINT id) {
        const auto& button = static_cast<const QPushButton&>(*dialog.GetDlgItem(id));
        return button.fontMetrics().horizontalAdvance(button.text()) > button.width();
    };
    QTemporaryDir folder;
    QFile file(folder.filePath("texts.ini"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) &&
                file.write("[Dialogs]\n12016.12078=Alles zuruecksetzen\n") > 0);
    file.close();
    KvGuiRes::SetStringFile(KvFromQString(file.fileName()).c_str());
    EXPECT_GT(dialog.width(), english.width());
    EXPECT_EQ(dialog.height(), english.height());
    EXPECT_FALSE(isCut(12078));
    EXPECT_EQ(dialog.GetDlgItem(12078)->geometry(), QRect(dialog.MapDialogRect(CRect(354, 42, 404, 56))));
    KvGuiRes::SetStringFile(nullptr);
    EXPECT_EQ(dialog.size(), english);
}

TEST(DialogLife, EndsAsItWasEnded)
{
    using Act = std::function<void(Dialog&)>;
    const auto key = [](UINT id, Qt::Key which) -> Act {
        return [=](Dialog& dialog) {
            dialog.GetDlgItem(id)->setFocus();
            QTest::keyClick(dialog.GetDlgItem(id), which);
        };
    };
    const Act answers = [](Dialog& dialog) { dialog.EndDialog(5), dialog.OnOK(), dialog.EndDialog(2); };
    const Act opensAgain = [](Dialog& dialog) {
        dialog.DestroyWindow();
        EXPECT_TRUE(dialog.DoModal() == -1 && dialog.Create(kEaseDialog, nullptr) == 0);
    };
    const struct
    {
        const char* name;
        Act act;
        int result;
        const char* heard;
        bool isDestroyed = false;
    } rows[] = {
        {"OK", key(IDOK, Qt::Key_Space), IDOK, "init ok =1 "},
        {"Cancel", key(IDCANCEL, Qt::Key_Space), IDCANCEL, "init cancel =2 "},
        {"Enter of the keypad", key(12090, Qt::Key_Enter), IDOK, "init ok =1 "},
        {"Enter on Cancel", key(IDCANCEL, Qt::Key_Return), IDOK, "init ok =1 "},
        {"Escape", key(IDOK, Qt::Key_Escape), IDCANCEL, "init cancel =2 "},
        {"close box", &Dialog::close, IDCANCEL, "init cancel =2 "},
        {"message", [](Dialog& dialog) { KvSendMessage(&dialog, WM_CLOSE, 0, 0); }, 2, "init cancel =2 "},
        {"the toolkit's end", [](Dialog& dialog) { dialog.done(QDialog::Rejected); }, 2, "init =2 "},
        {"the first answer counts", answers, 5, "init =5 ok "},
        {"destroyed", &Dialog::DestroyWindow, IDCANCEL, "init =2 ", true},
        {"opened again by a handler", opensAgain, IDCANCEL, "init =2 ", true},
        {"hidden", &Dialog::hide, IDCANCEL, "init cancel =2 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QWidget parent;
        parent.show();
        Dialog dialog(&parent);
        int finished = -1;
        QObject::connect(&dialog, &QDialog::finished, [&](int result) { finished = result; });
        for (int opening = 0; opening < 2; ++opening) {
            dialog.heard.clear();
            QTimer::singleShot(0, [&] {
                EXPECT_TRUE(dialog.isVisible() && dialog.isModal() && dialog.DoModal() == -1);
                row.act(dialog);
                if (dialog.isVisible())
                    dialog.EndDialog(99); // did not end as it should
            });
            const int result = opening ? dialog.exec() : dialog.DoModal();
            const int toolkits = row.result == IDCANCEL ? 0 : row.result;
            EXPECT_EQ(result, opening ? toolkits : row.result);
            EXPECT_EQ(finished, row.isDestroyed ? -1 : toolkits);
            EXPECT_EQ(dialog.heard, QLatin1String(row.heard));
            EXPECT_FALSE(dialog.isVisible() || dialog.IsCreated() || dialog.GetDlgItem(IDOK));
        }
    }
}

TEST(DialogLife, ModelessEndsWithItsWindow)
{
    auto* parent = new QWidget;
    Dialog dialog(parent);
    EXPECT_EQ(dialog.Create(1, nullptr), 0) << "no such template: the parent stays";
    QTimer::singleShot(0, [&] { delete parent; });
    EXPECT_TRUE(dialog.DoModal() == IDCANCEL && dialog.heard == "init cancel =2 ");

    parent = new QWidget;
    ASSERT_EQ(dialog.Create(kEaseDialog, parent), 1);
    dialog.show();
    dialog.hide();
    EXPECT_TRUE(dialog.IsCreated() && !dialog.isModal()) << "hidden is no answer";
    delete parent;
    EXPECT_TRUE(!dialog.IsCreated() && dialog.heard == "init cancel =2 init cancel =2 ");
    ASSERT_EQ(dialog.Create(kEaseDialog, nullptr), 1);
    dialog.OnOK();
    EXPECT_FALSE(dialog.IsCreated());

    dialog.onInit = [&] { dialog.EndDialog(5); };
    EXPECT_EQ(dialog.DoModal(), 5) << "before it was shown";
    EXPECT_EQ(dialog.Create(kEaseDialog, nullptr), 0);
    EXPECT_EQ(CKvDialog(1).DoModal(), -1) << "no such template";
}

TEST(DialogIdle, KicksAfterEventsCountsAndComesToRest)
{
    Dialog dialog;
    std::vector<LPARAM> counts;
    dialog.onIdle = [&](LPARAM count) {
        counts.push_back(count);
        return count < 3 ? 1 : 0;
    };
    dialog.Create(kEaseDialog, nullptr);
    QTest::mouseMove(&dialog);
    QCoreApplication::processEvents();
    EXPECT_TRUE(counts.empty()) << "nobody sees it";
    dialog.show();
    while (counts.size() < 4 || counts.back() != 3)
        QCoreApplication::processEvents();
    counts.clear();
    QTest::keyClick(&dialog, Qt::Key_F5);
    for (int turn = 0; turn < 200; ++turn)
        QCoreApplication::processEvents();
    ASSERT_GE(counts.size(), 4u);
    EXPECT_EQ(std::vector(counts.begin(), counts.begin() + 4), (std::vector<LPARAM>{0, 1, 2, 3}));
    EXPECT_LT(counts.size(), 150u) << "kicking is no reason to kick";

    struct Tick : QObject
    {
        int interval = 0; // of the timer that woke the application
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (event->type() == QEvent::Timer)
                interval = QAbstractEventDispatcher::instance()->registeredTimers(watched)[0].interval;
            return false;
        }
    } tick;
    qApp->installEventFilter(&tick);
    counts.clear();
    while (counts.size() < 4) // no event but the tick
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(counts.front(), 0);
    EXPECT_TRUE(tick.interval > 0 && tick.interval * 1.05 <= 100) << "a coarse timer may be 5 % late";
    dialog.onIdle = [&](LPARAM) {
        dialog.DestroyWindow();
        return 1;
    };
    while (dialog.IsCreated())
        QCoreApplication::processEvents();
}

TEST(DialogLook, ColoursOfTheHostGoBeforeTheSkin)
{
    SKvGuiBasicSettings settings{0xFF102030, 0xFFFFFFFF, 0xFF808080, QFont()};
    Dialog dialog;
    dialog.Create(kEaseDialog, nullptr);
    qApp->setStyleSheet(QStringLiteral("* { background: white; color: white; }"));
    const auto ground = [&] { return dialog.grab().toImage().pixelColor(2, 2).rgba(); };
    EXPECT_EQ(ground(), 0xFF2B2B2Eu) << "the skin's, not the application's";
    dialog.SetGuiBasicSettings(&settings);
    EXPECT_EQ(ground(), 0xFF102030u);
    dialog.SetGuiBasicSettings(nullptr);
    EXPECT_EQ(ground(), 0xFF2B2B2Eu);
    qApp->setStyleSheet(QString());
}

TEST(DialogLook, KeepsTheRulesThatAHostAdds)
{
    const auto rule = [](const char* colour) { return QStringLiteral("QToolTip { color: %1 }").arg(colour); };
    const auto ground = [](QWidget& dialog) { return dialog.grab().toImage().pixelColor(2, 2).rgba(); };
    Dialog dialog;
    dialog.setStyleSheet(rule("red"));
    dialog.Create(kEaseDialog, nullptr);
    EXPECT_EQ(ground(dialog), 0xFF2B2B2Eu) << "set before";
    dialog.setStyleSheet(dialog.styleSheet() + rule("blue"));
    const QString kept = dialog.styleSheet();
    KvGuiRes::SetSkinFolder(kKvLightSkin);
    EXPECT_EQ(ground(dialog), 0xFFF0F0F2u) << "added";
    dialog.setStyleSheet(kept);
    EXPECT_EQ(ground(dialog), 0xFFF0F0F2u) << "of the skin before";
    dialog.setStyleSheet(rule("lime"));
    KvGuiRes::SetSkinFolder(nullptr);
    EXPECT_EQ(ground(dialog), 0xFF2B2B2Eu) << "set afterwards";
    EXPECT_TRUE(dialog.styleSheet().endsWith(rule("lime")));
    EXPECT_FALSE(dialog.styleSheet().contains("blue"));
    dialog.setStyleSheet("background: #123456");
    EXPECT_EQ(ground(dialog), 0xFF123456u) << "without a selector";
}

} // namespace
